// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/WordIndex.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <functional>
#include <iterator>
#include <utility>

namespace catalogue {
namespace {

constexpr int kFieldBits = 6;
constexpr std::uint32_t kFieldMask = (1U << kFieldBits) - 1;
constexpr std::size_t kLetters = 36, kNone = SIZE_MAX;
constexpr std::size_t kLookedThrough = 64;
constexpr std::size_t kMostWaiting = std::size_t{1} << 19;

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

void WordIndex::MatchOne(const SearchTerm& term, RowBits& rows) const {
  const Pattern pattern{term.words.front(), term.whole_at_start, term.whole_at_end, term.fields};
  if (const RowBits* known = ShortRows(pattern)) {
    for (std::size_t i = 0; i < rows.size(); ++i) rows[i] |= (*known)[i];
    return;
  }
  MatchWord(pattern,
            [&](std::uint32_t row, std::uint8_t) { rows[row / 64] |= std::uint64_t{1} << row % 64; });
}

void WordIndex::MatchAll(const SearchTerm& term, std::span<std::uint8_t> fields) const {
  const std::size_t last = term.words.size() - 1;
  std::vector<std::uint8_t> of_word;
  for (std::size_t i = 0; i <= last; ++i) {
    const Pattern pattern{term.words[i], i > 0 || term.whole_at_start, i < last || term.whole_at_end,
                          term.fields};
    of_word.assign(fields.size(), 0);
    MatchWord(pattern, [&](std::uint32_t row, std::uint8_t held) { of_word[row] |= held; });
    for (std::size_t row = 0; row < fields.size(); ++row) {
      fields[row] = i == 0 ? of_word[row] : fields[row] & of_word[row];
    }
  }
}

template <typename Note>
void WordIndex::ForEachRow(std::size_t word, const Note& note) const {
  const std::uint8_t* at = entries_.data() + first_[word];
  const std::uint8_t* const end = entries_.data() + first_[word + 1];
  for (std::uint32_t row = 0; at < end;) {
    std::uint32_t entry = *at & 0x7FU;
    for (int shift = 7; (*at++ & 0x80) != 0; shift += 7) entry |= (*at & 0x7FU) << shift;
    row += entry >> kFieldBits;
    note(row, static_cast<std::uint8_t>(entry & kFieldMask));
  }
}

template <typename Note>
void WordIndex::MatchWord(const Pattern& pattern, const Note& note) const {
  const std::uint64_t wanted = LettersOf(pattern.word);
  const std::size_t count = letters_.size();
  for (std::size_t number = 0; number < count; ++number) {
    if ((letters_[number] & wanted) != wanted || !pattern.Fits(Word(number))) continue;
    ForEachRow(number, [&](std::uint32_t row, std::uint8_t fields) {
      const auto held = static_cast<std::uint8_t>(fields & pattern.fields);
      if (held != 0) note(row, held);
    });
  }
}

const RowBits* WordIndex::ShortRows(const Pattern& pattern) const {
  if (pattern.at_start || pattern.at_end || pattern.fields != kInAnyField) return nullptr;
  const std::size_t text = ShortOf(pattern.word);
  return text == kNone || short_.empty() || short_[text].empty() ? nullptr : &short_[text];
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
                      (word_starts_.capacity() + first_.capacity()) * 4 + entries_.capacity() +
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
    std::size_t held = 0;  // each entry has one last byte
    for (std::size_t i = first_[number]; i < first_[number + 1]; ++i) held += entries_[i] < 0x80 ? 1 : 0;
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
      ForEachRow(number, [&rows](std::uint32_t row, std::uint8_t) {
        rows[row / 64] |= std::uint64_t{1} << row % 64;
      });
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
  const auto number = static_cast<std::uint32_t>(index_.Rows());
  for (const Held& held : row_) {
    waiting_.push_back({held.word, number << kFieldBits | (held.fields & kFieldMask)});
  }
  if (waiting_.size() >= kMostWaiting) Pack();
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

void WordIndex::Builder::Pack() {
  std::vector<std::uint32_t> next(hashes_.size() + 1), sorted(waiting_.size());
  for (const Entry& entry : waiting_) ++next[entry.word + 1];
  for (std::size_t i = 1; i < next.size(); ++i) next[i] += next[i - 1];
  for (const Entry& entry : waiting_) sorted[next[entry.word]++] = entry.row_and_fields;
  waiting_.clear();
  last_rows_.resize(hashes_.size());
  Packed& packed = packed_.emplace_back();
  packed.bytes.reserve(sorted.size() * 3);
  std::size_t i = 0;
  for (std::uint32_t word = 0; i < sorted.size(); ++word) {
    if (next[word] == i) continue;
    for (; i < next[word]; ++i) {
      const std::uint32_t row = sorted[i] >> kFieldBits;
      const std::uint32_t rows = row - std::exchange(last_rows_[word], row);
      std::uint32_t rest = rows << kFieldBits | (sorted[i] & kFieldMask);
      for (; rest >= 0x80; rest >>= 7) packed.bytes.push_back(static_cast<std::uint8_t>(rest | 0x80));
      packed.bytes.push_back(static_cast<std::uint8_t>(rest));
    }
    packed.words.push_back(word);
    packed.ends.push_back(static_cast<std::uint32_t>(packed.bytes.size()));
  }
  packed.bytes.shrink_to_fit();
}

void WordIndex::Builder::Join() {
  std::vector<std::uint32_t>& first = index_.first_;
  first.assign(hashes_.size() + 1, 0);
  for (const Packed& packed : packed_) {
    for (std::size_t i = 0; i < packed.words.size(); ++i) {
      first[packed.words[i] + 1] += packed.ends[i] - (i == 0 ? 0 : packed.ends[i - 1]);
    }
  }
  for (std::size_t i = 1; i < first.size(); ++i) first[i] += first[i - 1];
  index_.entries_.resize(first.back());
  std::vector<std::uint32_t> next(first.begin(), first.end() - 1);
  for (Packed& packed : packed_) {
    std::size_t begin = 0;
    for (std::size_t i = 0; i < packed.words.size(); ++i) {
      const std::size_t size = packed.ends[i] - begin;
      std::uint32_t& place = next[packed.words[i]];
      std::copy_n(packed.bytes.begin() + static_cast<std::ptrdiff_t>(begin), size,
                  index_.entries_.begin() + place);
      place += static_cast<std::uint32_t>(size);
      begin = packed.ends[i];
    }
    packed = {};
  }
}

WordIndex WordIndex::Builder::Finish() {
  index_.word_starts_.push_back(static_cast<std::uint32_t>(index_.words_.size()));
  Pack();
  slots_ = {};
  waiting_ = {};
  Join();
  index_.words_.shrink_to_fit();
  index_.word_starts_.shrink_to_fit();
  index_.letters_.shrink_to_fit();
  index_.tempos_.shrink_to_fit();
  index_.years_.shrink_to_fit();
  index_.NoteShortTexts();
  return std::move(index_);
}

}  // namespace catalogue
