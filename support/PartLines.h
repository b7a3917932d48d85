// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "support/Text.h"

// What the program keeps for itself between two runs: a head, lines "key=value" below lines "[part]", and a
// check sum of all of it at the end. The sum finds a file that was written in part. A reader takes each value
// within bounds of its own and leaves out what it does not know, so that an older program reads a newer file.

namespace support {

inline constexpr std::array<std::string_view, 2> kNoYes{"no", "yes"};

/// Writes a value a line, in one line whatever it holds. Empty texts are left out.
class PartWriter {
 public:
  void Part(std::string_view name);
  void Text(std::string_view key, std::string_view value);
  void Number(std::string_view key, std::int64_t value) { Text(key, std::to_string(value)); }
  void Real(std::string_view key, double value) { Text(key, FormatReal(value, 4)); }
  void Flag(std::string_view key, bool value) { Text(key, kNoYes[value ? 1 : 0]); }
  void Time(std::string_view key, std::chrono::microseconds time) { Number(key, time.count()); }
  template <typename T, std::size_t kCount>
  void Word(std::string_view key, T value, const std::array<std::string_view, kCount>& words) {
    Text(key, words[static_cast<std::size_t>(value)]);
  }
  /// Bytes so far.
  [[nodiscard]] std::size_t Size() const { return text_.size(); }
  [[nodiscard]] std::string Take() { return std::move(text_); }

 private:
  std::string text_;
};

/// A value as it stands in a line. What cannot be read leaves `into` as it was.
class PartValue {
 public:
  explicit PartValue(std::string_view text) : text_(text) {}

  [[nodiscard]] std::string Text() const;
  template <typename T>
  void Number(T& into, std::int64_t least, std::int64_t most) const {
    if (const auto number = ParseInteger(text_)) into = static_cast<T>(std::clamp(*number, least, most));
  }
  template <typename T>
  void Real(T& into, double least, double most) const {
    const auto real = ParseReal(text_);
    if (real && std::isfinite(*real)) into = static_cast<T>(std::clamp(*real, least, most));
  }
  template <typename T, std::size_t kCount>
  void Word(T& into, const std::array<std::string_view, kCount>& words) const {
    const auto* const word = std::find(words.begin(), words.end(), text_);
    if (word != words.end()) into = static_cast<T>(word - words.begin());
  }
  /// 0 to a thousand hours.
  void Time(std::chrono::microseconds& into) const;
  void Time(std::optional<std::chrono::microseconds>& into) const;

 private:
  std::string_view text_;
};

/// Takes the lines below a head one after the other; a value above the first part has the part "".
struct PartTaker {
  std::function<void(std::string_view part)> begin;
  std::function<void(std::string_view part, std::string_view key, const PartValue& value)> take;
};
void ReadParts(std::string_view lines, const PartTaker& taker);

/// The whole text of a file.
[[nodiscard]] std::string SealedText(std::string_view head, std::string_view lines);
/// The lines between head and sum; nothing where one of them is wrong.
[[nodiscard]] std::optional<std::string_view> LinesOfSealed(std::string_view head, std::string_view text);

/// What a regular file holds, at most one byte more than `most`, so that the caller sees what is too long;
/// nothing where there is none or it cannot be read. Blocks on the disk.
[[nodiscard]] std::optional<std::string> ReadWholeFile(const std::filesystem::path& path, std::size_t most);

/// Bytes as two hexadecimal digits each.
void AppendHex(std::string& text, unsigned char byte);
/// The byte of two digits at a place; nothing where there is none.
[[nodiscard]] std::optional<unsigned char> HexAt(std::string_view text, std::size_t place);

}  // namespace support
