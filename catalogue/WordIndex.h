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

/// Rows, from 0, a bit each.
using RowBits = std::vector<std::uint64_t>;

/// Which rows hold which words: each different word once, with the rows that hold it.
///
/// Collections say the same words again and again, so a part of a word is looked for in few texts and not in
/// all rows. Law: never changes once it is made. Rows are counted from 0. Threads: any, once it is made.
class WordIndex {
 public:
  class Builder;

  [[nodiscard]] std::size_t Rows() const { return tempos_.size(); }
  /// Adds the rows that hold a term of one word. Requires: bits for all rows.
  void MatchOne(const SearchTerm& term, RowBits& rows) const;
  /// Gives each row the fields in which it holds all words of a term, beside each other or not. Requires: as
  /// many as rows, all 0.
  void MatchAll(const SearchTerm& term, std::span<std::uint8_t> fields) const;
  [[nodiscard]] bool TempoIn(std::size_t row, const NumberRange& range) const;
  [[nodiscard]] bool YearIn(std::size_t row, const NumberRange& range) const;
  [[nodiscard]] std::size_t Bytes() const;

 private:
  struct Pattern;
  static constexpr std::size_t kShort =
      36 + 36 * 36 + 36 * 36 * 36;  ///< texts of up to three letters or digits

  [[nodiscard]] std::string_view Word(std::size_t number) const;
  /// Each row that holds a word, and in which fields.
  template <typename Note>
  void ForEachRow(std::size_t word, const Note& note) const;
  template <typename Note>
  void MatchWord(const Pattern& pattern, const Note& note) const;
  /// The rows that hold the pattern, where they are known; else null.
  [[nodiscard]] const RowBits* ShortRows(const Pattern& pattern) const;
  /// Each place of a word that a short text may be found by.
  template <typename Note>
  void ForEachShort(std::string_view word, const Note& note) const;
  void NoteShortTexts();
  [[nodiscard]] std::vector<std::size_t> CountShortTexts() const;

  std::string words_;                       ///< one behind the other
  std::vector<std::uint32_t> word_starts_;  ///< and the end of the last one
  std::vector<std::uint64_t> letters_;      ///< of each word, a bit a letter
  std::vector<std::uint32_t> first_;        ///< where each word's entries begin, and the last one's end
  std::vector<std::uint8_t> entries_;       ///< see Builder::Pack
  std::vector<RowBits> short_;              ///< rows with a text of up to three letters; none where few are
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
  struct Entry {
    std::uint32_t word;
    std::uint32_t row_and_fields;
  };
  /// The entries of some thousand rows, in the order of the words.
  struct Packed {
    std::vector<std::uint32_t> words;
    std::vector<std::uint32_t> ends;  ///< of each word's bytes
    std::vector<std::uint8_t> bytes;
  };

  void AddField(std::string_view text, std::uint8_t field);
  std::uint32_t NumberOf(std::string_view word);
  void Grow();
  /// Packs the entries that wait: how many rows lie between one that holds a word and the one before, with
  /// the fields in the low bits, seven bits a byte, the lowest first; the top bit stands for "more follows".
  void Pack();
  void Join();

  WordIndex index_;
  std::vector<std::uint32_t> slots_;   ///< by the word's hash: its number plus one, 0 is free
  std::vector<std::uint32_t> hashes_;  ///< of each word
  std::vector<Held> row_;              ///< of the row that is being added
  std::vector<Entry> waiting_;
  std::vector<std::uint32_t> last_rows_;  ///< of each word, packed so far
  std::vector<Packed> packed_;
};

}  // namespace catalogue
