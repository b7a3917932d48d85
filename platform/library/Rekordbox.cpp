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

using catalogue::ForeignCue;
using catalogue::ForeignTrack;

class Rekordbox final : public LibraryListener {
 public:
  explicit Rekordbox(catalogue::LibraryWatch& watch) : gathered_(catalogue::LibraryKind::Rekordbox, watch) {}

  void Begin(std::string_view name, const Attributes& attributes) override {
    if (name == "COLLECTION") in_collection_ = true;
    if (name == "NODE") return BeginNode(attributes);
    if (name == "TRACK" && in_collection_) return BeginTrack(attributes);
    if (name == "TRACK" && in_list_) return AddEntry(attributes["Key"]);
    if (!track_) return;
    if (name == "TEMPO") AddTempo(attributes);
    if (name == "POSITION_MARK") AddMark(attributes);
  }

  void End(std::string_view name) override {
    if (name == "COLLECTION") in_collection_ = false;
    if (name == "TRACK" && track_) EndTrack();
    if (name == "NODE" && !nodes_.empty()) {
      nodes_.pop_back();
      in_list_ = false;
    }
  }

  catalogue::ForeignLibrary Finish() override { return gathered_.Take(); }

 private:
  void BeginTrack(const Attributes& attributes) {
    track_.emplace();
    id_ = Cut(attributes["TrackID"]);
    track_->path = PathOfUrl(attributes["Location"]);
    track_->artist = Cut(attributes["Artist"]);
    track_->title = Cut(attributes["Name"]);
    track_->key = Cut(attributes["Tonality"]);
    track_->bpm = std::max(0.0, Number(attributes["AverageBpm"]).value_or(0));
    track_->length = std::max(0.0, Number(attributes["TotalTime"]).value_or(0));
    track_->size = std::max(0, Whole(attributes["Size"], 0));
    track_->rating = std::clamp(Whole(attributes["Rating"], 0) / 51, 0, 5);
  }

  void AddTempo(const Attributes& attributes) {
    const auto start = Number(attributes["Inizio"]);
    const auto bpm = Number(attributes["Bpm"]);
    const std::string_view metre = attributes["Metro"];
    const int in_bar = Whole(metre.substr(0, metre.find('/')), 4);
    if (start && bpm) Gathered::AddTempo(*track_, {*start, *bpm, Whole(attributes["Battito"], 1)}, in_bar);
  }

  void AddMark(const Attributes& attributes) {
    constexpr ForeignCue::Kind kKinds[] = {ForeignCue::Kind::Cue, ForeignCue::Kind::FadeIn,
                                           ForeignCue::Kind::FadeOut, ForeignCue::Kind::Load,
                                           ForeignCue::Kind::Loop};
    ForeignCue cue;
    const int type = Whole(attributes["Type"], 0);
    cue.kind = type >= 0 && type <= 4 ? kKinds[type] : ForeignCue::Kind::Cue;
    cue.start = Number(attributes["Start"]).value_or(-1);
    cue.end = Number(attributes["End"]).value_or(0);
    cue.number = Whole(attributes["Num"], -1);
    cue.name = Cut(attributes["Name"]);
    const int red = Whole(attributes["Red"], -1), green = Whole(attributes["Green"], -1),
              blue = Whole(attributes["Blue"], -1);
    if (red >= 0 && green >= 0 && blue >= 0) cue.colour = Colour(red, green, blue);
    gathered_.AddCue(*track_, std::move(cue));
  }

  void EndTrack() {
    const std::string path = track_->path;
    const auto place = gathered_.AddTrack(std::move(*track_));
    track_.reset();
    if (!place) return;
    by_id_.emplace(id_, *place);
    by_path_.emplace(path, *place);
  }

  void BeginNode(const Attributes& attributes) {
    // The outermost one is the tree itself.
    nodes_.push_back(nodes_.empty() ? std::string() : Cut(attributes["Name"]));
    in_list_ = attributes["Type"] == "1";
    if (!in_list_) return;
    by_location_ = attributes["KeyType"] == "1";
    std::string name;
    for (const std::string& part : nodes_) name += (name.empty() || part.empty() ? "" : "/") + part;
    list_ = gathered_.AddList(name);
  }

  void AddEntry(std::string_view key) {
    const auto& known = by_location_ ? by_path_ : by_id_;
    const std::string name = by_location_ ? PathOfUrl(key) : std::string(key);
    const auto at = known.find(name);
    std::optional<std::uint32_t> place;
    if (at != known.end()) place = at->second;
    if (!place && by_location_ && !name.empty()) {
      ForeignTrack bare;
      bare.path = name;
      place = gathered_.AddTrack(std::move(bare));
      if (place) by_path_.emplace(name, *place);
    }
    gathered_.AddEntry(list_, place);
  }

  Gathered gathered_;
  bool in_collection_ = false, in_list_ = false, by_location_ = false;
  std::optional<ForeignTrack> track_;
  std::string id_;
  std::size_t list_ = 0;
  std::vector<std::string> nodes_;
  std::unordered_map<std::string, std::uint32_t> by_id_, by_path_;
};

}  // namespace

std::unique_ptr<LibraryListener> ListenToRekordbox(catalogue::LibraryWatch& watch) {
  return std::make_unique<Rekordbox>(watch);
}

std::unique_ptr<LibraryListener> ListenerFor(std::string_view root, catalogue::LibraryWatch& watch) {
  if (root == "DJ_PLAYLISTS") return ListenToRekordbox(watch);
  if (root == "NML") return ListenToTraktor(watch);
  if (root == "plist") return ListenToItunes(watch);
  return nullptr;
}

}  // namespace platform::library
