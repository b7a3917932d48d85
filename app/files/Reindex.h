// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/files/FileIntake.h"
#include "app/files/ScanRows.h"
#include "app/ports/ScanPort.h"
#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "catalogue/ports/SideStore.h"
#include "catalogue/track_table.h"
#include "support/Executor.h"
#include "support/Sentences.h"

namespace app {

/// Makes a table anew from folder trees, one after the other.
///
/// The table stands as it was until the scan is complete, and stays so when it is cancelled or none of the
/// folders is there. Law: a row that is added, changed or removed while the scan runs is so afterwards too;
/// no row goes unless its file is gone and somebody said so. Threads: the table's owner, who empties the box.
class Reindex {
 public:
  struct Outcome {
    bool replaced = false;  ///< the table now begins with the folders' files
    int rows = 0;
    int found = 0;  ///< files
    int gone = 0;   ///< rows of before that were taken out
    std::vector<ScanRows::Moved> moved;
    std::string sentence;  ///< what is to be told, or empty
  };
  using Done = std::function<void(const Outcome&)>;

  Reindex(catalogue::track_table& table, catalogue::ScanMode mode, ScanPort& port, support::Executor& workers,
          std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box, const support::Sentences& say);

  /// Findings about files are looked for there. Before the first scan.
  void LookIn(catalogue::SideStore* store) { store_ = store; }
  /// Called by a worker for each file that a scan found elsewhere, before its outcome.
  using FileMoved = std::function<void(const std::string& from, const std::string& to)>;
  void OnMoved(FileMoved moved) { moved_ = std::move(moved); }
  /// What a scan would take out of the table.
  struct Loss {
    int rows = 0;   ///< of the table now
    int found = 0;  ///< files
    int gone = 0;
    std::string first;  ///< of their files
  };
  enum class Answer { TakeOut, Keep };
  /// Asked before rows go; the answer is given once, at any time. Where nobody asks, rows stay.
  using Ask = std::function<void(const Loss&, std::function<void(Answer)>)>;
  void OnLoss(Ask ask) { ask_ = std::move(ask); }

  /// Cancels a scan that is under way. A folder that lies in another one is part of that.
  void Start(const std::vector<std::string>& folders, const catalogue::NameRule& names, Done done);
  /// The outcome still comes.
  void Cancel();
  /// Total is 0 while the folders are listed.
  [[nodiscard]] ScanProgress Progress() const;
  [[nodiscard]] bool Running() const { return scan_ != nullptr; }

 private:
  struct Scan;
  void ScanNext(const std::shared_ptr<Scan>& scan);
  void GoOn(const std::shared_ptr<Scan>& scan);
  static void Join(Scan& scan, catalogue::SideStore* store, const FileMoved& moved);
  static void Add(Scan& scan, ScanFound found);
  void Take(const std::shared_ptr<Scan>& scan);
  void AskFor(const std::shared_ptr<Scan>& scan);
  void CatchUp(const std::shared_ptr<Scan>& scan);
  void Finish(const std::shared_ptr<Scan>& scan);
  [[nodiscard]] std::string SentenceOn(const Scan& scan, const Outcome& outcome) const;

  catalogue::track_table& table_;
  const catalogue::ScanMode mode_;
  const int name_column_;
  ScanPort& port_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  const support::Sentences& say_;
  catalogue::SideStore* store_ = nullptr;
  FileMoved moved_;
  Ask ask_;
  std::shared_ptr<Scan> scan_;  // with the job that reports
  std::shared_ptr<RunningScan> running_;
};

}  // namespace app
