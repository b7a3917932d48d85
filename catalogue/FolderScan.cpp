// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/FolderScan.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include "support/Text.h"

namespace catalogue {
namespace {

constexpr std::array<std::string_view, 4> kMusicMasks{"*.mp3", "*.ogg", "*.flac", "*.wma"};
constexpr std::string_view kDiscImages = "*.cdg", kArchives = "*.zip";
constexpr std::array<std::string_view, 4> kKaraokeMasks{"*.mp3", "*.kar", "*.mid", kArchives};

constexpr std::array<std::string_view, 15> kPlayedMusic{"*.mp3", "*.ogg",  "*.flac", "*.wma", "*.wav",
                                                        "*.m4a", "*.mp4",  "*.aac",  "*.oga", "*.opus",
                                                        "*.aif", "*.aiff", "*.ape",  "*.wv",  "*.mpc"};
constexpr std::array<std::string_view, 5> kPlayedSongs{"*.mp3", "*.kar", "*.mid", kArchives, kDiscImages};

// As exact text, on drive C alone: that is how these folders were always left out.
constexpr std::string_view kNeverListed = "C:\\System Volume Information";
constexpr std::string_view kNeverEntered = "C:\\Recycler";

constexpr char kSeparator = static_cast<char>(std::filesystem::path::preferred_separator);

bool Matches(std::string_view name, std::string_view mask) {
  const std::string_view ending = mask.substr(1);
  return name.size() > ending.size() &&
         support::EqualsIgnoringCase(name.substr(name.size() - ending.size()), ending);
}

bool ByName(const ListedFile& one, const ListedFile& other) {
  return one.name < other.name;
}

}  // namespace

std::span<const std::string_view> MasksOf(ScanMode mode) {
  if (mode == ScanMode::Karaoke) return kKaraokeMasks;
  return kMusicMasks;
}

std::optional<std::size_t> MaskOf(ScanMode mode, std::string_view name) {
  const auto masks = MasksOf(mode);
  const auto found =
      std::find_if(masks.begin(), masks.end(), [name](std::string_view mask) { return Matches(name, mask); });
  if (found == masks.end()) return std::nullopt;
  return static_cast<std::size_t>(found - masks.begin());
}

std::span<const std::string_view> PlayableMasks(ScanMode mode) {
  if (mode == ScanMode::Karaoke) return kPlayedSongs;
  return kPlayedMusic;
}

bool IsPlayable(ScanMode mode, std::string_view name) {
  const auto masks = PlayableMasks(mode);
  return !IsDebris(name) && std::any_of(masks.begin(), masks.end(),
                                        [name](std::string_view mask) { return Matches(name, mask); });
}

bool IsDebris(std::string_view name) {
  return name.starts_with("._") || name.starts_with(".Trash") ||
         support::EqualsIgnoringCase(name, "$RECYCLE.BIN") ||
         support::EqualsIgnoringCase(name, "System Volume Information");
}

bool IsDiscImage(std::string_view name) {
  return Matches(name, kDiscImages);
}

bool IsArchive(std::string_view name) {
  return Matches(name, kArchives);
}

bool IsListed(std::string_view folder) {
  return folder != kNeverListed;
}

bool IsEntered(std::string_view folder) {
  return folder != kNeverEntered;
}

std::string PathIn(std::string_view folder, std::string_view name) {
  std::string path;
  path.reserve(folder.size() + 1 + name.size());
  path = folder;
  if (path.empty() || (path.back() != '/' && path.back() != kSeparator)) path += kSeparator;
  path += name;
  return path;
}

FolderWalk::FolderWalk(FolderReader& folders, std::string root, ScanMode mode)
    : folders_(folders),
      root_(std::move(root)),
      files_([mode](std::string_view name) {
        return MaskOf(mode, name).has_value() || (mode == ScanMode::Karaoke && IsDiscImage(name));
      }),
      deeper_([](std::string_view) { return true; }),
      images_apart_(mode == ScanMode::Karaoke) {}

FolderWalk::FolderWalk(FolderReader& folders, std::string root, Wanted files, Wanted deeper)
    : folders_(folders),
      root_(std::move(root)),
      files_(std::move(files)),
      deeper_(std::move(deeper)),
      images_apart_(false) {}

std::optional<WalkedFolder> FolderWalk::Step() {
  if (state_ != State::Going) return std::nullopt;
  if (!std::exchange(begun_, true)) {
    Enter(root_);
    if (levels_.empty() && state_ == State::Going) state_ = State::Complete;
    return std::nullopt;
  }
  Level& level = levels_.back();
  if (!level.deeper.empty()) {
    const std::string deeper = std::move(level.deeper.back());
    level.deeper.pop_back();
    if (IsEntered(deeper)) Enter(deeper);
    return std::nullopt;
  }
  WalkedFolder done = std::move(level.folder);
  levels_.pop_back();
  if (levels_.empty()) state_ = State::Complete;
  return done;
}

bool FolderWalk::StillThere(const std::string& path, const std::string& identity) {
  const auto content = folders_.List(path, [](std::string_view) { return false; });
  return content && content.Value().identity == identity;
}

void FolderWalk::Enter(const std::string& path) {
  if (!IsListed(path)) return;
  auto read = folders_.List(path, files_);
  if (!read) return Fail(path, read.Failure());
  FolderContent content = std::move(read).Value();
  if (levels_.empty()) root_identity_ = content.identity;
  if (!entered_.insert(content.identity).second) return;
  std::sort(content.files.begin(), content.files.end(), ByName);
  std::sort(content.folders.begin(), content.folders.end(), std::greater<>());
  Level level{{path, std::move(content.identity), {}, {}}, {}};
  for (ListedFile& file : content.files) {
    if (images_apart_ && IsDiscImage(file.name)) {
      level.folder.images.push_back(std::move(file));
    } else {
      level.folder.files.push_back(std::move(file));
    }
  }
  level.deeper.reserve(content.folders.size());
  for (const std::string& name : content.folders) {
    if (deeper_(name)) level.deeper.push_back(PathIn(path, name));
  }
  levels_.push_back(std::move(level));
}

void FolderWalk::Fail(const std::string& path, const support::Error& failure) {
  const bool refused = failure.code == support::ErrorCode::Unreadable;
  if (!levels_.empty() && refused) return unreadable_.push_back(path);
  state_ = levels_.empty() ? State::RootMissing : State::Lost;
  where_ = path;
}

}  // namespace catalogue
