// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "catalogue/track_table.h"
#include "support/Executor.h"
#include "support/Sentences.h"

namespace app {

/// Deletes the files of a table's rows from the disk, on a worker, and then their rows.
///
/// A row whose file could not be deleted stays, and one whose file was not there: its disk may come back.
/// Nobody is asked: the window did. Threads: the table's owner, who empties the box.
class FileRemoval {
 public:
  /// Song: with each file but an archive go the mp3 and the disc image of the same name.
  enum class Companion { None, Song };
  using Done = std::function<void(int rows, std::vector<std::string> kept)>;

  FileRemoval(catalogue::track_table& table, int filename_column, Companion companion,
              support::Executor& workers, std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box,
              const support::Sentences& say);

  void Remove(const std::vector<int>& rows, Done done);

 private:
  struct Batch;
  void Finish(const Batch& batch);

  catalogue::track_table& table_;
  const int filename_column_;
  const Companion companion_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  const support::Sentences& say_;
};

}  // namespace app
