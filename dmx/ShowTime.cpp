// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/ShowTime.h"

#include <algorithm>
#include <utility>

#include "support/Text.h"

namespace dmx {
namespace {

constexpr std::int64_t kTenthsASecond = 10;
constexpr std::int64_t kTenthsAMinute = 600;

/// The number in these characters; they are few, so it is small.
std::int64_t NumberAt(std::string_view text, std::size_t start, std::size_t count) {
  if (start >= text.size()) return 0;
  return std::max<std::int64_t>(0, support::LeadingInteger(text.substr(start, count)));
}

}  // namespace

Tenths ParseShowTime(std::string_view text) {
  return Tenths(NumberAt(text, 0, 2) * kTenthsAMinute + NumberAt(text, 3, 2) * kTenthsASecond +
                NumberAt(text, 6, 1));
}

std::string ShowTimeText(Tenths time) {
  const std::int64_t tenths = std::max<std::int64_t>(time.count(), 0);
  return support::FormatMinutes(tenths / kTenthsASecond) + "." + std::to_string(tenths % kTenthsASecond);
}

std::string StepTimeText(Tenths time) {
  return ShowTimeText(std::min(time, kLongestStepTime));
}

std::optional<Tenths> ReadTypedTime(std::string_view text) {
  constexpr std::size_t kLongest = 12;
  if (text.empty() || text.size() > kLongest) return std::nullopt;
  std::int64_t minutes = 0;
  std::int64_t number = 0;
  std::int64_t tenths = 0;
  int decimals = -1;  // none begun
  bool digits = false;
  for (const char c : text) {
    if (c == ':' && minutes == 0 && decimals < 0) {
      minutes = std::exchange(number, 0);
    } else if ((c == '.' || c == ',') && decimals < 0) {
      decimals = 0;
    } else if (c < '0' || c > '9') {
      return std::nullopt;
    } else {
      digits = true;
      const int digit = c - '0';
      if (decimals < 0) number = number * 10 + digit;
      if (decimals == 0) tenths = digit;
      if (decimals >= 0) ++decimals;
    }
  }
  if (!digits) return std::nullopt;
  return std::min(Tenths(minutes * kTenthsAMinute + number * kTenthsASecond + tenths), kLongestStepTime);
}

Tenths LengthOf(const Scene& scene) {
  Tenths length{0};
  for (const SceneStep& step : scene.Steps)
    length += ParseShowTime(step.FadeTime) + ParseShowTime(step.WaitTime);
  return length;
}

Tenths PlayingTime(const Scenes& scenes) {
  Tenths time{0};
  for (const Scene& scene : scenes) time += LengthOf(scene) * std::max<int>(scene.Loops, 0);
  return time;
}

}  // namespace dmx
