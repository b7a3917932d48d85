// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/WordIndex.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <functional>
#include <iterator>

namespace catalogue {
namespace {

constexpr int kFieldBits = 6;
constexpr std::uint32_t kFieldMask = (1U << kFieldBits) - 1;
constexpr std::size_t kLetters = 36, kNone = SIZE_MAX;
constexpr std::size_t kLookedThrough = 64;

std::size_t SingleOf(char letter) {
  if (letter >= 'a' && letter <= 'z') return static_cast<std::size_t>(letter - 'a');
  if (letter >= '0' && letter <= '9') return static_cast<std::size_t>(letter - '0') + 26;
  return kNone;
}

/// Number of a text of one to three letters or digits.
std::size_t ShortOf(std::string_view text) {
  constexpr std::size_t kFirst[] = {0, 0, kLetters, kLetters + kLetters * kLetters};
  if (text.empty() || text.size() >= std::size(kFirst)) return kNone;
  std::size_t number = 0;
  for (const char letter : text) {
    const std::size_t single = SingleOf(letter);
    if (single == kNone) return kNone;
    number = number * kLetters + single;
  }
  return kFirst[text.size()] + number;
}

std::uint64_t LettersOf(std::string_view word) {
  std::uint64_t letters = 0;
  for (const char letter : word) {
    const std::size_t single = SingleOf(letter);
    const auto byte = static_cast<unsigned char>(letter);
    letters |= std::uint64_t{1} << (single != kNone ? single : 36 + byte % 28);
  }
  return letters;
}

}  // namespace

/// One word of a term, and which ends of a row's word it reaches to.
struct WordIndex::Pattern {
  std::string_view word;
  bool at_start;
  bool at_end;
  std::uint8_t fields;

  [[nodiscard]] bool Fits(std::string_view held) const {
    if (held.size() < word.size()) return false;
    if (at_start && at_end) return held == word;
    if (at_start) return held.starts_with(word);
    if (at_end) return held.ends_with(word);
    return held.find(word) != std::string_view::npos;
  }
};

std::string_view WordIndex::Word(std::size_t number) const {
  return std::string_view(words_).substr(word_starts_[number],
                                         word_starts_[number + 1] - word_starts_[number]);
}

void WordIndex::Match(const SearchTerm& term, std::span<std::uint8_t> fields) const {
  const std::size_t last = term.words.size() - 1;
  std::vector<std::uint8_t> of_word;
  for (std::size_t i = 0; i <= last; ++i) {
    const Pattern pattern{term.words[i], i > 0 || term.whole_at_start, i < last || term.whole_at_end,
                          term.fields};
    if (i == 0) {
      MatchWord(pattern, fields);
      continue;
    }
    of_word.assign(fields.size(), 0);
    MatchWord(pattern, of_word);
    for (std::size_t row = 0; row < fields.size(); ++row) fields[row] &= of_word[row];
  }
}

void WordIndex::MatchWord(const Pattern& pattern, std::span<std::uint8_t> fields) const {
  if (MatchShort(pattern, fields)) return;
  const std::uint64_t wanted = LettersOf(pattern.word);
  const std::size_t count = letters_.size();
  for (std::size_t number = 0; number < count; ++number) {
    if ((letters_[number] & wanted) != wanted || !pattern.Fits(Word(number))) continue;
    for (std::uint32_t i = first_[number]; i < first_[number + 1]; ++i) {
      const std::uint32_t entry = entries_[i];
      fields[entry >> kFieldBits] |= static_cast<std::uint8_t>(entry & pattern.fields);
    }
  }
}

bool WordIndex::MatchShort(const Pattern& pattern, std::span<std::uint8_t> fields) const {
  if (pattern.at_start || pattern.at_end || pattern.fields != kInAnyField) return false;
  const std::size_t text = ShortOf(pattern.word);
  if (text == kNone || short_.empty() || short_[text].empty()) return false;
  const RowBits& rows = short_[text];
  for (std::size_t row = 0; row < fields.size(); ++row) {
    const std::uint64_t held = rows[row / 64] >> (row % 64) & 1;
    fields[row] |= static_cast<std::uint8_t>(held * kInAnyField);
  }
  return true;
}

bool WordIndex::TempoIn(std::size_t row, const NumberRange& range) const {
  const double tempo = tempos_[row] / 100.0;
  return tempo > 0 && tempo >= range.least && tempo <= range.most;
}

bool WordIndex::YearIn(std::size_t row, const NumberRange& range) const {
  const double year = years_[row];
  return year > 0 && year >= range.least && year <= range.most;
}

std::size_t WordIndex::Bytes() const {
  std::size_t bytes = words_.capacity() + letters_.capacity() * sizeof(std::uint64_t) +
                      (word_starts_.capacity() + first_.capacity() + entries_.capacity()) * 4 +
                      (tempos_.capacity() + years_.capacity()) * 2;
  for (const RowBits& rows : short_) bytes += sizeof rows + rows.capacity() * sizeof(std::uint64_t);
  return bytes;
}

template <typename Note>
void WordIndex::ForEachShort(std::string_view word, const Note& note) const {
  for (std::size_t i = 0; i < word.size(); ++i) {
    for (std::size_t size = 1; size <= 3 && i + size <= word.size(); ++size) {
      if (const std::size_t text = ShortOf(word.substr(i, size)); text != kNone) note(text);
    }
  }
}

std::vector<std::size_t> WordIndex::CountShortTexts() const {
  std::vector<std::size_t> counts(kShort);
  for (std::size_t number = 0; number < letters_.size(); ++number) {
    const std::size_t held = first_[number + 1] - first_[number];
    ForEachShort(Word(number), [&](std::size_t text) { counts[text] += held; });
  }
  return counts;
}

// The entries of a text that most rows hold are too many to go through at every key.
void WordIndex::NoteShortTexts() {
  constexpr std::size_t kFewEntries = 65'536;
  if (entries_.size() <= kFewEntries) return;
  const std::vector<std::size_t> counts = CountShortTexts();
  short_.resize(kShort);
  for (std::size_t text = 0; text < kShort; ++text) {
    if (counts[text] > std::max(kFewEntries, Rows() / 4)) short_[text].assign((Rows() + 63) / 64, 0);
  }
  for (std::size_t number = 0; number < letters_.size(); ++number) {
    ForEachShort(Word(number), [&](std::size_t text) {
      RowBits& rows = short_[text];
      if (rows.empty()) return;
      for (std::uint32_t i = first_[number]; i < first_[number + 1]; ++i) {
        const std::uint32_t row = entries_[i] >> kFieldBits;
        rows[row / 64] |= std::uint64_t{1} << (row % 64);
      }
    });
  }
}

WordIndex::Builder::Builder() : slots_(1024) {}

void WordIndex::Builder::Add(const SearchedRow& row) {
  assert(index_.Rows() < kMostRows && "an entry has 26 bits for its row");
  row_.clear();
  for (std::size_t i = 0; i < row.fields.size(); ++i) {
    AddField(row.fields[i], static_cast<std::uint8_t>(1U << i));
  }
  for (const Held& held : row_) {
    words_.push_back(held.word);
    fields_.push_back(held.fields);
  }
  std::size_t count = row_.size();
  for (; count >= 255; count -= 255) counts_.push_back(255);
  counts_.push_back(static_cast<std::uint8_t>(count));
  const double hundredths = std::clamp(row.tempo * 100.0, 0.0, 65535.0);
  index_.tempos_.push_back(static_cast<std::uint16_t>(std::lround(hundredths)));
  index_.years_.push_back(static_cast<std::uint16_t>(std::clamp(row.year, 0, 9999)));
}

void WordIndex::Builder::AddField(std::string_view text, std::uint8_t field) {
  while (!text.empty()) {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), word.size() + 1));
    const std::uint32_t number = NumberOf(word);
    // In a row of endless words some have several entries, which does no harm.
    const auto from = row_.end() - static_cast<std::ptrdiff_t>(std::min(row_.size(), kLookedThrough));
    const auto held =
        std::find_if(from, row_.end(), [number](const Held& other) { return other.word == number; });
    if (held != row_.end()) {
      held->fields |= field;
    } else {
      row_.push_back({number, field});
    }
  }
}

std::uint32_t WordIndex::Builder::NumberOf(std::string_view word) {
  const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>{}(word));
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  for (; slots_[slot] != 0; slot = (slot + 1) & mask) {
    const std::uint32_t number = slots_[slot] - 1;
    if (hashes_[number] != hash) continue;
    const std::size_t start = index_.word_starts_[number];
    const std::size_t end =
        number + 1 < hashes_.size() ? index_.word_starts_[number + 1] : index_.words_.size();
    if (std::string_view(index_.words_).substr(start, end - start) == word) return number;
  }
  const auto number = static_cast<std::uint32_t>(hashes_.size());
  slots_[slot] = number + 1;
  hashes_.push_back(hash);
  index_.word_starts_.push_back(static_cast<std::uint32_t>(index_.words_.size()));
  index_.words_ += word;
  index_.letters_.push_back(LettersOf(word));
  if (hashes_.size() * 2 > slots_.size()) Grow();
  return number;
}

void WordIndex::Builder::Grow() {
  slots_.assign(slots_.size() * 2, 0);
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t number = 0; number < hashes_.size(); ++number) {
    std::size_t slot = hashes_[number] & mask;
    while (slots_[slot] != 0) slot = (slot + 1) & mask;
    slots_[slot] = static_cast<std::uint32_t>(number + 1);
  }
}

WordIndex WordIndex::Builder::Finish() {
  index_.word_starts_.push_back(static_cast<std::uint32_t>(index_.words_.size()));
  std::vector<std::uint32_t>& first = index_.first_;
  first.assign(hashes_.size() + 1, 0);
  for (const std::uint32_t word : words_) ++first[word + 1];
  for (std::size_t i = 1; i < first.size(); ++i) first[i] += first[i - 1];
  index_.entries_.resize(words_.size());
  std::vector<std::uint32_t> next(first.begin(), first.end());
  std::size_t at = 0;
  std::uint32_t row = 0;
  for (const std::uint8_t count : counts_) {
    for (const std::size_t end = at + count; at < end; ++at) {
      index_.entries_[next[words_[at]]++] = row << kFieldBits | (fields_[at] & kFieldMask);
    }
    if (count < 255) ++row;
  }
  index_.words_.shrink_to_fit();
  index_.word_starts_.shrink_to_fit();
  index_.letters_.shrink_to_fit();
  index_.tempos_.shrink_to_fit();
  index_.years_.shrink_to_fit();
  index_.NoteShortTexts();
  return std::move(index_);
}

}  // namespace catalogue
