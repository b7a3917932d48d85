// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "decks/ports/CommandRunner.h"

namespace platform::process {

/// Runs a program with its standard output caught; it reads nothing, and what it says elsewhere is dropped.
///
/// Threads: any. Law: the program gets a process group of its own, which is ended when the time is up or the
/// output passes kMostBytes, and no zombie is left whatever happens.
class basCommandOutput final : public decks::CommandRunner {
 public:
  static constexpr std::size_t kMostBytes = 1 << 20;

  support::Result<std::string> Run(const decks::Command& command) override;
};

}  // namespace platform::process
