// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

namespace app {

/// Messages that the user has to see and questions, each in a box of its own.
/// Threads: the window's.
class Prompts {
 public:
  virtual ~Prompts() = default;
  /// Shows a whole sentence and returns at once; boxes that are open already stay.
  virtual void Tell(const std::string& sentence) = 0;

  struct Question {
    std::string text;
    std::string yes;  ///< names what is done then
    std::string no;   ///< what a closed box answers too
  };
  /// Shows a question and returns at once. The answer comes once; not at all where the window goes first.
  virtual void Ask(const Question& question, std::function<void(bool)> answer) = 0;
};

}  // namespace app
