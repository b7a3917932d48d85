// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "decks/clsMp3Info.h"
#include "support/Executor.h"
#include "support/ProgramFolder.h"
#include "support/Units.h"

namespace decks {
class CommandRunner;
}

namespace app {

struct GainAnswer {
  std::string shown;                       ///< the gain query: "89.0" where it is not known
  std::optional<support::Decibels> lacks;  ///< up to the reference, as mp3gain found; empty: no answer
};

/// The gain of files by the program mp3gain, which analyses each once a run.
/// Threads: the window's, which empties the box.
class GainQueries {
 public:
  using Done = std::function<void(const GainAnswer& answer)>;

  /// commands: null where mp3gain is not there.
  GainQueries(decks::CommandRunner* commands, const support::ProgramFolder& folder,
              support::Executor& workers, std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box);

  /// At once where it is known; else a worker finds out.
  void Ask(const std::string& filename, const Done& done);

 private:
  decks::CommandRunner* commands_;
  const support::ProgramFolder& folder_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  std::map<std::string, decks::clsMp3Info> known_;
};

}  // namespace app
