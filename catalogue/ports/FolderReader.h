// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/ports/SideStore.h"
#include "support/Result.h"

namespace catalogue {

/// A file of a folder.
struct ListedFile {
  std::string name;
  // Filled in by Look.
  FileStamp stamp;
  /// Written a moment ago: it may be changed once more and keep its stamp. Also where there is no stamp.
  bool fresh = true;
};

struct FolderContent {
  std::string identity;  ///< the same for every path that leads to this folder
  std::vector<std::string> folders;
  std::vector<ListedFile> files;
};

/// Lists folders. What is hidden or write-protected is listed too, and a link stands for what it leads to.
/// Threads: any; blocks on the disk.
class FolderReader {
 public:
  /// Files with other names are not listed.
  using Wanted = std::function<bool(std::string_view name)>;

  virtual ~FolderReader() = default;
  /// In no order. NotFound: there is no such folder; Unreadable: it is there, but may not show what it holds;
  /// Unavailable: its disk does not answer.
  virtual support::Result<FolderContent> List(const std::string& folder, const Wanted& wanted) = 0;
  /// Fills in the stamps of files that were listed; one that is gone keeps none.
  virtual void Look(const std::string& folder, std::vector<ListedFile>& files) = 0;
};

}  // namespace catalogue
