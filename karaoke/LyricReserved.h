// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "karaoke/LyricEvents.h"

namespace karaoke {

/// The characters that the recommended practice for lyric events keeps for itself (RP-026): marks in braces,
/// readings in brackets, escapes with a backslash. A file uses them when it says so by a mark.
class ReservedLetters {
 public:
  /// Whether a song's events have such marks.
  [[nodiscard]] static bool AreUsedIn(const LyricEvents& words);

  /// What is sung of an event; line ends that were escaped are CR and LF then.
  [[nodiscard]] std::string Sung(std::string_view text);

  /// What the marks said so far; empty where they said nothing.
  [[nodiscard]] const std::string& Title() const { return title_; }
  [[nodiscard]] const std::string& Artist() const { return artist_; }
  [[nodiscard]] const std::string& Coding() const { return coding_; }

 private:
  void Take(std::string_view mark);
  [[nodiscard]] std::size_t Find(char bracket, std::string_view text, std::size_t from) const;

  std::string title_, artist_, coding_;
  bool japanese_ = false;
};

/// The two code pages that files name.
inline constexpr const char* kShiftJis = "Shift_JIS";
inline constexpr const char* kWestern = "windows-1252";

/// Whether a byte is the first of two in Shift-JIS.
[[nodiscard]] bool LeadsInShiftJis(char byte);

}  // namespace karaoke
