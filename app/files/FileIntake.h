// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "catalogue/NameRule.h"
#include "catalogue/TagScratch.h"
#include "catalogue/ports/SongReader.h"
#include "catalogue/ports/TagReader.h"
#include "catalogue/track_table.h"
#include "support/Executor.h"
#include "support/Sentences.h"

namespace app {

/// Files on their way into the catalogue.
struct AddingProgress {
  int done = 0;
  int total = 0;  ///< 0 when nothing is being added
};

/// Takes files into the catalogue or, with a reader of MIDI songs, into the karaoke table: analysed one after
/// the other on workers, appended together in the given order.
///
/// A file that the table holds already keeps its row and gets no second one. Each file is a job of its own,
/// so that a deck's file does not wait behind a thousand others. Threads: the table's owner, who empties the
/// box.
class FileIntake {
 public:
  using Done = std::function<void(int rows, std::vector<std::string> refused)>;

  FileIntake(catalogue::track_table& table, catalogue::TagReader& tags, support::Executor& workers,
             std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box, const support::Sentences& say,
             catalogue::TagScratch& scratch, catalogue::SongReader* songs = nullptr);

  /// How names are made for those that are added from now on.
  void NameBy(const catalogue::NameRule& names) { names_ = names; }
  /// Batches are taken one after the other.
  void Add(std::vector<std::string> paths, Done done);
  [[nodiscard]] AddingProgress Progress() const;

 private:
  struct Batch;

  void StartNext();
  void Finish();
  static void Work(const std::shared_ptr<Batch>& batch);

  catalogue::track_table& table_;
  catalogue::TagReader& tags_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  const support::Sentences& say_;
  catalogue::TagScratch& scratch_;
  catalogue::SongReader* songs_;
  catalogue::NameRule names_;
  std::deque<std::shared_ptr<Batch>> batches_;  // shared with the job that works on the front one
};

}  // namespace app
