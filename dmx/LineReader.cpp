// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/LineReader.h"

#include "support/Text.h"

namespace dmx {
namespace {

using support::Sentence;

constexpr std::size_t kNotesKept = 20;
constexpr std::size_t kShown = 40;

/// A line that is cited in a sentence, cut where it is too long to be read there.
std::string Cited(std::string_view line) {
  return std::string(line.substr(0, kShown)) + (line.size() > kShown ? "..." : "");
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// As LeadingInteger, but a number that is too long is a large one and not 0.
std::int64_t LeadingNumber(std::string_view line) {
  constexpr std::size_t kDigits = 18;
  line = support::Trim(line);
  const bool negative = line.starts_with('-');
  if (negative || line.starts_with('+')) line.remove_prefix(1);
  const auto end = std::find_if_not(line.begin(), line.end(), IsDigit);
  const auto digits = static_cast<std::size_t>(end - line.begin());
  const std::int64_t number = digits > kDigits ? std::numeric_limits<std::int64_t>::max()
                                               : support::LeadingInteger(line.substr(0, digits));
  return negative ? -number : number;
}

bool IsWhole(std::string_view line) {
  line = support::Trim(line);
  if (line.starts_with('-') || line.starts_with('+')) line.remove_prefix(1);
  return !line.empty() && std::all_of(line.begin(), line.end(), IsDigit);
}

}  // namespace

void Notes::Add(std::string sentence) {
  if (HasRoom()) {
    kept_.push_back(std::move(sentence));
  } else {
    ++left_out_;
  }
}

bool Notes::HasRoom() const {
  return kept_.size() < kNotesKept;
}

std::vector<std::string> Notes::Sentences() const {
  std::vector<std::string> all = kept_;
  if (left_out_ > 0) all.push_back(say_(Sentence::MoreNotes, {std::to_string(left_out_)}));
  return all;
}

void LineReader::Text(std::string& target) {
  if (const auto line = Line()) target = *line;
}

int LineReader::Bounded(Sentence what, std::int64_t number, int lowest, int highest) {
  const std::int64_t bounded = std::clamp<std::int64_t>(number, lowest, highest);
  if (bounded != number && notes.HasRoom()) {
    notes.Add(say_(Sentence::NumberBounded, {std::to_string(number_), say_(what), std::to_string(bounded)}));
  } else if (bounded != number) {
    notes.Add({});
  }
  return static_cast<int>(bounded);
}

void LineReader::NoteLevel(int level, int bounded) {
  const bool room = notes.HasRoom();
  notes.Add(room ? say_(Sentence::LevelBounded, {std::to_string(level), std::to_string(bounded)})
                 : std::string());
}

std::optional<int> LineReader::Strict(Sentence what, int lowest, int highest) {
  const auto line = Line();
  if (!line) return std::nullopt;
  if (IsWhole(*line)) return Bounded(what, LeadingNumber(*line), lowest, highest);
  failure_ = say_(Sentence::NumberNotWhole, {std::to_string(number_), say_(what), Cited(*line)});
  return std::nullopt;
}

std::optional<int> LineReader::Lenient(Sentence what, int lowest, int highest) {
  const auto line = Line();
  if (!line) return std::nullopt;
  return Bounded(what, LeadingNumber(*line), lowest, highest);
}

}  // namespace dmx
