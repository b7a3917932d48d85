// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "app/ports/ScanPort.h"
#include "app/work/IdleCores.h"
#include "app/work/WorkGate.h"
#include "catalogue/TagScratch.h"
#include "catalogue/ports/FolderReader.h"
#include "catalogue/ports/SideStore.h"
#include "catalogue/ports/SongReader.h"
#include "catalogue/ports/TagReader.h"
#include "support/Executor.h"

namespace app {

/// What a scan reads, and what it keeps of that for the next one.
struct TreePorts {
  catalogue::FolderReader& folders;
  catalogue::TagReader& tags;
  catalogue::TagScratch* scratch = nullptr;  ///< null: blocks of mixing tags are read where they are
  catalogue::SongReader* songs = nullptr;    ///< null: MIDI songs are left out
  catalogue::SideStore* store = nullptr;     ///< null: every file is read each time
};

/// Reads the files of a tree on all idle workers at once.
///
/// What the rows of a folder are made of is kept of the folder. Law: the rows are those of a scan that reads
/// every file, in its order, whatever was kept; a file is read again when its size or its time is another, or
/// when it had been written a moment before it was read.
class TreeScan final : public ScanPort {
 public:
  /// Ports and workers are used by jobs that pass the gate.
  TreeScan(const TreePorts& ports, support::Executor& workers, std::shared_ptr<WorkGate> gate,
           std::shared_ptr<const IdleCores> cores);

  std::shared_ptr<RunningScan> Start(const ScanWish& wish, Done done) override;

 private:
  class Scan;

  TreePorts ports_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<const IdleCores> cores_;
};

}  // namespace app
