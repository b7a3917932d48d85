// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>
#include <vector>

#include "decks/ports/CommandRunner.h"

namespace decks::testing {

/// Programs that exist only here, by what they print.
class FakeCommandRunner final : public CommandRunner {
 public:
  void Add(const std::string& program, const std::string& output) { programs_[program] = output; }
  [[nodiscard]] const std::vector<Command>& Ran() const { return ran_; }

  support::Result<std::string> Run(const Command& command) override {
    ran_.push_back(command);
    const auto program = programs_.find(command.program);
    if (program == programs_.end()) {
      return support::Error{support::ErrorCode::NotFound,
                            "The program \"" + command.program + "\" cannot be started."};
    }
    std::string text;
    for (const char c : program->second) text += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return text;
  }

 private:
  std::map<std::string, std::string> programs_;
  std::vector<Command> ran_;
};

}  // namespace decks::testing
