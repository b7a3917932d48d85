// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/ports/FolderReader.h"

namespace catalogue {

/// What a scan looks for; each mask is a pass of its own over the whole tree.
enum class ScanMode { Music, Karaoke };
[[nodiscard]] std::span<const std::string_view> MasksOf(ScanMode mode);
inline constexpr std::size_t kMostMasks = 4;

/// The place of the mask that a file's name matches, from 0 and whatever the letter case; nothing for none.
/// No name matches two.
[[nodiscard]] std::optional<std::size_t> MaskOf(ScanMode mode, std::string_view name);
/// The masks of the files that decks play, and of those that are songs of the karaoke table: what somebody
/// means who adds a folder by hand.
[[nodiscard]] std::span<const std::string_view> PlayableMasks(ScanMode mode);
[[nodiscard]] bool IsPlayable(ScanMode mode, std::string_view name);
/// What lies on a disk without being anybody's music: waste, and what other systems note beside their files.
[[nodiscard]] bool IsDebris(std::string_view name);

/// The picture of a karaoke song, which no mask takes.
[[nodiscard]] bool IsDiscImage(std::string_view name);
/// A karaoke song whose picture and sound lie in one file.
[[nodiscard]] bool IsArchive(std::string_view name);

// What a scan leaves out, told by the exact text of a folder's path.
/// Whether what lies in the folder is listed at all.
[[nodiscard]] bool IsListed(std::string_view folder);
/// Whether it is entered as a folder in another one.
[[nodiscard]] bool IsEntered(std::string_view folder);

/// A folder of the tree and what it holds, its files in byte order of their names.
struct WalkedFolder {
  std::string path;
  std::string identity;            ///< see FolderContent
  std::vector<ListedFile> files;   ///< those that a mask takes
  std::vector<ListedFile> images;  ///< disc images, in a karaoke scan
};

/// Goes through a tree once, deeper folders before the folder they are in, folders of one folder in byte
/// order. The passes of all masks find the files of this walk.
///
/// A folder that more than one path leads to is entered once. Threads: one at a time; blocks on the disk.
class FolderWalk {
 public:
  enum class State {
    Going,
    Complete,
    RootMissing,  ///< at the beginning
    Lost,         ///< a folder that was there is gone, or its disk
  };

  FolderWalk(FolderReader& folders, std::string root, ScanMode mode);
  /// Finds the files whose names are wanted, and enters the folders whose names are.
  using Wanted = FolderReader::Wanted;
  FolderWalk(FolderReader& folders, std::string root, Wanted files, Wanted deeper);

  /// Lists one folder at most, so it may give none while it is going.
  std::optional<WalkedFolder> Step();
  [[nodiscard]] State Now() const { return state_; }
  /// Whether what is found by the folder's path now is still that folder. A stick that is pulled may leave an
  /// empty one behind.
  [[nodiscard]] bool StillThere(const std::string& path, const std::string& identity);
  /// The name of what is missing or lost.
  [[nodiscard]] const std::string& Where() const { return where_; }
  [[nodiscard]] const std::string& RootIdentity() const { return root_identity_; }
  /// Folders that do not show what they hold.
  [[nodiscard]] const std::vector<std::string>& Unreadable() const { return unreadable_; }

 private:
  struct Level {
    WalkedFolder folder;
    std::vector<std::string> deeper;  ///< paths that are left, the next one last
  };
  void Enter(const std::string& path);
  void Fail(const std::string& path, const support::Error& failure);

  FolderReader& folders_;
  const std::string root_;
  const Wanted files_;
  const Wanted deeper_;
  const bool images_apart_;
  State state_ = State::Going;
  bool begun_ = false;
  std::string root_identity_;
  std::string where_;
  std::vector<Level> levels_;
  std::set<std::string> entered_;
  std::vector<std::string> unreadable_;
};

/// A path to what lies in a folder.
[[nodiscard]] std::string PathIn(std::string_view folder, std::string_view name);

}  // namespace catalogue
