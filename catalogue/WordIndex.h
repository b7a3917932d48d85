// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/SearchQuery.h"

namespace catalogue {

/// What a row is searched in.
struct SearchedRow {
  std::array<std::string_view, 6> fields;  ///< folded, in the order of SearchField's bits
  double tempo = 0;
  int year = 0;
};

/// Which rows hold which words: each different word once, with the rows that hold it.
///
/// Collections say the same words again and again, so a part of a word is looked for in few texts and not in
/// all rows. Law: never changes once it is made. Rows are counted from 0. Threads: any, once it is made.
class WordIndex {
 public:
  class Builder;

  [[nodiscard]] std::size_t Rows() const { return tempos_.size(); }
  /// Adds to each row's bits the fields in which it may hold the term: exactly where the term is one word,
  /// else where all of its words are. Requires: as many bits as rows.
  void Match(const SearchTerm& term, std::span<std::uint8_t> fields) const;
  [[nodiscard]] bool TempoIn(std::size_t row, const NumberRange& range) const;
  [[nodiscard]] bool YearIn(std::size_t row, const NumberRange& range) const;
  [[nodiscard]] std::size_t Bytes() const;

 private:
  struct Pattern;
  static constexpr std::size_t kShort =
      36 + 36 * 36 + 36 * 36 * 36;  ///< texts of up to three letters or digits
  /// Rows that hold up to three certain letters beside each other, a bit each; none where they are few.
  using RowBits = std::vector<std::uint64_t>;

  [[nodiscard]] std::string_view Word(std::size_t number) const;
  void MatchWord(const Pattern& pattern, std::span<std::uint8_t> fields) const;
  [[nodiscard]] bool MatchShort(const Pattern& pattern, std::span<std::uint8_t> fields) const;
  /// Each place of a word that a short text may be found by.
  template <typename Note>
  void ForEachShort(std::string_view word, const Note& note) const;
  void NoteShortTexts();
  [[nodiscard]] std::vector<std::size_t> CountShortTexts() const;

  std::string words_;                       ///< one behind the other
  std::vector<std::uint32_t> word_starts_;  ///< and the end of the last one
  std::vector<std::uint64_t> letters_;      ///< of each word, a bit a letter
  std::vector<std::uint32_t> first_;        ///< of each word's entries, and the end of the last one's
  std::vector<std::uint32_t> entries_;      ///< a row and, in the low bits, the fields that hold the word
  std::vector<RowBits> short_;              ///< of each short text that many rows hold
  std::vector<std::uint16_t> tempos_;       ///< in hundredths
  std::vector<std::uint16_t> years_;
};

/// Rows are added from the first to the last.
class WordIndex::Builder {
 public:
  static constexpr std::size_t kMostRows = std::size_t{1} << 26;

  Builder();
  /// Requires: fewer than kMostRows so far.
  void Add(const SearchedRow& row);
  [[nodiscard]] WordIndex Finish();

 private:
  struct Held {
    std::uint32_t word;
    std::uint8_t fields;
  };

  void AddField(std::string_view text, std::uint8_t field);
  std::uint32_t NumberOf(std::string_view word);
  void Grow();

  WordIndex index_;
  std::vector<std::uint32_t> slots_;   ///< by the word's hash: its number plus one, 0 is free
  std::vector<std::uint32_t> hashes_;  ///< of each word
  std::vector<Held> row_;              ///< of the row that is being added
  std::vector<std::uint32_t> words_;   ///< of all rows, and
  std::vector<std::uint8_t> fields_;   ///< where they are held
  std::vector<std::uint8_t> counts_;   ///< how many of them a row has; 255: more follow in the next entry
};

}  // namespace catalogue
