// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/AnyLibrary.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <unordered_map>
#include <vector>

#include "catalogue/Playlist.h"
#include "support/Sentences.h"
#include "support/Text.h"

namespace catalogue {
namespace {

namespace fs = std::filesystem;
using support::ErrorCode;
using support::Sentence;

constexpr std::size_t kMostLists = 10'000;     // of a folder
constexpr std::size_t kMostPaths = 5'000'000;  // of all of them
constexpr std::string_view kOrderMark = "\xEF\xBB\xBF";

/// "C:/a" leads to a root on every system.
bool IsWhole(const std::string& path) {
  return path.starts_with('/') || path.starts_with('\\') || (path.size() > 2 && path[1] == ':');
}

/// Text whose first path leads somewhere, or names a file with sound.
bool IsPathList(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::array<char, 4096> piece{};
  file.read(piece.data(), piece.size());
  const std::string_view text(piece.data(), static_cast<std::size_t>(file.gcount()));
  if (text.empty() || text.find('\0') != std::string_view::npos) return false;
  // A mark of XML, whose "/" makes it look like a path.
  if (support::Trim(text).starts_with('<')) return false;
  if (LooksLikePathList(path)) return true;
  const std::string_view first = support::Trim(text.substr(0, text.find_first_of("\r\n")));
  return PlaylistFileOf(first) == PlaylistFile::Track;
}

class Lists {
 public:
  Lists(fs::path root, LibraryWatch& watch) : root_(std::move(root)), watch_(watch) {}

  support::Result<void> Add(const fs::path& file) {
    auto read = ReadPathList(file);
    if (!read) return read.Failure();
    lost_ += static_cast<std::size_t>(read.Value().too_long);
    fs::path name = file.lexically_relative(root_);
    library_.lists.push_back({name.replace_extension().generic_string(), {}});
    for (std::string& path : read.Value().paths) AddPath(std::move(path), file.parent_path());
    return {};
  }
  void Note(const support::Error& failure) { library_.notes.push_back(SayingOf(failure)); }
  ForeignLibrary Take() {
    if (lost_ > 0) library_.notes.push_back({Sentence::LibraryEntriesLeftOut, {std::to_string(lost_)}});
    return std::move(library_);
  }

 private:
  void AddPath(std::string path, const fs::path& folder) {
    if (path.starts_with(kOrderMark)) path.erase(0, kOrderMark.size());
    if (path.empty() || path.front() == '#') return;
    if (known_.size() >= kMostPaths || path.find('\0') != std::string::npos) {
      ++lost_;
      return;
    }
    std::replace(path.begin(), path.end(), '\\', '/');
    if (!IsWhole(path)) path = (folder / path).generic_string();
    const bool of_a_server = path.starts_with("//");
    path = fs::path(path).lexically_normal().generic_string();
    if (of_a_server && !path.starts_with("//")) path.insert(path.begin(), '/');
    const auto [at, fresh] =
        known_.emplace(std::move(path), static_cast<std::uint32_t>(library_.tracks.size()));
    if (fresh) library_.tracks.emplace_back().path = at->first;
    library_.lists.back().tracks.push_back(at->second);
    watch_.tracks = static_cast<int>(library_.tracks.size());
  }

  const fs::path root_;
  LibraryWatch& watch_;
  ForeignLibrary library_;
  std::unordered_map<std::string, std::uint32_t> known_;
  std::size_t lost_ = 0;
};

/// In the order of their names; links to folders are not followed.
std::vector<fs::path> ListsIn(const fs::path& folder, const LibraryWatch& watch) {
  std::vector<fs::path> files;
  std::error_code failed;
  fs::recursive_directory_iterator at(folder, fs::directory_options::skip_permission_denied, failed);
  while (!failed && at != fs::recursive_directory_iterator() && !watch.stop && files.size() < kMostLists) {
    std::error_code unknown;
    const bool list = PlaylistFileOf(at->path().string()) == PlaylistFile::List;
    if (list && at->is_regular_file(unknown)) files.push_back(at->path());
    at.increment(failed);
  }
  std::sort(files.begin(), files.end());
  return files;
}

support::Result<ForeignLibrary> ReadFolder(const fs::path& folder, LibraryWatch& watch) {
  Lists lists(folder, watch);
  const std::vector<fs::path> files = ListsIn(folder, watch);
  for (const fs::path& file : files) {
    if (watch.stop) break;
    if (const auto added = lists.Add(file); !added) lists.Note(added.Failure());
  }
  if (watch.stop) return support::Failed(ErrorCode::Cancelled, Sentence::AsItStands);
  if (files.empty()) {
    return support::Failed(ErrorCode::NotFound, Sentence::NoListsInFolder, {folder.filename().string()});
  }
  return lists.Take();
}

}  // namespace

support::Result<ForeignLibrary> ReadAnyLibrary(LibraryReader& reader, const std::string& path,
                                               LibraryWatch& watch) {
  std::error_code unknown;
  const fs::path place = fs::absolute(path, unknown).lexically_normal();
  if (fs::is_directory(place, unknown))
    return ReadFolder(place.has_filename() ? place : place.parent_path(), watch);
  auto read = reader.Read(path, watch);
  if (read || !fs::is_regular_file(place, unknown)) return read;
  const ErrorCode why = read.Failure().code;
  const bool other = why == ErrorCode::Unsupported || why == ErrorCode::Malformed;
  if (!other || !IsPathList(place)) return read;
  Lists lists(place.parent_path(), watch);
  if (const auto added = lists.Add(place); !added) return added.Failure();
  return lists.Take();
}

}  // namespace catalogue
