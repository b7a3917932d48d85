// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/ports/FolderReader.h"

namespace catalogue {

/// Lists folders on any system, by the standard library alone.
class PlainFolders final : public FolderReader {
 public:
  support::Result<FolderContent> List(const std::string& folder, const Wanted& wanted) override;
  void Look(const std::string& folder, std::vector<ListedFile>& files) override;
};

}  // namespace catalogue
