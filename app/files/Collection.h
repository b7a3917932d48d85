// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "app/files/FileRemoval.h"
#include "app/files/IndexKeeper.h"
#include "app/files/IntakeOrder.h"
#include "app/files/Reindex.h"
#include "catalogue/IndexFile.h"
#include "catalogue/track_table.h"
#include "support/Clock.h"
#include "support/ProgramFolder.h"

namespace app {

/// What tells the music and the karaoke songs apart.
struct CollectionKind {
  ListId list;
  catalogue::track_table empty;
  int filename_column;
  std::string_view index;
  support::Sentence damaged;
  support::Sentence unreadable;
  catalogue::ScanMode scan;
  FileRemoval::Companion companion;
};
[[nodiscard]] CollectionKind MusicKind();
[[nodiscard]] CollectionKind KaraokeKind();

/// All music, or all karaoke songs: their table, its index on the disk, and what changes both.
/// Threads: the window's, which empties the box.
class Collection {
 public:
  struct Outside {
    const support::ProgramFolder& folder;
    support::FileSaver& files;
    support::Executor& workers;
    const support::Clock& clock;
    const support::Sentences& say;
    ScanPort& scan;
    std::function<void(const support::Error&)> complain;  ///< from any thread
  };
  Collection(CollectionKind kind, const Outside& outside, const std::shared_ptr<WorkGate>& gate,
             const std::shared_ptr<Mailbox>& box);

  /// Reads the index; a sentence, to be told, where not all of it could be.
  [[nodiscard]] support::Saying Load();
  /// What Load read.
  [[nodiscard]] const catalogue::IndexReport& Loaded() const { return loaded_; }

  [[nodiscard]] ListId List() const { return kind_.list; }
  /// Rows are appended, removed and moved by catalogue/RowMoves.h; that saves nothing.
  [[nodiscard]] catalogue::track_table& Table() { return table_; }
  [[nodiscard]] const catalogue::track_table& Table() const { return table_; }
  [[nodiscard]] int FilenameColumn() const { return kind_.filename_column; }

  void Save() { index_.Save(table_); }
  /// What no worker has begun to save. Requires: the gate is closed.
  void Flush() { index_.Flush(); }

  /// Deletes the rows' files from the disk, then their rows, and saves the index. Asks nobody. A row stays
  /// whose file could not be deleted, or is not there. Told the number of rows removed and a sentence for
  /// each file that was not deleted.
  void Delete(const std::vector<int>& rows, FileRemoval::Done done);

  /// How a scan tells and asks; before the first one.
  [[nodiscard]] Reindex& Scans() { return scan_; }
  /// Makes the table anew and saves it; one that is under way is cancelled.
  void Scan(const std::vector<std::string>& folders, const catalogue::NameRule& names, Reindex::Done done);
  /// The table stays as it was.
  void CancelScan() { scan_.Cancel(); }
  [[nodiscard]] bool IsScanning() const { return scan_.Running(); }
  /// All zero, but for the time, when no scan is under way.
  [[nodiscard]] ScanProgress Scanning() const;

 private:
  CollectionKind kind_;
  Outside outside_;
  catalogue::track_table table_;
  catalogue::IndexReport loaded_;
  IndexKeeper index_;
  FileRemoval removal_;
  Reindex scan_;
  support::TimePoint scan_began_{};
};

}  // namespace app
