// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace music {

/// How the wheel of keys is numbered.
enum class KeyNotation { Camelot, OpenKey };

/// A major or minor key.
struct MusicalKey {
  int tonic = 0;  ///< 0 is C, 11 is B
  bool minor = false;
  bool operator==(const MusicalKey&) const = default;
};

inline constexpr int kMusicalKeys = 24;

/// As tags and people write it, whatever the notation: "Am", "A minor", "a", "G#m/Abm", "8A", "1m", "F♯".
/// The first of several counts. Nothing for what is no key.
[[nodiscard]] std::optional<MusicalKey> ReadKey(std::string_view text);
/// "Am", "F#", "Bbm".
[[nodiscard]] std::string NameOf(const MusicalKey& key);
/// "8A" or "1m".
[[nodiscard]] std::string WheelNameOf(const MusicalKey& key, KeyNotation notation);
/// Goes with the other: the same, a neighbour on the wheel, or its relative.
[[nodiscard]] bool Fits(const MusicalKey& key, const MusicalKey& other);
/// So many semitones higher.
[[nodiscard]] MusicalKey Shifted(const MusicalKey& key, int semitones);
/// The fewest semitones, -6 to 6, by which a key is shifted to sound with the other: to the same key, or to
/// its relative where one is major and one minor.
[[nodiscard]] int SemitonesTo(const MusicalKey& from, const MusicalKey& to);
/// 0 to 23, and back; nothing for another number.
[[nodiscard]] int NumberOf(const MusicalKey& key);
[[nodiscard]] std::optional<MusicalKey> KeyOfNumber(int number);

}  // namespace music
