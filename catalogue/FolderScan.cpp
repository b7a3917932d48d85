// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/FolderScan.h"

#include <algorithm>
#include <array>
#include <set>
#include <system_error>

#include "support/Text.h"

namespace catalogue {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 4> kMusicMasks{"*.mp3", "*.ogg", "*.flac", "*.wma"};
constexpr std::array<std::string_view, 3> kKaraokeMasks{"*.mp3", "*.kar", "*.mid"};

// As exact text, on drive C alone: that is how these folders were always left out.
constexpr std::string_view kNeverListed = "C:\\System Volume Information";
constexpr std::string_view kNeverEntered = "C:\\Recycler";

bool Matches(std::string_view name, std::string_view mask) {
  const std::string_view ending = mask.substr(1);
  return name.size() > ending.size() &&
         support::EqualsIgnoringCase(name.substr(name.size() - ending.size()), ending);
}

/// One pass over a tree.
class Pass {
 public:
  Pass(std::string_view mask, const std::function<bool()>& wanted) : mask_(mask), wanted_(wanted) {}

  void Enter(const fs::path& folder) {
    if (folder.string() == kNeverListed || !wanted_()) return;
    std::error_code error;
    if (!entered_.insert(fs::canonical(folder, error)).second) return;
    std::vector<fs::path> folders;
    std::vector<std::string> files;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
      Look(*entry, folders, files);
    }
    std::sort(folders.begin(), folders.end());
    std::sort(files.begin(), files.end());
    for (const fs::path& deeper : folders) {
      if (deeper.string() != kNeverEntered) Enter(deeper);
    }
    listing.files.insert(listing.files.end(), files.begin(), files.end());
  }

  FolderListing listing;

 private:
  void Look(const fs::directory_entry& entry, std::vector<fs::path>& folders,
            std::vector<std::string>& files) {
    std::error_code error;
    if (entry.is_directory(error)) {
      folders.push_back(entry.path());
    } else if (Matches(entry.path().filename().string(), mask_)) {
      const std::uintmax_t size = entry.file_size(error);
      if (!error) listing.bytes += static_cast<std::int64_t>(size);
      files.push_back(entry.path().string());
    }
  }

  std::string_view mask_;
  const std::function<bool()>& wanted_;
  std::set<fs::path> entered_;
};

}  // namespace

std::span<const std::string_view> MasksOf(ScanMode mode) {
  if (mode == ScanMode::Karaoke) return kKaraokeMasks;
  return kMusicMasks;
}

FolderListing ListFolder(const fs::path& folder, std::string_view mask, const std::function<bool()>& wanted) {
  Pass pass(mask, wanted);
  pass.Enter(folder);
  return std::move(pass.listing);
}

}  // namespace catalogue
