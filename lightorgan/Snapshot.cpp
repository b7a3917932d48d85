// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/Snapshot.h"

#include <algorithm>
#include <span>
#include <vector>

#include "support/Text.h"

namespace lightorgan {
namespace {

constexpr std::int64_t kHighest = 255;

void AddSide(std::string& text, std::string_view word, int speed, std::span<const int> levels) {
  text.append(word).append("\r\n").append(std::to_string(speed)).append("\r\n");
  for (const int level : levels) text.append(std::to_string(level)).append("\r\n");
}

/// Gives the lines one after the other.
class Lines {
 public:
  explicit Lines(std::string_view text) : lines_(support::SplitLines(text)) {}
  [[nodiscard]] bool AtEnd() const { return at_ == lines_.size(); }
  [[nodiscard]] std::size_t Count() const { return lines_.size(); }
  std::string_view Next() { return AtEnd() ? std::string_view() : lines_[at_++]; }
  std::optional<int> Number() {
    if (AtEnd()) return std::nullopt;
    return static_cast<int>(std::clamp<std::int64_t>(support::LeadingInteger(Next()), 0, kHighest));
  }
  /// How many of the levels are there.
  int Levels(std::span<int> levels) {
    int held = 0;
    for (; held < static_cast<int>(levels.size()) && !AtEnd(); ++held)
      levels[static_cast<std::size_t>(held)] = Number().value_or(0);
    return held;
  }

 private:
  std::vector<std::string_view> lines_;
  std::size_t at_ = 0;
};

}  // namespace

std::string SnapshotText(const Snapshot& snapshot, IoBoardSize size) {
  const auto outputs = static_cast<std::size_t>(OutputsOf(size));
  std::string text;
  AddSide(text, SnapshotWord(snapshot.io), snapshot.io_speed.value_or(0),
          std::span(snapshot.io_levels).first(outputs));
  AddSide(text, SnapshotWord(snapshot.dac.value_or(DacMode::Constant)), snapshot.dac_speed.value_or(0),
          std::span(snapshot.dac_levels).first(outputs));
  return text;
}

std::optional<Snapshot> ParseSnapshot(std::string_view text) {
  Lines lines(text);
  if (lines.AtEnd()) return std::nullopt;
  const bool two = lines.Count() > 2 * (2 + static_cast<std::size_t>(kBoardChannels));
  const auto outputs = static_cast<std::size_t>(OutputsOf(two ? IoBoardSize::Two : IoBoardSize::One));
  Snapshot snapshot;
  snapshot.io = IoModeOfSnapshot(lines.Next());
  snapshot.io_speed = lines.Number();
  snapshot.io_held = lines.Levels(std::span(snapshot.io_levels).first(outputs));
  if (!lines.AtEnd()) snapshot.dac = DacModeOfSnapshot(lines.Next());
  snapshot.dac_speed = lines.Number();
  snapshot.dac_held = lines.Levels(std::span(snapshot.dac_levels).first(outputs));
  return snapshot;
}

}  // namespace lightorgan
