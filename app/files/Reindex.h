// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/files/FileIntake.h"
#include "app/ports/ScanPort.h"
#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "catalogue/MovedFiles.h"
#include "catalogue/TableChanges.h"
#include "catalogue/track_table.h"
#include "support/Executor.h"
#include "support/Sentences.h"

namespace app {

/// Makes a table anew from a folder tree.
///
/// The table stands as it was until the scan is complete, and stays so when it is cancelled or the folder is
/// not there. Law: a row that is added, changed or removed while the scan runs is so afterwards too. Threads:
/// the table's owner, who empties the box.
class Reindex {
 public:
  struct Outcome {
    bool replaced = false;  ///< the table now holds the folder's files
    int rows = 0;
    int gone = 0;  ///< rows of before whose files the scan did not find
    std::vector<catalogue::ScanComparison::Moved> moved;  ///< files that it found elsewhere
    std::string sentence;                                 ///< what is to be told, or empty
  };
  using Done = std::function<void(const Outcome&)>;

  Reindex(catalogue::track_table& table, catalogue::ScanMode mode, ScanPort& port, support::Executor& workers,
          std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box, const support::Sentences& say);

  /// Called by a worker for each file that a scan found elsewhere, before its outcome.
  using FileMoved = std::function<void(const std::string& from, const std::string& to)>;
  void OnMoved(FileMoved moved) { moved_ = std::move(moved); }

  /// Cancels a scan that is under way.
  void Start(const std::string& folder, const catalogue::NameRule& names, Done done);
  /// The outcome still comes.
  void Cancel();
  /// Total is 0 while the folders are listed.
  [[nodiscard]] ScanProgress Progress() const;
  [[nodiscard]] bool Running() const { return scan_ != nullptr; }

 private:
  struct Scan;
  static void Compare(Scan& scan, ScanFound& found, const FileMoved& moved);
  void Take(const std::shared_ptr<Scan>& scan);
  void CatchUp(const std::shared_ptr<Scan>& scan, catalogue::TableChanges changes);
  void Finish(const std::shared_ptr<Scan>& scan);
  [[nodiscard]] std::string SentenceOn(const ScanFound& found, const Outcome& outcome) const;

  catalogue::track_table& table_;
  const catalogue::ScanMode mode_;
  const int name_column_;
  ScanPort& port_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  const support::Sentences& say_;
  FileMoved moved_;
  std::shared_ptr<Scan> scan_;  // with the job that reports
  std::shared_ptr<RunningScan> running_;
};

}  // namespace app
