// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "support/Clock.h"
#include "support/Executor.h"
#include "support/ProgramFolder.h"
#include "support/Sentences.h"
#include "support/ports/FileSaver.h"

namespace support {
class Settings;
}

namespace app {

/// What a part of the workstation that joins one room to the program is given: the stations of light and
/// song.
///
/// A station is commanded from the window's thread, does its work on the conductor, leaves what blocks to the
/// workers, who pass the gate, and publishes its own view.
struct StationContext {
  const support::ProgramFolder& folder;
  support::Settings& settings;
  support::FileSaver& files;
  support::Executor& workers;
  const support::Clock& clock;
  std::shared_ptr<WorkGate> gate;
  std::shared_ptr<Mailbox> conductor;
  std::shared_ptr<Mailbox> window;
  const support::Sentences& say;
  std::function<void(support::Saying)> tell;  ///< a sentence to the status line, from any thread
  std::function<void(std::string)> prompt;    ///< a sentence in a box of its own, from any thread
};

}  // namespace app
