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

/// Gives the lines one after the other, empty ones behind the last.
class Lines {
 public:
  explicit Lines(std::string_view text) : lines_(support::SplitLines(text)) {}
  [[nodiscard]] bool None() const { return lines_.empty(); }
  std::string_view Next() { return at_ < lines_.size() ? lines_[at_++] : std::string_view(); }
  int Number() {
    return static_cast<int>(std::clamp<std::int64_t>(support::LeadingInteger(Next()), 0, kHighest));
  }

 private:
  std::vector<std::string_view> lines_;
  std::size_t at_ = 0;
};

}  // namespace

std::string SnapshotText(const Snapshot& snapshot, IoBoardSize size) {
  const auto outputs = static_cast<std::size_t>(OutputsOf(size));
  std::string text;
  AddSide(text, SnapshotWord(snapshot.io), snapshot.io_speed, std::span(snapshot.io_levels).first(outputs));
  AddSide(text, SnapshotWord(snapshot.dac), snapshot.dac_speed,
          std::span(snapshot.dac_levels).first(outputs));
  return text;
}

std::optional<Snapshot> ParseSnapshot(std::string_view text, IoBoardSize size) {
  Lines lines(text);
  if (lines.None()) return std::nullopt;
  const auto outputs = static_cast<std::size_t>(OutputsOf(size));
  Snapshot snapshot;
  snapshot.io = IoModeOfSnapshot(lines.Next());
  snapshot.io_speed = lines.Number();
  for (int& level : std::span(snapshot.io_levels).first(outputs)) level = lines.Number();
  snapshot.dac = DacModeOfSnapshot(lines.Next());
  snapshot.dac_speed = lines.Number();
  for (int& level : std::span(snapshot.dac_levels).first(outputs)) level = lines.Number();
  return snapshot;
}

}  // namespace lightorgan
