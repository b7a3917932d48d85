// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace lightorgan {

/// What drives the switched outputs. The numbers are those of the buttons `cmdK8000`.
enum class IoMode { Mono = 0, Stereo = 1, Lo = 2, Pp = 3, Constant = 4, Beat = 5 };
/// What drives the analogue outputs, likewise.
enum class DacMode { Lo = 6, Pp = 7, Constant = 8 };

inline constexpr int kModeButtons = 9;

/// As the settings keep it: "Mono", "Stereo", "LO", "PP", "CONSTANT", "Beat".
[[nodiscard]] std::string_view StoredWord(IoMode mode);
[[nodiscard]] std::string_view StoredWord(DacMode mode);
/// Constant for any other word.
[[nodiscard]] IoMode IoModeOf(std::string_view stored_word);
[[nodiscard]] DacMode DacModeOf(std::string_view stored_word);

/// As the snapshot file keeps it: "USESPECTRUMIO", "PLAYBANKIO", "BEAT" ...
[[nodiscard]] std::string_view SnapshotWord(IoMode mode);
[[nodiscard]] std::string_view SnapshotWord(DacMode mode);
[[nodiscard]] IoMode IoModeOfSnapshot(std::string_view word);
[[nodiscard]] DacMode DacModeOfSnapshot(std::string_view word);

/// The section that keeps the mode's speed under "Timer"; empty for a mode without a speed.
[[nodiscard]] std::string_view SpeedSection(IoMode mode);
[[nodiscard]] std::string_view SpeedSection(DacMode mode);

[[nodiscard]] constexpr bool FollowsSpectrum(IoMode mode) {
  return mode == IoMode::Mono || mode == IoMode::Stereo || mode == IoMode::Lo;
}

}  // namespace lightorgan
