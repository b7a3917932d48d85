// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/songs/SongStation.h"

#include <algorithm>
#include <utility>

#include "app/StationContext.h"
#include "app/WorkstationView.h"
#include "support/Settings.h"

namespace app {
namespace {

constexpr std::string_view kSongSection = "Karaoke";

}  // namespace

SongStation::SongStation(const StationContext& context, const SongSources& sources)
    : context_(context), sources_(sources), player_(context, sources), discs_(context, sources.images) {}

void SongStation::StartUp() {
  context_.conductor->Order(player_, &SongPlayer::SetVolume, StoredLevel("Volume"));
  context_.conductor->Order(player_, &SongPlayer::SetMelody, StoredLevel("MelodyLevel"));
  if (sources_.tools.synthesisers == nullptr) return;
  context_.workers.Post([this, gate = context_.gate, window = context_.window] {
    gate->Pass([&] {
      window->Post([this, found = sources_.tools.synthesisers->Soundfonts()] { soundfonts_ = found; });
    });
  });
}

void SongStation::Tick(const WorkstationView& decks) {
  SongView& view = views_.Draft();
  player_.Tick(decks, view);
  in_hand_ = {player_.Row(), view.state,  view.position, view.semitones,
              view.percent,  view.coming, view.length,   view.volume};
  view.disc = discs_.Tick(decks.decks);
  const bool midi_plays = view.state == SongView::State::Playing && IsMidiSong(view.filename);
  if (midi_plays) view.disc = {};
  NoteSung(view);
  views_.Publish();
}

void SongStation::NoteSung(const SongView& view) {
  const bool midi = IsMidiSong(view.filename);
  if (!midi || view.filename != sung_.filename) sung_ = {};
  if (!midi) return;
  using State = DeckView::State;
  sung_.state = view.state == SongView::State::Playing  ? State::Playing
                : view.state == SongView::State::Paused ? State::Paused
                                                        : State::Stopped;
  sung_.filename = view.filename;
  sung_.length = view.length;
  if (view.words == nullptr) return;
  sung_.artist = view.words->artist;
  sung_.title = view.words->title;
}

void SongStation::ShutDown() {
  player_.Release();
  discs_.Release();
}

void SongStation::Play(SongRow row) {
  context_.conductor->Order(player_, &SongPlayer::Play, std::move(row), Soundfont(), SongWishes(), -1);
}

void SongStation::PlayNow(const SongRow& row, const SongWishes& wishes, int volume) {
  player_.Play(row, Soundfont(), wishes, volume >= 0 ? volume : StoredLevel("Volume"));
}

void SongStation::GoOn(const SongInHand& song) {
  context_.conductor->Order(player_, &SongPlayer::GoOn, song, Soundfont());
}

void SongStation::Pause() {
  context_.conductor->Order(player_, &SongPlayer::Pause);
}

void SongStation::Resume() {
  context_.conductor->Order(player_, &SongPlayer::Resume);
}

void SongStation::Stop() {
  context_.conductor->Order(player_, &SongPlayer::Stop);
}

void SongStation::Seek(std::chrono::microseconds position) {
  context_.conductor->Order(player_, &SongPlayer::Seek, position);
}

void SongStation::SetVolume(int volume) {
  context_.settings.SetNumber(kSongSection, "Volume", std::clamp(volume, 0, 100));
  context_.conductor->Order(player_, &SongPlayer::SetVolume, volume);
}

void SongStation::SetKey(int semitones) {
  context_.conductor->Order(player_, &SongPlayer::SetKey, semitones);
}

void SongStation::SetTempo(double percent) {
  context_.conductor->Order(player_, &SongPlayer::SetTempo, percent);
}

bool SongStation::SoundsOrComes() const {
  using State = SongView::State;
  return in_hand_.state == State::Playing || in_hand_.state == State::Paused || !in_hand_.coming.empty();
}

void SongStation::SetCoding(const std::string& filename, const std::string& coding) {
  context_.conductor->Order(player_, &SongPlayer::SetCoding, filename, coding);
  catalogue::SideStore* store = sources_.tools.side_store;
  if (store == nullptr) return;
  context_.workers.Post([store, filename, coding, gate = context_.gate, tell = context_.tell] {
    gate->Pass([&] {
      if (const auto kept = KeepCoding(*store, filename, coding); !kept) tell(SayingOf(kept.Failure()));
    });
  });
}

void SongStation::SetMelody(int level) {
  context_.settings.SetNumber(kSongSection, "MelodyLevel", std::clamp(level, 0, 100));
  context_.conductor->Order(player_, &SongPlayer::SetMelody, level);
}

void SongStation::SetSoundfont(const std::string& path) {
  context_.settings.SetText(kSongSection, "Soundfont", path);
}

std::string SongStation::Soundfont() const {
  return context_.settings.Text(kSongSection, "Soundfont");
}

karaoke::LyricLook SongStation::Look(karaoke::LookReader reader) const {
  const std::string chosen = context_.settings.Text(kSongSection, "Look");
  if (reader == karaoke::LookReader::Display && chosen != "described") return karaoke::StageLook();
  return karaoke::ReadLook(context_.settings, reader);
}

std::filesystem::path SongStation::Native(const std::string& stored) const {
  const std::string folder = context_.folder.Text() + '\\';
  if (!stored.starts_with(folder)) return stored;
  return context_.folder.Native(std::string_view(stored).substr(folder.size() - 1));
}

int SongStation::StoredLevel(std::string_view key) const {
  return context_.settings.Number(kSongSection, key, 0, 100);
}

}  // namespace app
