// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "app/WorkGate.h"
#include "app/ports/ScanPort.h"
#include "catalogue/TagScratch.h"
#include "catalogue/ports/TagReader.h"
#include "support/Executor.h"

namespace app {

/// Reads every file of the tree anew, one after the other; each is a job of its own, so that a deck's file
/// does not wait behind a thousand others.
class PlainScan final : public ScanPort {
 public:
  /// Reader, workers and scratch file are used by jobs that pass the gate.
  PlainScan(catalogue::TagReader& tags, support::Executor& workers, std::shared_ptr<WorkGate> gate,
            catalogue::TagScratch& scratch);

  std::shared_ptr<RunningScan> Start(const ScanWish& wish, Done done) override;

 private:
  class Scan;

  catalogue::TagReader& tags_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  catalogue::TagScratch& scratch_;
};

}  // namespace app
