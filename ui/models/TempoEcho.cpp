// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/TempoEcho.h"

#include <cmath>

namespace ui {
namespace {

constexpr auto kPatience = std::chrono::milliseconds(500);
constexpr float kSame = 0.001F;

}  // namespace

void TempoEcho::Sent(float percent, support::TimePoint now) {
  sent_ = percent;
  sent_at_ = now;
}

bool TempoEcho::Believe(float reported, support::TimePoint now) {
  if (sent_ && std::abs(reported - *sent_) > kSame && now - sent_at_ < kPatience) return false;
  sent_.reset();
  return true;
}

}  // namespace ui
