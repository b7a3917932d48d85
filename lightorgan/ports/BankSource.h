// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "lightorgan/PatternBank.h"

namespace lightorgan {

/// The bank files of the program folder.
class BankSource {
 public:
  virtual ~BankSource() = default;
  /// done is called once, on the caller's thread and perhaps later; a bank or a file that is not there is an
  /// empty table.
  virtual void Load(Side side, IoBoardSize size, int number, std::function<void(StepTable)> done) = 0;
};

}  // namespace lightorgan
