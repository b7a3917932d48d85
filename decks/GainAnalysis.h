// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "decks/clsMp3Info.h"
#include "decks/ports/CommandRunner.h"
#include "support/ProgramFolder.h"
#include "support/Result.h"

namespace decks {

/// The loudness of mp3 files by the program mp3gain, from the program folder, or else from wherever the
/// system finds it. Threads: a worker; waits for the program.
class GainAnalysis {
 public:
  GainAnalysis(CommandRunner& commands, support::ProgramFolder folder)
      : commands_(commands), folder_(std::move(folder)) {}

  /// Resets the record and fills it in; on failure it keeps its reset values.
  support::Result<void> Analyse(const std::string& filename, clsMp3Info& info);
  /// The gain to be shown; a record that was not analysed yet is analysed first.
  std::string Query(const std::string& filename, clsMp3Info& info);

 private:
  [[nodiscard]] Command CommandFor(const std::string& filename) const;

  CommandRunner& commands_;
  support::ProgramFolder folder_;
};

}  // namespace decks
