// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "catalogue/TagScratch.h"
#include "catalogue/ports/TagReader.h"
#include "catalogue/track_table.h"
#include "support/Executor.h"
#include "support/Sentences.h"

namespace app {

/// Opens files into playlists: audio files, tables of tracks, lists of paths.
///
/// A file that the catalogue knows gets its row from there; the others go through the add-one-file step, each
/// in a job of its own, so that a deck's file does not wait behind a thousand others. The rows of one opening
/// are appended together. Threads: the tables' owner, who empties the box.
class PlaylistIntake {
 public:
  /// With the rows that were appended and a sentence for each thing left out.
  using Done = std::function<void(int rows, std::vector<std::string> refused)>;

  PlaylistIntake(catalogue::TagReader& tags, support::Executor& workers, std::shared_ptr<WorkGate> gate,
                 std::shared_ptr<Mailbox> box, const support::Sentences& say, catalogue::TagScratch& scratch);

  /// Both tables outlive the box.
  void Open(const std::string& path, const catalogue::track_table& catalogue,
            catalogue::track_table& playlist, Done done);

 private:
  struct Batch;
  static void Work(const std::shared_ptr<Batch>& batch);

  catalogue::TagReader& tags_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  const support::Sentences& say_;
  catalogue::TagScratch& scratch_;
};

}  // namespace app
