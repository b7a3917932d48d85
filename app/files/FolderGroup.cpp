// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/FolderGroup.h"

#include <algorithm>
#include <string_view>

#include "catalogue/AddFile.h"
#include "catalogue/MixingTags.h"

namespace app {
namespace {

using catalogue::ListedFile;
using catalogue::ScanMode;

/// A folder's record belongs to its path, whatever the folder's own size and time.
constexpr catalogue::FileStamp kFolderStamp{};

support::Result<catalogue::TrackCells> MaterialIn(const TreePorts& ports, const std::string& path) {
  if (catalogue::KindOf(path) == catalogue::FileKind::MidiSong) {
    if (ports.songs == nullptr) return support::Error{support::ErrorCode::Unavailable, path};
    const auto song = ports.songs->Read(path);
    if (!song) return song.Failure();
    return catalogue::MaterialOf(song.Value());
  }
  const auto tags = ports.tags.Read(path);
  if (!tags) return tags.Failure();
  return catalogue::MaterialOf(tags.Value(), ports.scratch == nullptr
                                                 ? catalogue::MixingTagsOf(tags.Value())
                                                 : catalogue::MixingTagsOf(tags.Value(), *ports.scratch));
}

}  // namespace

void FolderGroup::Add(catalogue::WalkedFolder folder) {
  files_ += folder.files.size();
  folders_.emplace_back();
  folders_.back().files.resize(folder.files.size());
  folders_.back().walked = std::move(folder);
}

catalogue::SidePart FolderGroup::Part() const {
  return mode_ == ScanMode::Music ? catalogue::SidePart::Music : catalogue::SidePart::Karaoke;
}

std::vector<FolderGroup::Place> FolderGroup::Match(const TreePorts& ports) {
  std::vector<Place> to_read;
  for (Folder& folder : folders_) {
    const std::string& path = folder.walked.path;
    ports.folders.Look(path, folder.walked.files);
    auto record = ports.store == nullptr ? std::nullopt : ports.store->Read(path, kFolderStamp, Part());
    if (record) folder.record = std::move(*record);
    Match(folder);
    for (const ListedFile& file : folder.walked.files) bytes_ += file.stamp.size;
    for (std::size_t file = 0; folder.changed && file < folder.files.size(); ++file) {
      if (folder.files[file].state != File::State::ToRead) continue;
      to_read.push_back({static_cast<std::size_t>(&folder - folders_.data()), file});
    }
  }
  return to_read;
}

/// Both lists are in byte order of the names.
void FolderGroup::Match(Folder& folder) const {
  catalogue::FolderRecordReader record(folder.record);
  catalogue::KnownFile known;
  bool more = record.Next(known);
  for (std::size_t i = 0; i < folder.files.size(); ++i) {
    const ListedFile& listed = folder.walked.files[i];
    while (more && known.name < listed.name) {
      folder.changed = true;
      more = record.Next(known);
    }
    if (more && known.name == listed.name && known.stamp == listed.stamp) {
      folder.files[i] = {known.playable ? File::State::Playable : File::State::Unplayable, known.cells, {}};
      more = record.Next(known);
    } else {
      folder.changed = true;
    }
  }
  folder.changed = folder.changed || more;
}

void FolderGroup::Read(const TreePorts& ports, Place place) {
  using support::ErrorCode;
  const Folder& folder = folders_[place.folder];
  File& file = folders_[place.folder].files[place.file];
  auto material =
      MaterialIn(ports, catalogue::PathIn(folder.walked.path, folder.walked.files[place.file].name));
  if (material) {
    file.read = std::make_unique<catalogue::TrackCells>(std::move(material).Value());
    file.cells = catalogue::ViewsOf(*file.read);
    file.state = File::State::Playable;
    return;
  }
  const ErrorCode code = material.Failure().code;
  const bool is_none =
      code == ErrorCode::Malformed || code == ErrorCode::Empty || code == ErrorCode::Unsupported;
  file.state = is_none ? File::State::Unplayable : File::State::Unreadable;
}

void FolderGroup::AddRows(const Folder& folder) {
  bool unread = false;
  for (std::size_t i = 0; i < folder.files.size(); ++i) {
    const File& file = folder.files[i];
    const std::string& name = folder.walked.files[i].name;
    unread = unread || file.state == File::State::Unreadable;
    const auto mask = catalogue::MaskOf(mode_, name);
    if (file.state != File::State::Playable || !mask) {
      ++left_out_;
      continue;
    }
    const std::string path = catalogue::PathIn(folder.walked.path, name);
    catalogue::CellViews cells = file.cells;
    catalogue::NameRow(cells, path, names_);
    fresh_[*mask].push_back(file.read != nullptr);
    if (mode_ == ScanMode::Music) {
      rows_[*mask].AddRow(cells);
    } else {
      rows_[*mask].AddRow(catalogue::KaraokeRow(cells));
    }
  }
  if (unread) to_prove_.push_back({folder.walked.path, folder.walked.identity});
}

void FolderGroup::AddEntries(catalogue::SideStore& store, const Folder& folder,
                             std::vector<catalogue::SideEntry>& entries) const {
  catalogue::FolderRecordWriter record;
  for (std::size_t i = 0; i < folder.files.size(); ++i) {
    const File& file = folder.files[i];
    const ListedFile& listed = folder.walked.files[i];
    const bool playable = file.state == File::State::Playable;
    if (listed.fresh || (!playable && file.state != File::State::Unplayable)) continue;
    record.Add({listed.name, listed.stamp, playable, file.cells});
  }
  entries.push_back({folder.walked.path, kFolderStamp, Part(), record.Take()});
  for (const ListedFile& image : folder.walked.images) {
    const std::string path = catalogue::PathIn(folder.walked.path, image.name);
    const std::string sound = catalogue::AudioPathOf(path);
    const auto stamp = store.StampOf(sound);
    if (stamp) entries.push_back({sound, *stamp, catalogue::SidePart::DiscImage, path});
  }
}

void FolderGroup::Finish(catalogue::SideStore* store) {
  const auto columns = mode_ == ScanMode::Music ? catalogue::TrackColumns() : catalogue::KaraokeColumns();
  rows_.assign(catalogue::MasksOf(mode_).size(), catalogue::track_table(columns));
  fresh_.assign(rows_.size(), {});
  std::vector<catalogue::SideEntry> entries;
  for (const Folder& folder : folders_) {
    AddRows(folder);
    if (folder.changed && store != nullptr) AddEntries(*store, folder, entries);
  }
  // What is not kept is read again by the next scan.
  if (!entries.empty()) static_cast<void>(store->WriteAll(entries));
  folders_.clear();
  folders_.shrink_to_fit();
}

}  // namespace app
