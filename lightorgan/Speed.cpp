// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/Speed.h"

#include <algorithm>
#include <cmath>

namespace lightorgan {

std::chrono::milliseconds IntervalOf(int speed) {
  const double share = static_cast<double>(std::clamp(speed, kSlowest, kFastest)) / kFastest;
  return std::chrono::milliseconds(std::lround(2000 * std::pow(100.0, -share)));
}

void IntervalTimer::Start(support::TimePoint now, support::Duration interval) {
  running_ = true;
  interval_ = interval;
  next_ = now + interval;
}

void IntervalTimer::SetInterval(support::TimePoint now, support::Duration interval) {
  interval_ = interval;
  next_ = std::min(next_, now + interval);
}

bool IntervalTimer::Due(support::TimePoint now) {
  if (!running_ || now < next_) return false;
  next_ += interval_;
  if (next_ <= now) next_ = now + interval_;
  return true;
}

}  // namespace lightorgan
