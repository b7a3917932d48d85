// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "support/Result.h"

namespace decks {

/// A program to be run. No shell reads any of it.
struct Command {
  std::string program;  ///< a path, or a bare name that is looked up where the system looks
  std::vector<std::string> arguments;
  std::chrono::milliseconds time_limit{60'000};
};

/// Runs other programs and hands over what they print.
/// Threads: any; waits for the program, so workers only.
class CommandRunner {
 public:
  virtual ~CommandRunner() = default;
  /// The standard output, each of its line ends as CR LF whatever the program printed, and whatever status it
  /// ended with. A program that takes or prints too much is ended and gives an error.
  virtual support::Result<std::string> Run(const Command& command) = 0;
};

}  // namespace decks
