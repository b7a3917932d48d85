// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/recording/RecordedTracks.h"

#include <algorithm>
#include <array>

#include "app/WorkstationView.h"
#include "support/Text.h"

namespace app {
namespace {

constexpr std::size_t kHeardDecks = 3;  ///< the fourth is in the head-phones alone

bool Sounds(const DeckView& deck) {
  return deck.loaded_state == DeckView::State::Playing && !deck.waiting;
}

std::string TwoDigits(std::int64_t number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

/// Minutes, which may pass 99, seconds and frames of a compact disc.
std::string CueTime(std::chrono::microseconds place) {
  constexpr std::int64_t kFrames = 75;
  const std::int64_t frames = place.count() * kFrames / 1'000'000;
  return TwoDigits(frames / kFrames / 60) + ":" + TwoDigits(frames / kFrames % 60) + ":" +
         TwoDigits(frames % kFrames);
}

std::string Quoted(std::string text) {
  std::replace(text.begin(), text.end(), '"', '\'');
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < 0x20; }, ' ');
  return "\"" + text + "\"";
}

std::string LastPart(const std::string& path) {
  const std::size_t folder = path.find_last_of("/\\");
  return path.substr(folder == std::string::npos ? 0 : folder + 1);
}

std::string Unquoted(std::string_view text) {
  if (text.size() >= 2 && text.front() == '"' && text.back() == '"') text = text.substr(1, text.size() - 2);
  return std::string(text);
}

/// Of minutes, seconds and frames; 0 where they are none.
std::chrono::microseconds PlaceOf(std::string_view time) {
  constexpr std::int64_t kMostMinutes = 100'000;
  constexpr std::array<std::int64_t, 3> kFrames{60 * 75, 75, 1};
  std::int64_t frames = 0;
  for (const std::int64_t weight : kFrames) {
    const std::size_t end = std::min(time.find(':'), time.size());
    frames +=
        std::clamp<std::int64_t>(support::LeadingInteger(time.substr(0, end)), 0, kMostMinutes) * weight;
    time.remove_prefix(std::min(end + 1, time.size()));
  }
  return std::chrono::microseconds(frames * 1'000'000 / 75);
}

}  // namespace

std::optional<DeckView> LeadingTrack::Look(const WorkstationView& view) {
  const DeckView* led = leader_.deck == 0 ? nullptr : &view.decks[leader_.deck - 1];
  if (led != nullptr && (!Sounds(*led) || led->loaded != leader_.file)) led = nullptr;
  const DeckView* leads = led;
  for (std::size_t i = 0; i < kHeardDecks; ++i) {
    const DeckView& deck = view.decks[i];
    if (!Sounds(deck) || deck.volume == 0) continue;
    if (leads == nullptr || deck.volume > leads->volume) leads = &deck;
  }
  sounding_ = leads != nullptr;
  if (leads == nullptr || leads == led) return {};
  const auto number = static_cast<std::size_t>(leads - view.decks.data()) + 1;
  // One that was paused goes on where it was.
  const bool same = leader_.deck == number && leader_.file == leads->loaded;
  leader_ = {number, leads->loaded};
  return same ? std::nullopt : std::optional(*leads);
}

std::string NameOf(const RecordedTrack& track) {
  if (track.artist.empty()) return track.title.empty() ? "?" : track.title;
  return track.title.empty() ? track.artist : track.artist + " - " + track.title;
}

std::string CueSheet(const std::string& title, const std::string& date,
                     const std::vector<RecordedTrack>& tracks) {
  std::string sheet = "REM DATE " + date + "\r\nTITLE " + Quoted(title) + "\r\n";
  std::int64_t number = 0;
  std::string file;
  for (const RecordedTrack& track : tracks) {
    if (track.file != file) {
      file = track.file;
      const bool mp3 = support::UpperTail(file, 4) == ".MP3";
      sheet += "FILE " + Quoted(LastPart(file)) + (mp3 ? " MP3\r\n" : " WAVE\r\n");
    }
    sheet += "  TRACK " + TwoDigits(++number) + " AUDIO\r\n    TITLE " + Quoted(track.title) +
             "\r\n    PERFORMER " + Quoted(track.artist) + "\r\n    INDEX 01 " +
             CueTime(track.place - track.file_begins) + "\r\n";
  }
  return sheet;
}

std::vector<RecordedTrack> TracksOfCueSheet(std::string_view sheet) {
  constexpr std::size_t kMost = 10'000;
  std::vector<RecordedTrack> tracks;
  std::string file;
  for (const std::string_view line : support::SplitLines(sheet)) {
    const std::string_view words = support::Trim(line);
    if (words.starts_with("FILE ")) file = Unquoted(words.substr(5, words.rfind(' ') - 5));
    if (words.starts_with("TRACK ") && tracks.size() < kMost) tracks.push_back({{}, {}, {}, file});
    if (tracks.empty()) continue;
    if (words.starts_with("TITLE ")) tracks.back().title = Unquoted(words.substr(6));
    if (words.starts_with("PERFORMER ")) tracks.back().artist = Unquoted(words.substr(10));
    if (words.starts_with("INDEX 01 ")) tracks.back().place = PlaceOf(words.substr(9));
  }
  return tracks;
}

std::string TrackList(const std::vector<RecordedTrack>& tracks) {
  std::string list;
  for (const RecordedTrack& track : tracks) {
    const std::int64_t seconds = track.place.count() / 1'000'000;
    list += TwoDigits(seconds / 3600) + ":" + TwoDigits(seconds / 60 % 60) + ":" + TwoDigits(seconds % 60) +
            "  " + NameOf(track) + "\r\n";
  }
  return list;
}

}  // namespace app
