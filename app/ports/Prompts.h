// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace app {

/// Messages that the user has to see, each in a box of its own.
/// Threads: the window's.
class Prompts {
 public:
  virtual ~Prompts() = default;
  /// Shows a whole sentence and returns at once; boxes that are open already stay.
  virtual void Tell(const std::string& sentence) = 0;
};

}  // namespace app
