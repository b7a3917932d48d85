// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/Sentences.h"

namespace dmx {

/// What a reader had to change to make sense of a file, a sentence each; of many only the first are kept.
class Notes {
 public:
  /// say: in which language; outlives the notes.
  explicit Notes(const support::Sentences& say) : say_(say) {}

  void Add(std::string sentence);
  /// The last one counts those that were not kept.
  [[nodiscard]] std::vector<std::string> Sentences() const;
  /// False: a further one would only be counted.
  [[nodiscard]] bool HasRoom() const;

 private:
  const support::Sentences& say_;
  std::vector<std::string> kept_;
  std::size_t left_out_ = 0;
};

/// Takes a data file line by line and turns lines into numbers.
///
/// Law: after the end, and after a line that had to be a number and is none, every further call gives
/// nothing, so a reader stops by itself. Threads: one at a time.
class LineReader {
 public:
  /// The text outlives the reader, and so does what its notes and failures are said in.
  LineReader(std::string_view text, const support::Sentences& say) : notes(say), say_(say), rest_(text) {}

  /// Nothing at the end. A last line without an end counts, an empty rest does not.
  std::optional<std::string_view> Line() {
    if (rest_.empty() || !failure_.empty()) {
      ended_early_ = true;
      return std::nullopt;
    }
    ++number_;
    const std::size_t end = rest_.find_first_of("\r\n");
    const std::string_view line = rest_.substr(0, end);
    const std::size_t size = line.size();
    const bool pair = rest_.substr(size, 2) == "\r\n";
    rest_.remove_prefix(std::min(rest_.size(), size + (pair ? 2 : 1)));
    return line;
  }
  /// Leaves the target as it is at the end of the text.
  void Text(std::string& target);
  /// A whole number with nothing else beside it, brought into the bounds with a note; any other line is a
  /// failure. what: a name of the table, such as TheLoops.
  std::optional<int> Strict(support::Sentence what, int lowest, int highest);
  /// The digits at the start of the line, 0 without any, brought into the bounds with a note.
  std::optional<int> Lenient(support::Sentence what, int lowest, int highest);
  /// A number of things to come: whole, not below 0, and believed only as the things are there.
  std::optional<int> Count(support::Sentence what) {
    return Strict(what, 0, std::numeric_limits<int>::max());
  }

  /// What has not been taken yet, for readers that know how the next lines are most likely written.
  [[nodiscard]] std::string_view Rest() const { return failure_.empty() ? rest_ : std::string_view(); }
  /// Requires: so many bytes are left, whole lines all of them.
  void Take(std::size_t bytes, int lines) {
    rest_.remove_prefix(bytes);
    number_ += lines;
  }

  /// Notes that a level was brought into bounds.
  void NoteLevel(int level, int bounded);

  [[nodiscard]] bool AtEnd() const { return rest_.empty() || !failure_.empty(); }
  /// A line was asked for that is not there.
  [[nodiscard]] bool EndedEarly() const { return ended_early_; }
  /// Why a number could not be read; empty when all could.
  [[nodiscard]] const std::string& Failure() const { return failure_; }
  [[nodiscard]] std::size_t Left() const { return rest_.size(); }

  Notes notes;

 private:
  int Bounded(support::Sentence what, std::int64_t number, int lowest, int highest);

  const support::Sentences& say_;
  std::string_view rest_;
  std::string failure_;
  std::int64_t number_ = 0;
  bool ended_early_ = false;
};

}  // namespace dmx
