// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/FileRemoval.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "catalogue/Companion.h"
#include "catalogue/DeleteFile.h"
#include "catalogue/FolderScan.h"
#include "catalogue/RowMoves.h"

namespace app {

struct FileRemoval::Batch {
  struct File {
    int row = 0;
    std::string name;
    bool gone = false;
  };

  void Work(const support::Sentences& say) {
    for (File& file : files) {
      // Before the file: what belongs to it is known by its name.
      const std::vector<std::string> others = companion == Companion::Song ? PartsBeside(file.name) : Names();
      file.gone = Delete(file.name, say);
      for (const std::string& other : file.gone ? others : Names()) Delete(other, say);
    }
  }
  bool Delete(const std::string& name, const support::Sentences& say) {
    const catalogue::Deletion deletion = catalogue::DeleteFile(name);
    if (deletion == catalogue::Deletion::Done) return true;
    const bool there = deletion == catalogue::Deletion::Failed;
    kept.push_back(say(there ? support::Sentence::FileNotDeleted : support::Sentence::FileNotThere, {name}));
    return false;
  }
  static std::vector<std::string> PartsBeside(const std::string& song) {
    std::vector<std::string> parts;
    if (catalogue::IsArchive(song)) return parts;
    for (const std::string_view extension : {"mp3", "cdg"}) {
      std::string part = catalogue::CompanionOf(song, extension);
      if (!part.empty() && part != song) parts.push_back(std::move(part));
    }
    return parts;
  }

  using Names = std::vector<std::string>;
  Companion companion;
  Done done;
  std::vector<File> files;
  std::vector<std::string> kept;
};

FileRemoval::FileRemoval(catalogue::track_table& table, int filename_column, Companion companion,
                         support::Executor& workers, std::shared_ptr<WorkGate> gate,
                         std::shared_ptr<Mailbox> box, const support::Sentences& say)
    : table_(table),
      filename_column_(filename_column),
      companion_(companion),
      workers_(workers),
      gate_(std::move(gate)),
      box_(std::move(box)),
      say_(say) {}

void FileRemoval::Remove(const std::vector<int>& rows, Done done) {
  // With the job, which may be dropped with its executor.
  auto batch = std::make_shared<Batch>(Batch{companion_, std::move(done), {}, {}});
  for (const int row : rows) {
    if (row < 1 || row > table_.Rows()) continue;
    batch->files.push_back({row, std::string(table_.Cell(row, filename_column_)), false});
  }
  workers_.Post([this, gate = gate_, box = box_, batch] {
    gate->Pass([&] {
      batch->Work(say_);
      box->Post([this, batch] { Finish(*batch); });
    });
  });
}

void FileRemoval::Finish(const Batch& batch) {
  std::vector<int> rows;
  std::vector<std::string> moved;
  for (const Batch::File& file : batch.files) {
    if (!file.gone) continue;
    // Rows may have moved meanwhile; the file's name is what they are known by.
    if (table_.Cell(file.row, filename_column_) == file.name) {
      rows.push_back(file.row);
    } else {
      moved.push_back(file.name);
    }
  }
  const std::vector<int> found = table_.FirstRowsOf(moved);
  rows.insert(rows.end(), found.begin(), found.end());
  const int removed = catalogue::RemoveRows(table_, std::move(rows));
  if (batch.done) batch.done(removed, batch.kept);
}

}  // namespace app
