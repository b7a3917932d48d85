// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/files/TreeScan.h"
#include "catalogue/FolderRecord.h"
#include "catalogue/FolderScan.h"
#include "catalogue/NameRule.h"
#include "catalogue/track_table.h"

namespace app {

/// Some folders of a scan, one behind the other in its order, on their way to rows.
///
/// Threads: one at a time, but for Read, which several may call with different files.
class FolderGroup {
 public:
  FolderGroup(catalogue::ScanMode mode, const catalogue::NameRule& names) : mode_(mode), names_(names) {}

  void Add(catalogue::WalkedFolder folder);
  [[nodiscard]] std::size_t Files() const { return files_; }
  [[nodiscard]] std::size_t Folders() const { return folders_.size(); }

  struct Place {
    std::size_t folder;
    std::size_t file;
  };
  /// Looks at the files and at what is kept of them, and gives those that have to be read.
  [[nodiscard]] std::vector<Place> Match(const TreePorts& ports);
  /// Of all files, once they were looked at.
  [[nodiscard]] std::int64_t Bytes() const { return bytes_; }
  void Read(const TreePorts& ports, Place place);
  /// Makes the rows of each mask and keeps what was read. The rest is let go of.
  void Finish(catalogue::SideStore* store);

  // Of a group that is finished.
  [[nodiscard]] std::vector<catalogue::track_table>& Rows() { return rows_; }
  /// Of each row of each mask: its file was read, because it is new or was written since the scan before.
  [[nodiscard]] const std::vector<std::vector<bool>>& Fresh() const { return fresh_; }
  [[nodiscard]] int LeftOut() const { return left_out_; }
  struct Known {
    std::string path;
    std::string identity;
  };
  /// Folders with files that were listed and then could not be read.
  [[nodiscard]] const std::vector<Known>& FoldersToProve() const { return to_prove_; }

 private:
  struct File {
    enum class State { ToRead, Playable, Unplayable, Unreadable };
    State state = State::ToRead;
    catalogue::CellViews cells;
    std::unique_ptr<catalogue::TrackCells> read;
  };
  struct Folder {
    catalogue::WalkedFolder walked;
    std::vector<File> files;  ///< as they were listed
    std::string record;
    bool changed = false;
  };
  [[nodiscard]] catalogue::SidePart Part() const;
  void Match(Folder& folder) const;
  void AddRows(const Folder& folder);
  void AddEntries(catalogue::SideStore& store, const Folder& folder,
                  std::vector<catalogue::SideEntry>& entries) const;

  catalogue::ScanMode mode_;
  catalogue::NameRule names_;
  std::vector<Folder> folders_;
  std::size_t files_ = 0;
  std::int64_t bytes_ = 0;
  std::vector<catalogue::track_table> rows_;
  std::vector<std::vector<bool>> fresh_;
  int left_out_ = 0;
  std::vector<Known> to_prove_;
};

}  // namespace app
