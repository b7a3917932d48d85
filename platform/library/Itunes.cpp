// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/library/Values.h"
#include "platform/library/XmlLibraries.h"

namespace platform::library {
namespace {

using catalogue::ForeignTrack;

struct Playlist {
  std::string name, id, parent;
  bool folder = false, of_its_own = false;
  std::vector<std::string> entries;
};

/// A property list: what a value means is told by the keys of the dictionaries around it.
class Itunes final : public LibraryListener {
 public:
  explicit Itunes(catalogue::LibraryWatch& watch) : gathered_(catalogue::LibraryKind::Itunes, watch) {}

  void Begin(std::string_view name, const Attributes&) override {
    text_.clear();
    if (name != "dict" && name != "array") return;
    keys_.emplace_back();
    if (AtTrack()) track_.emplace();
    if (AtPlaylist()) lists_.emplace_back();
  }

  void Text(std::string_view text) override {
    // Pictures and rules of lists lie here too, which nothing reads.
    if (text_.size() + text.size() <= 4 * kLongestPath) text_ += text;
  }

  void End(std::string_view name) override {
    if (name == "dict" || name == "array") return EndContainer();
    if (keys_.empty()) return;
    if (name == "key") {
      keys_.back() = text_.substr(0, kLongestText);
      return;
    }
    if (track_ && AtTrack()) TakeFact(keys_.back());
    if (AtPlaylist() && !lists_.empty()) TakePlaylist(keys_.back(), name == "true");
    if (AtEntry() && keys_.back() == "Track ID" && entries_ < kMostEntries) {
      ++entries_;
      lists_.back().entries.push_back(Cut(text_));
    }
  }

  catalogue::ForeignLibrary Finish() override {
    std::unordered_map<std::string, const Playlist*> by_id;
    for (const Playlist& list : lists_) by_id.emplace(list.id, &list);
    for (const Playlist& list : lists_) {
      if (list.folder || list.of_its_own) continue;
      AddList(list, by_id);
    }
    return gathered_.Take();
  }

 private:
  // plist holds a dictionary, whose "Tracks" is one of dictionaries, and whose "Playlists" an array of them.
  [[nodiscard]] bool AtTrack() const { return keys_.size() == 3 && keys_[0] == "Tracks"; }
  [[nodiscard]] bool AtPlaylist() const { return keys_.size() == 3 && keys_[0] == "Playlists"; }
  [[nodiscard]] bool AtEntry() const {
    return keys_.size() == 5 && keys_[0] == "Playlists" && keys_[2] == "Playlist Items" && !lists_.empty();
  }

  void TakeFact(const std::string& key) {
    if (key == "Track ID") id_ = Cut(text_);
    if (key == "Name") track_->title = Cut(text_);
    if (key == "Artist") track_->artist = Cut(text_);
    if (key == "Location") track_->path = PathOfUrl(text_);
    if (key == "BPM") track_->bpm = std::max(0.0, Number(text_).value_or(0));
    if (key == "Total Time") track_->length = std::max(0.0, Number(text_).value_or(0) / 1000);
    if (key == "Size") track_->size = std::max(0, Whole(text_, 0));
    if (key == "Rating") track_->rating = std::clamp(Whole(text_, 0) / 20, 0, 5);
  }

  void TakePlaylist(const std::string& key, bool yes) {
    Playlist& list = lists_.back();
    if (key == "Name") list.name = Cut(text_);
    if (key == "Playlist Persistent ID") list.id = Cut(text_);
    if (key == "Parent Persistent ID") list.parent = Cut(text_);
    if (key == "Folder") list.folder = yes;
    if (key == "Master") list.of_its_own = list.of_its_own || yes;
    if (key == "Distinguished Kind") list.of_its_own = true;
  }

  void EndContainer() {
    if (keys_.empty()) return;
    const bool track = AtTrack();
    const std::string name = keys_.size() >= 2 ? keys_[1] : "";
    keys_.pop_back();
    if (!track || !track_) return;
    const std::string id = id_.empty() ? name : id_;
    const auto place = gathered_.AddTrack(std::move(*track_));
    track_.reset();
    id_.clear();
    if (place) by_id_.emplace(id, *place);
  }

  void AddList(const Playlist& list, const std::unordered_map<std::string, const Playlist*>& by_id) {
    std::string name = list.name;
    std::string parent = list.parent;
    for (int level = 0; level < kDeepest && !parent.empty(); ++level) {
      const auto at = by_id.find(parent);
      if (at == by_id.end()) break;
      name = at->second->name + "/" + name;
      parent = at->second->parent;
    }
    const std::size_t added = gathered_.AddList(name);
    for (const std::string& entry : list.entries) {
      const auto at = by_id_.find(entry);
      gathered_.AddEntry(added, at == by_id_.end() ? std::nullopt : std::optional(at->second));
    }
  }

  Gathered gathered_;
  std::vector<std::string> keys_;  ///< the newest one of each container around
  std::string text_;
  std::optional<ForeignTrack> track_;
  std::string id_;
  std::vector<Playlist> lists_;
  std::size_t entries_ = 0;
  std::unordered_map<std::string, std::uint32_t> by_id_;
};

}  // namespace

std::unique_ptr<LibraryListener> ListenToItunes(catalogue::LibraryWatch& watch) {
  return std::make_unique<Itunes>(watch);
}

}  // namespace platform::library
