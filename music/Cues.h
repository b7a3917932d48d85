// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace music {

inline constexpr int kHotCues = 8;
inline constexpr int kCueColours = 8;
inline constexpr std::size_t kLongestCueName = 40;  ///< bytes

/// A place of a track to jump to; with a length it is a loop.
struct Cue {
  std::chrono::microseconds place{0};
  std::chrono::microseconds length{0};  ///< 0 is none
  int colour = 0;                       ///< 0 to kCueColours - 1
  std::string name;                     ///< UTF-8 without control characters
  bool operator==(const Cue&) const = default;
};

/// The places that a hand marked in a track.
struct Cues {
  std::optional<std::chrono::microseconds> main;
  std::array<std::optional<Cue>, kHotCues> hot;
  bool operator==(const Cues&) const = default;
};

/// As it may be kept and shown, no longer than kLongestCueName.
[[nodiscard]] std::string CueName(std::string_view name);
/// What is no place, or further than a day, is not there; a bad colour is the first.
[[nodiscard]] Cues Sound(Cues cues);
/// Newer ones, with older ones where these have none. Either may be null.
[[nodiscard]] std::shared_ptr<const Cues> Joined(const std::shared_ptr<const Cues>& newer,
                                                 const std::shared_ptr<const Cues>& older);

}  // namespace music
