// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/settings/FolderSettings.h"

#include <algorithm>

namespace app {
namespace {

/// The first one is "Directory2".
std::string KeyOf(std::size_t place) {
  return "Directory" + std::to_string(place + 2);
}

}  // namespace

std::vector<std::string> OtherFolders(const support::Settings& settings) {
  std::vector<std::string> folders;
  for (std::size_t place = 0; place < kMostOtherFolders; ++place) {
    std::string folder = settings.Text("Settings", KeyOf(place));
    if (!folder.empty()) folders.push_back(std::move(folder));
  }
  return folders;
}

void StoreOtherFolders(support::Settings& settings, const std::vector<std::string>& folders) {
  std::vector<std::string> wanted;
  for (const std::string& folder : folders) {
    const bool known = std::find(wanted.begin(), wanted.end(), folder) != wanted.end();
    if (!folder.empty() && !known && wanted.size() < kMostOtherFolders) wanted.push_back(folder);
  }
  wanted.resize(kMostOtherFolders);
  for (std::size_t place = 0; place < kMostOtherFolders; ++place) {
    const std::string key = KeyOf(place);
    if (settings.Text("Settings", key) != wanted[place]) settings.SetText("Settings", key, wanted[place]);
  }
}

}  // namespace app
