// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/songs/SongDesk.h"

#include <algorithm>
#include <utility>

#include "app/settings/Settings.h"

namespace app {
namespace {

constexpr std::string_view kSongSection = "Karaoke";

}  // namespace

SongDesk::SongDesk(const DeskContext& context, const SongSources& sources)
    : context_(context), sources_(sources), player_(context, sources), discs_(context, sources.images) {}

void SongDesk::StartUp() {
  context_.conductor->Post([this, volume = StoredLevel("Volume"), melody = StoredLevel("MelodyLevel")] {
    player_.SetVolume(volume);
    player_.SetMelody(melody);
  });
  if (sources_.tools.synthesisers == nullptr) return;
  context_.workers.Post([this, gate = context_.gate, window = context_.window] {
    gate->Pass([&] {
      window->Post([this, found = sources_.tools.synthesisers->Soundfonts()] { soundfonts_ = found; });
    });
  });
}

void SongDesk::Tick(const WorkstationView& decks) {
  SongView& view = views_.Draft();
  player_.Tick(decks, view);
  in_hand_ = {player_.Row(), view.state, view.position, view.semitones, view.percent, view.coming};
  view.disc = discs_.Tick(decks.decks);
  const bool midi_plays = view.state == SongView::State::Playing && IsMidiSong(view.filename);
  if (midi_plays) view.disc = {};
  NoteSung(view);
  views_.Publish();
}

void SongDesk::NoteSung(const SongView& view) {
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

void SongDesk::ShutDown() {
  player_.Release();
  discs_.Release();
}

void SongDesk::Play(SongRow row) {
  context_.conductor->Post(
      [this, row = std::move(row), soundfont = Soundfont()] { player_.Play(row, soundfont); });
}

void SongDesk::GoOn(const SongInHand& song) {
  context_.conductor->Post([this, song, soundfont = Soundfont()] { player_.GoOn(song, soundfont); });
}

void SongDesk::Pause() {
  context_.conductor->Post([this] { player_.Pause(); });
}

void SongDesk::Resume() {
  context_.conductor->Post([this] { player_.Resume(); });
}

void SongDesk::Stop() {
  context_.conductor->Post([this] { player_.Stop(); });
}

void SongDesk::Seek(std::chrono::microseconds position) {
  context_.conductor->Post([this, position] { player_.Seek(position); });
}

void SongDesk::SetVolume(int volume) {
  Settings(context_.settings, context_.folder).SetNumber(kSongSection, "Volume", std::clamp(volume, 0, 100));
  context_.conductor->Post([this, volume] { player_.SetVolume(volume); });
}

void SongDesk::SetKey(int semitones) {
  context_.conductor->Post([this, semitones] { player_.SetKey(semitones); });
}

void SongDesk::SetTempo(double percent) {
  context_.conductor->Post([this, percent] { player_.SetTempo(percent); });
}

void SongDesk::SetCoding(const std::string& filename, const std::string& coding) {
  context_.conductor->Post([this, filename, coding] { player_.SetCoding(filename, coding); });
  catalogue::SideStore* store = sources_.tools.side_store;
  if (store == nullptr) return;
  context_.workers.Post(
      [store, filename, coding, gate = context_.gate, tell = context_.tell, say = &context_.say] {
        gate->Pass([&] {
          if (const auto kept = KeepCoding(*store, filename, coding); !kept) tell((*say)(kept.Failure()));
        });
      });
}

void SongDesk::SetMelody(int level) {
  Settings(context_.settings, context_.folder)
      .SetNumber(kSongSection, "MelodyLevel", std::clamp(level, 0, 100));
  context_.conductor->Post([this, level] { player_.SetMelody(level); });
}

void SongDesk::SetSoundfont(const std::string& path) {
  Settings(context_.settings, context_.folder).SetText(kSongSection, "Soundfont", path);
}

std::string SongDesk::Soundfont() const {
  return Settings(context_.settings, context_.folder).Text(kSongSection, "Soundfont");
}

karaoke::LyricLook SongDesk::Look(karaoke::LookReader reader) const {
  const std::string chosen = Settings(context_.settings, context_.folder).Text(kSongSection, "Look");
  if (reader == karaoke::LookReader::Display && chosen != "described") return karaoke::StageLook();
  return karaoke::ReadLook(context_.settings, context_.folder, reader);
}

std::filesystem::path SongDesk::Native(const std::string& stored) const {
  const std::string folder = context_.folder.Text() + '\\';
  if (!stored.starts_with(folder)) return stored;
  return context_.folder.Native(std::string_view(stored).substr(folder.size() - 1));
}

int SongDesk::StoredLevel(std::string_view key) const {
  return std::clamp(Settings(context_.settings, context_.folder).Number(kSongSection, key), 0, 100);
}

}  // namespace app
