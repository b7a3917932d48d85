// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/songs/SongPlayer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "karaoke/SongBeats.h"
#include "support/Text.h"

namespace app {
namespace {

constexpr int kSongRate = 44100;  ///< what every output is opened at
constexpr std::chrono::milliseconds kJustBeforeTheEnd{1};

/// Blocks on the disk: workers only.
support::Result<ReadySong> MakeReady(const SongRow& row, const std::string& soundfont,
                                     karaoke::SynthesiserFactory& synthesisers) {
  const auto bytes = karaoke::ReadSongBytes(row.filename);
  if (!bytes) return bytes.Failure();
  ReadySong ready;
  ready.song = karaoke::ReadSong(bytes.Value());
  auto sound = karaoke::SongSound::Open(bytes.Value(), ready.song, synthesisers, soundfont, kSongRate);
  if (!sound) return sound.Failure();
  ready.sound = std::move(sound).Value();
  const std::string title = row.title.empty() ? karaoke::TitleOf(ready.song) : row.title;
  const std::string artist = row.artist.empty() ? karaoke::ArtistOf(ready.song) : row.artist;
  SongWords words{title, artist, karaoke::LyricShow(ready.song), ready.song.note};
  if (!words.note && words.show.Lines().empty()) words.note = support::Sentence::NoWords;
  ready.words = std::make_shared<const SongWords>(std::move(words));
  ready.beats = std::make_shared<const music::BeatGrid>(karaoke::BeatsOf(ready.song));
  return ready;
}

std::uint32_t SongMilliseconds(std::chrono::microseconds time) {
  const auto count = std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
  return static_cast<std::uint32_t>(std::clamp<std::int64_t>(count, 0, UINT32_MAX));
}

}  // namespace

bool IsMidiSong(std::string_view filename) {
  constexpr std::size_t kExtension = 3;
  const std::string end =
      support::ToUpper(filename.substr(filename.size() - std::min(filename.size(), kExtension)));
  return end == "KAR" || end == "MID";
}

SongPlayer::SongPlayer(const DeskContext& context, const SongSources& sources)
    : context_(context), sources_(sources), output_(sources.engine, sources.control) {}

void SongPlayer::Play(SongRow row, std::string soundfont) {
  ++newest_;
  if (companion_comes_) sources_.companion.Release();
  companion_comes_ = false;
  soundfont_ = std::move(soundfont);
  coming_ = row;
  if (!IsMidiSong(row.filename)) return StartCompanion(std::move(row));
  if (sources_.synthesisers == nullptr) {
    coming_.reset();
    return Fail(row, context_.say(support::Sentence::SynthesiserNotStarted));
  }
  Prepare({std::move(row), soundfont_, false});
}

void SongPlayer::Prepare(const Wish& wish) {
  context_.workers.Post([this, wish, number = newest_, gate = context_.gate, box = context_.conductor] {
    gate->Pass([&] {
      auto ready = MakeReady(wish.row, wish.soundfont, *sources_.synthesisers);
      box->Post([this, wish, number, ready = std::move(ready)] {
        if (number == newest_) Prepared(wish, ready);
      });
    });
  });
}

void SongPlayer::Prepared(const Wish& wish, support::Result<ReadySong> ready) {
  if (!wish.moves) coming_.reset();
  if (!ready) return Fail(wish.row, context_.say(ready.Failure()));
  if (wish.moves) return Move(std::move(ready).Value());
  if (kind_ == Kind::Companion) sources_.companion.Release();
  semitones_ = 0;
  percent_ = 0;
  output_.Place(moving_to_);
  if (const auto opened = Open(wish.row, std::move(ready).Value()); !opened) {
    CloseMidi();
    return Fail(wish.row, context_.say(opened.Failure()));
  }
  Resume();
}

support::Result<void> SongPlayer::Open(const SongRow& row, ReadySong ready) {
  karaoke_.TakeSong(row.filename, std::move(ready.song));
  sequencer_.Offer(row.filename, std::move(ready.sound));
  static_cast<void>(karaoke_.Velocity(1 + percent_ / 100));
  if (auto opened = karaoke_.KarOpenDevice(); !opened) return opened;
  kind_ = Kind::Midi;
  state_ = State::Stopped;
  row_ = row;
  words_ = std::move(ready.words);
  beats_ = std::move(ready.beats);
  SetVolume(volume_);
  ApplyWishes();
  return {};
}

/// The same song on another output, where it is heard now.
void SongPlayer::Move(ReadySong ready) {
  const std::uint32_t place = karaoke_.Position();
  const State before = state_;
  output_.Place(moving_to_);
  if (const auto opened = Open(row_, std::move(ready)); !opened) {
    CloseMidi();
    return Fail(row_, context_.say(opened.Failure()));
  }
  static_cast<void>(karaoke_.SetPosition(place));
  if (before == State::Playing) return Resume();
  state_ = before;
}

void SongPlayer::StartCompanion(SongRow row) {
  companion_comes_ = true;
  sources_.companion.SetVolume(volume_);
  sources_.companion.Load({row.filename, row.artist, row.title, 0, {}});
  sources_.companion.Play();
}

/// A companion that is ready, or could not be read.
void SongPlayer::LookAtCompanion(const DeckView& deck) {
  if (!companion_comes_ || deck.state == DeckView::State::Loading) return;
  companion_comes_ = false;
  const SongRow row = *std::exchange(coming_, std::nullopt);
  if (!deck.message.empty() || deck.filename != row.filename) return Fail(row, deck.message);
  CloseMidi();
  semitones_ = 0;
  percent_ = 0;
  ApplyCompanionTempo();
  kind_ = Kind::Companion;
  row_ = row;
  words_ = std::make_shared<const SongWords>(SongWords{row.title, row.artist, {}});
}

/// A song follows deck 1 to another output.
void SongPlayer::FollowOutput(OutputView place) {
  if (place == moving_to_) return;
  moving_to_ = place;
  if (kind_ != Kind::Midi) return;
  if (coming_ && !companion_comes_) return;  // it will play there
  if (!coming_) ++newest_;
  Prepare({row_, soundfont_, true});
}

void SongPlayer::Fail(const SongRow& row, const std::string& why) {
  const std::string name = row.title.empty() ? row.filename : row.title;
  failure_ = context_.say(support::Sentence::SongNotPlayed, {name, why});
  ++failures_;
}

void SongPlayer::Pause() {
  if (kind_ == Kind::Companion) return sources_.companion.Pause();
  if (state_ != State::Playing) return;
  static_cast<void>(karaoke_.Pause());
  state_ = State::Paused;
}

void SongPlayer::Resume() {
  if (kind_ == Kind::Companion) return sources_.companion.Play();
  if (kind_ != Kind::Midi) return;
  if (state_ == State::Ended) static_cast<void>(karaoke_.SeekIni());
  if (const auto played = karaoke_.Play(); !played) return Fail(row_, context_.say(played.Failure()));
  state_ = State::Playing;
}

void SongPlayer::Stop() {
  if (kind_ == Kind::Companion) return sources_.companion.Stop();
  if (kind_ != Kind::Midi) return;
  static_cast<void>(karaoke_.StopPlay());
  static_cast<void>(karaoke_.SeekIni());
  state_ = State::Stopped;
}

void SongPlayer::Seek(std::chrono::microseconds position) {
  if (kind_ == Kind::Companion) return sources_.companion.Seek(position);
  if (kind_ != Kind::Midi) return;
  const std::chrono::milliseconds last(karaoke_.MusicTimeLength());
  const auto place = std::clamp<std::chrono::microseconds>(position, std::chrono::microseconds(0),
                                                           std::max(last - kJustBeforeTheEnd, last * 0));
  static_cast<void>(karaoke_.SetPosition(SongMilliseconds(place)));
  if (state_ == State::Ended) state_ = State::Stopped;
}

void SongPlayer::SetVolume(int volume) {
  volume_ = std::clamp(volume, 0, 100);
  if (kind_ == Kind::Companion) sources_.companion.SetVolume(volume_);
  const auto level = static_cast<std::uint32_t>(volume_ * 0xFFFF / 100);
  static_cast<void>(karaoke_.SetMusicVolume(level << 16 | level));
}

void SongPlayer::SetKey(int semitones) {
  semitones_ = std::clamp(semitones, -12, 12);
  ApplyWishes();
  ApplyCompanionTempo();
}

void SongPlayer::SetTempo(double percent) {
  if (!std::isfinite(percent)) return;
  percent_ = std::clamp(percent, -50.0, 100.0);
  static_cast<void>(karaoke_.Velocity(1 + percent_ / 100));
  ApplyCompanionTempo();
}

void SongPlayer::SetMelody(int level) {
  melody_ = std::clamp(level, 0, 100);
  ApplyWishes();
}

void SongPlayer::ApplyWishes() {
  karaoke::SongSound* sound = sequencer_.Open();
  if (sound == nullptr) return;
  sound->Wishes().semitones = semitones_;
  sound->Wishes().melody_level = static_cast<float>(melody_) / 100;
}

void SongPlayer::ApplyCompanionTempo() {
  decks::TempoSliders sliders;
  sliders.percent = percent_;
  sliders.semitones = semitones_;
  sources_.companion.Tempo().Set(sliders);
}

void SongPlayer::CloseMidi() {
  static_cast<void>(karaoke_.CloseDevice());
  if (kind_ != Kind::Midi) return;
  kind_ = Kind::None;
  state_ = State::Empty;
  words_.reset();
  beats_.reset();
  row_ = {};
}

void SongPlayer::Release() {
  ++newest_;
  coming_.reset();
  companion_comes_ = false;
  CloseMidi();
}

void SongPlayer::Tick(const WorkstationView& decks, SongView& view) {
  constexpr std::size_t kCompanion = 2;
  const DeckView& companion = decks.decks[kCompanion];
  FollowOutput(decks.outputs[0]);
  LookAtCompanion(companion);
  view = SongView{};
  view.at = context_.clock.Now();
  view.filename = row_.filename;
  view.coming = coming_ ? coming_->filename : "";
  view.words = words_;
  if (words_ != nullptr && words_->note) view.note = context_.say(*words_->note);
  view.volume = volume_;
  view.semitones = semitones_;
  view.percent = percent_;
  view.melody = melody_;
  view.failure = failure_;
  view.failures = failures_;
  if (kind_ == Kind::Midi) ShowMidi(view);
  if (kind_ == Kind::Companion) ShowCompanion(companion, view);
  if (kind_ == Kind::None && coming_) view.state = State::Loading;
}

decks::StreamHandle SongPlayer::Hear(HeardSong& song) {
  song = {};
  if (kind_ != Kind::Midi || state_ != State::Playing) return 0;
  const decks::HeardStream heard = output_.Heard();
  if (!heard.playing || heard.ended) return 0;
  song.playing = true;
  song.volume = volume_;
  song.position = std::chrono::microseconds(heard.frame.value * 1'000'000 / kSongRate);
  song.speed = heard.ratio;
  song.grid = beats_;
  return output_.Stream();
}

void SongPlayer::ShowMidi(SongView& view) {
  if (state_ == State::Playing && !karaoke_.IsPlaying()) state_ = State::Ended;
  view.state = state_;
  view.position = std::chrono::milliseconds(karaoke_.Position());
  view.length = std::chrono::milliseconds(karaoke_.MusicTimeLength());
  view.speed = state_ == State::Playing ? karaoke_.Velocity() : 0;
  view.has_melody = sequencer_.Open() != nullptr && sequencer_.Open()->HasMelody();
}

void SongPlayer::ShowCompanion(const DeckView& deck, SongView& view) const {
  switch (deck.state) {
    case DeckView::State::Playing:
      view.state = State::Playing;
      break;
    case DeckView::State::Paused:
      view.state = State::Paused;
      break;
    case DeckView::State::Ended:
      view.state = State::Ended;
      break;
    case DeckView::State::Loading:
    case DeckView::State::Stopped:
    case DeckView::State::Empty:
      view.state = State::Stopped;
      break;
  }
  view.position = deck.position;
  view.length = deck.length;
  view.speed = view.state == State::Playing ? deck.speed : 0;
}

}  // namespace app
