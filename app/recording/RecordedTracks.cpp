// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/recording/RecordedTracks.h"

#include <algorithm>

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

std::string CueSheet(const std::string& file, const std::string& title, const std::string& date,
                     const std::vector<RecordedTrack>& tracks) {
  const bool mp3 = support::UpperTail(file, 4) == ".MP3";
  std::string sheet = "REM DATE " + date + "\r\nTITLE " + Quoted(title) + "\r\nFILE " + Quoted(file) +
                      (mp3 ? " MP3\r\n" : " WAVE\r\n");
  std::int64_t number = 0;
  for (const RecordedTrack& track : tracks) {
    sheet += "  TRACK " + TwoDigits(++number) + " AUDIO\r\n    TITLE " + Quoted(track.title) +
             "\r\n    PERFORMER " + Quoted(track.artist) + "\r\n    INDEX 01 " + CueTime(track.place) +
             "\r\n";
  }
  return sheet;
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
