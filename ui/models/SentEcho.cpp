// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/SentEcho.h"

#include <cmath>

namespace ui {
namespace {

constexpr auto kPatience = std::chrono::milliseconds(500);
constexpr float kSame = 0.001F;

}  // namespace

void SentEcho::Sent(float value, support::TimePoint now) {
  sent_ = value;
  sent_at_ = now;
}

bool SentEcho::Believe(float reported, support::TimePoint now) {
  if (sent_ && std::abs(reported - *sent_) > kSame && now - sent_at_ < kPatience) return false;
  sent_.reset();
  return true;
}

}  // namespace ui
