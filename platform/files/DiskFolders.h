// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/ports/FolderReader.h"

namespace platform::files {

/// Lists folders as the system does, and looks at each file once, by its name in the open folder.
class DiskFolders final : public catalogue::FolderReader {
 public:
  support::Result<catalogue::FolderContent> List(const std::string& folder, const Wanted& wanted) override;
  void Look(const std::string& folder, std::vector<catalogue::ListedFile>& files) override;
};

}  // namespace platform::files
