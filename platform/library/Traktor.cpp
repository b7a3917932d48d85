// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/library/Values.h"
#include "platform/library/XmlLibraries.h"

namespace platform::library {
namespace {

using catalogue::ForeignCue;
using catalogue::ForeignTrack;

/// "C:" and "/:Music/:a.mp3" is "C:/Music/a.mp3". A volume without a letter is one of a Mac: the system's own
/// is the root, any other lies in "/Volumes".
std::string PathOf(std::string_view volume, std::string_view folders) {
  std::string path;
  for (std::size_t i = 0; i < folders.size(); ++i) {
    path += folders[i];
    if (folders[i] == '/' && i + 1 < folders.size() && folders[i + 1] == ':') ++i;
  }
  const bool drive = volume.size() == 2 && volume[1] == ':';
  const bool root = volume.empty() || volume == "Macintosh HD" || path.starts_with("/Users/") ||
                    path.starts_with("/Volumes/") || path.starts_with("/home/");
  if (drive) return CleanPath(std::string(volume) + path);
  return CleanPath(root ? path : "/Volumes/" + std::string(volume) + path);
}

std::string KeyName(int number) {
  constexpr std::array<std::string_view, 24> kKeys{"C",  "Db", "D",   "Eb", "E",   "F",   "F#",  "G",
                                                   "Ab", "A",  "Bb",  "B",  "Cm",  "C#m", "Dm",  "Ebm",
                                                   "Em", "Fm", "F#m", "Gm", "G#m", "Am",  "Bbm", "Bm"};
  return number >= 0 && number < 24 ? std::string(kKeys[static_cast<std::size_t>(number)]) : "";
}

std::string LowerHex(std::string_view colour) {
  std::string lower(colour);
  for (char& c : lower) c = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
  return lower;
}

class Traktor final : public LibraryListener {
 public:
  explicit Traktor(catalogue::LibraryWatch& watch) : gathered_(catalogue::LibraryKind::Traktor, watch) {}

  void Begin(std::string_view name, const Attributes& attributes) override {
    if (name == "COLLECTION") in_collection_ = true;
    if (name == "NODE") return BeginNode(attributes);
    if (name == "PLAYLIST") return BeginList();
    if (name == "PRIMARYKEY" && list_ != 0) return AddEntry(attributes);
    if (name == "ENTRY" && in_collection_) return BeginTrack(attributes);
    if (!track_) return;
    if (name == "LOCATION") {
      key_ = std::string(attributes["VOLUME"]) + std::string(attributes["DIR"]) +
             std::string(attributes["FILE"]);
      track_->path =
          PathOf(attributes["VOLUME"], std::string(attributes["DIR"]) + std::string(attributes["FILE"]));
    } else if (name == "TEMPO") {
      track_->bpm = std::max(0.0, Number(attributes["BPM"]).value_or(0));
    } else if (name == "MUSICAL_KEY") {
      track_->key = KeyName(Whole(attributes["VALUE"], -1));
    } else if (name == "INFO") {
      TakeInfo(attributes);
    } else if (name == "CUE_V2") {
      AddCue(attributes);
    } else if (name == "GRID" && in_grid_mark_) {
      grid_bpm_ = Number(attributes["BPM"]);
    }
  }

  void End(std::string_view name) override {
    if (name == "COLLECTION") in_collection_ = false;
    if (name == "CUE_V2") in_grid_mark_ = false;
    if (name == "ENTRY" && track_) EndTrack();
    if (name == "PLAYLIST") list_ = 0;
    if (name == "NODE" && !nodes_.empty()) nodes_.pop_back();
  }

  catalogue::ForeignLibrary Finish() override { return gathered_.Take(); }

 private:
  void BeginTrack(const Attributes& attributes) {
    track_.emplace();
    track_->artist = Cut(attributes["ARTIST"]);
    track_->title = Cut(attributes["TITLE"]);
    anchor_.reset();
    grid_bpm_.reset();
    named_key_.clear();
    key_.clear();
  }

  void TakeInfo(const Attributes& attributes) {
    named_key_ = Cut(attributes["KEY"]);
    track_->rating = std::clamp(Whole(attributes["RANKING"], 0) / 51, 0, 5);
    const auto exact = Number(attributes["PLAYTIME_FLOAT"]);
    track_->length = std::max(0.0, exact ? *exact : Number(attributes["PLAYTIME"]).value_or(0));
  }

  void AddCue(const Attributes& attributes) {
    constexpr int kGrid = 4, kLoop = 5;
    const int type = Whole(attributes["TYPE"], 0);
    const double start = Number(attributes["START"]).value_or(-1e9) / 1000;
    ForeignCue cue;
    cue.kind = type == 1   ? ForeignCue::Kind::FadeIn
               : type == 2 ? ForeignCue::Kind::FadeOut
               : type == 3 ? ForeignCue::Kind::Load
                           : ForeignCue::Kind::Cue;
    cue.start = start;
    if (type == kLoop)
      cue.kind = ForeignCue::Kind::Loop, cue.end = start + Number(attributes["LEN"]).value_or(0) / 1000;
    cue.number = Whole(attributes["HOTCUE"], -1);
    const std::string_view name = attributes["NAME"];
    // What it writes where there is no name.
    if (name != "n.n." && name != "AutoGrid") cue.name = Cut(name);
    const std::string_view colour = attributes["COLOR"];
    const bool hex = colour.size() == 7 && colour[0] == '#' &&
                     colour.find_first_not_of("0123456789abcdefABCDEF", 1) == std::string_view::npos;
    if (hex) cue.colour = LowerHex(colour);
    if (type == kGrid) {
      in_grid_mark_ = !anchor_;
      if (!anchor_) anchor_ = start;
      if (cue.number < 0) return;  // on a pad it is a cue besides
    }
    gathered_.AddCue(*track_, std::move(cue));
  }

  void EndTrack() {
    if (track_->key.empty()) track_->key = named_key_;
    const double bpm = grid_bpm_.value_or(track_->bpm);
    if (anchor_) Gathered::AddTempo(*track_, {*anchor_, bpm, 1});
    const auto place = gathered_.AddTrack(std::move(*track_));
    track_.reset();
    if (place && key_.size() <= kLongestPath) by_key_.emplace(key_, *place);
  }

  void BeginNode(const Attributes& attributes) {
    nodes_.push_back(attributes["NAME"] == "$ROOT" ? std::string() : Cut(attributes["NAME"]));
  }

  void BeginList() {
    std::string name;
    for (const std::string& part : nodes_) name += (name.empty() || part.empty() ? "" : "/") + part;
    list_ = gathered_.AddList(name);
  }

  void AddEntry(const Attributes& attributes) {
    if (attributes["TYPE"] != "TRACK") return;
    const std::string key(attributes["KEY"]);
    const auto at = by_key_.find(key);
    std::optional<std::uint32_t> place;
    if (at != by_key_.end()) {
      place = at->second;
    } else if (const std::size_t end = key.find("/:"); end != std::string::npos) {
      ForeignTrack bare;
      bare.path = PathOf(std::string_view(key).substr(0, end), std::string_view(key).substr(end));
      place = gathered_.AddTrack(std::move(bare));
      if (place) by_key_.emplace(key, *place);
    }
    gathered_.AddEntry(list_, place);
  }

  Gathered gathered_;
  bool in_collection_ = false, in_grid_mark_ = false;
  std::optional<ForeignTrack> track_;
  std::optional<double> anchor_, grid_bpm_;
  std::string key_, named_key_;
  std::size_t list_ = 0;
  std::vector<std::string> nodes_;
  std::unordered_map<std::string, std::uint32_t> by_key_;
};

}  // namespace

std::unique_ptr<LibraryListener> ListenToTraktor(catalogue::LibraryWatch& watch) {
  return std::make_unique<Traktor>(watch);
}

}  // namespace platform::library
