// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/songs/SongPlayer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "app/StationContext.h"
#include "app/WorkstationView.h"
#include "support/Text.h"

namespace app {
namespace {

constexpr std::chrono::milliseconds kJustBeforeTheEnd{1};
/// The engine keeps a file that it was told to prepare for a little longer than that.
constexpr std::chrono::seconds kPrepareAgain{7};

std::uint32_t SongMilliseconds(std::chrono::microseconds time) {
  const auto count = std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
  return static_cast<std::uint32_t>(std::clamp<std::int64_t>(count, 0, UINT32_MAX));
}

decks::TempoSliders SlidersOf(const SongWishes& wishes) {
  decks::TempoSliders sliders;
  sliders.percent = wishes.percent;
  sliders.semitones = wishes.semitones;
  return sliders;
}

}  // namespace

bool IsMidiSong(std::string_view filename) {
  constexpr std::size_t kExtension = 3;
  const std::string end =
      support::ToUpper(filename.substr(filename.size() - std::min(filename.size(), kExtension)));
  return end == "KAR" || end == "MID";
}

SongPlayer::SongPlayer(const StationContext& context, const SongSources& sources)
    : context_(context), sources_(sources) {}

/// The song that comes is overtaken; on the companion deck it may have begun since the last tick.
void SongPlayer::DropComing() {
  if (!coming_ || !coming_->on_companion || sources_.companion.CancelLoad()) return;
  if (sources_.companion.Player().Filename() == coming_->row.filename) TakeCompanion(*coming_);
}

void SongPlayer::Play(SongRow row, std::string soundfont, const SongWishes& wishes, int volume) {
  DropComing();
  ++newest_;
  soundfont_ = std::move(soundfont);
  coming_ = Coming{std::move(row), wishes, false, {}, volume};
  Foreseen foreseen;
  if (foreseen_.row.filename == coming_->row.filename) {
    foreseen = std::exchange(foreseen_, {});
    ++newest_foreseen_;
  }
  if (!IsMidiSong(coming_->row.filename)) return StartCompanion();
  if (sources_.tools.synthesisers == nullptr) {
    const Coming refused = *std::exchange(coming_, std::nullopt);
    return Fail(refused.row, context_.say(support::Sentence::SynthesiserNotStarted));
  }
  if (foreseen.ready && foreseen.soundfont == soundfont_) return Begin(*foreseen.ready);
  Prepare(coming_->row, &SongPlayer::newest_, &SongPlayer::Begin);
}

void SongPlayer::Foresee(SongRow row, std::string soundfont) {
  foreseen_ = Foreseen{std::move(row), std::move(soundfont)};
  ++newest_foreseen_;
  if (IsMidiSong(foreseen_.row.filename) && sources_.tools.synthesisers != nullptr)
    Prepare(foreseen_.row, &SongPlayer::newest_foreseen_, &SongPlayer::TakeForeseen);
}

/// One that cannot be read is looked at again when it is wanted, and told of then.
void SongPlayer::TakeForeseen(const Ready& ready) {
  if (ready) foreseen_.ready = ready.Value();
}

void SongPlayer::KeepForeseen() {
  const std::string& file = foreseen_.row.filename;
  const support::TimePoint now = context_.clock.Now();
  const bool old = foreseen_.prepared == support::TimePoint{} || now - foreseen_.prepared >= kPrepareAgain;
  if (file.empty() || IsMidiSong(file) || !old) return;
  foreseen_.prepared = now;
  sources_.control.Prepare(file, [](const support::Result<void>&) {});
}

void SongPlayer::GoOn(const SongInHand& song, std::string soundfont) {
  Play(song.row, std::move(soundfont), {}, -1);
  if (!coming_) return;
  coming_->from = song;
  coming_->wishes.semitones = song.semitones;
  coming_->wishes.percent = song.percent;
  if (!coming_->on_companion) return;
  sources_.companion.BeginNextWith(SlidersOf(coming_->wishes));
  sources_.companion.Pause();  // it begins where it was
}

/// A hand wants no song that would come by itself.
void SongPlayer::DropGoingOn() {
  if (!coming_ || !coming_->from) return;
  if (coming_->on_companion) static_cast<void>(sources_.companion.CancelLoad());
  coming_.reset();
  ++newest_;
}

/// newest: counts the wishes of the same kind; only the last one's answer is taken.
void SongPlayer::Prepare(const SongRow& row, std::uint64_t SongPlayer::*newest,
                         void (SongPlayer::*then)(const Ready&)) {
  context_.workers.Post(
      [this, row, newest, then, number = this->*newest,
       soundfont = newest == &SongPlayer::newest_foreseen_ ? foreseen_.soundfont : soundfont_,
       gate = context_.gate, box = context_.conductor] {
        gate->Pass([&] {
          box->Post([this, newest, then, number, ready = MakeReady(row, soundfont, sources_.tools)] {
            if (number == this->*newest) (this->*then)(ready);
          });
        });
      });
}

support::Result<std::unique_ptr<MidiSong>> SongPlayer::OpenBeside(const SongRow& row, ReadySong ready,
                                                                  const SongWishes& wishes) {
  auto song =
      MidiSong::Open(sources_.engine, sources_.control, place_, row, std::move(ready), wishes, volume_);
  if (song) song.Value()->SetMelody(melody_);
  return song;
}

/// The song that was chosen is ready, or cannot be played.
void SongPlayer::Begin(const Ready& ready) {
  const Coming coming = *std::exchange(coming_, std::nullopt);
  if (!ready) return Fail(coming.row, context_.say(ready.Failure()));
  if (coming.volume >= 0) volume_ = coming.volume;
  auto song = OpenBeside(coming.row, ready.Value(), coming.wishes);
  if (!song) return Fail(coming.row, context_.say(song.Failure()));
  if (coming.from)
    static_cast<void>(song.Value()->Device().SetPosition(SongMilliseconds(coming.from->position)));
  const bool plays = !coming.from || coming.from->state == State::Playing;
  if (const auto played = plays ? song.Value()->Device().Play() : support::Result<void>(); !played) {
    return Fail(coming.row, context_.say(played.Failure()));
  }
  if (kind_ == Kind::Companion) sources_.companion.Release();
  ++newest_move_;
  midi_ = std::move(song).Value();
  kind_ = Kind::Midi;
  state_ = plays ? State::Playing : State::Stopped;
  wishes_ = coming.wishes;
}

/// The same song on another output, where it is heard now.
void SongPlayer::Move(const Ready& ready) {
  if (midi_ == nullptr) return;
  if (!ready) return Fail(midi_->Row(), context_.say(ready.Failure()));
  auto song = OpenBeside(midi_->Row(), ready.Value(), wishes_);
  if (!song) return Fail(midi_->Row(), context_.say(song.Failure()));
  song.Value()->Show(midi_->Words());
  static_cast<void>(song.Value()->Device().SetPosition(midi_->Device().Position()));
  if (state_ == State::Playing) static_cast<void>(song.Value()->Device().Play());
  midi_ = std::move(song).Value();
}

void SongPlayer::StartCompanion() {
  coming_->on_companion = true;
  const SongRow& row = coming_->row;
  sources_.companion.SetVolume(volume_);
  sources_.companion.Load({.filename = row.filename,
                           .artist = row.artist,
                           .title = row.title,
                           .marks = {},
                           .tempo = decks::TempoSliders(),
                           .beside = kind_ == Kind::Companion});
  sources_.companion.Play();
  if (coming_->wishes != SongWishes()) sources_.companion.BeginNextWith(SlidersOf(coming_->wishes));
}

/// A companion that is ready, or could not be read.
void SongPlayer::LookAtCompanion(const DeckView& deck) {
  if (!coming_ || !coming_->on_companion || deck.state == DeckView::State::Loading) return;
  const Coming coming = *std::exchange(coming_, std::nullopt);
  const SongRow& row = coming.row;
  if (!deck.message.empty() || deck.loaded != row.filename) return Fail(row, deck.message);
  TakeCompanion(coming);
  if (!coming.from) return;
  Seek(coming.from->position);
  if (coming.from->state == State::Playing) Resume();
}

/// Its song is the one that is there.
void SongPlayer::TakeCompanion(const Coming& coming) {
  CloseMidi();
  if (coming.volume >= 0) {
    volume_ = coming.volume;
    sources_.companion.SetVolume(volume_);
  }
  wishes_ = coming.wishes;
  kind_ = Kind::Companion;
  companion_row_ = coming.row;
  companion_words_ = std::make_shared<const SongWords>(SongWords{coming.row.title, coming.row.artist, {}});
}

/// A song follows deck 1 to another output.
void SongPlayer::FollowOutput(OutputView place) {
  if (place == place_) return;
  place_ = place;
  ++newest_move_;
  if (midi_ != nullptr) Prepare(midi_->Row(), &SongPlayer::newest_move_, &SongPlayer::Move);
}

void SongPlayer::Fail(const SongRow& row, const std::string& why) {
  const std::string name = row.title.empty() ? row.filename : row.title;
  failure_ = context_.say(support::Sentence::SongNotPlayed, {name, why});
  ++failures_;
}

void SongPlayer::Pause() {
  DropGoingOn();
  if (kind_ == Kind::Companion) return sources_.companion.Pause();
  if (state_ != State::Playing) return;
  static_cast<void>(midi_->Device().Pause());
  state_ = State::Paused;
}

void SongPlayer::Resume() {
  if (kind_ == Kind::Companion) return sources_.companion.Play();
  if (kind_ != Kind::Midi) return;
  if (state_ == State::Ended) static_cast<void>(midi_->Device().SeekIni());
  if (const auto played = midi_->Device().Play(); !played) {
    return Fail(midi_->Row(), context_.say(played.Failure()));
  }
  state_ = State::Playing;
}

void SongPlayer::Stop() {
  DropGoingOn();
  if (kind_ == Kind::Companion) return sources_.companion.Stop();
  if (kind_ != Kind::Midi) return;
  static_cast<void>(midi_->Device().StopPlay());
  static_cast<void>(midi_->Device().SeekIni());
  state_ = State::Stopped;
}

void SongPlayer::Drop() {
  DropComing();
  coming_.reset();
  ++newest_;
  Stop();
}

void SongPlayer::Seek(std::chrono::microseconds position) {
  if (kind_ == Kind::Companion) return sources_.companion.Seek(position);
  if (kind_ != Kind::Midi) return;
  const std::chrono::milliseconds last(midi_->Device().MusicTimeLength());
  const auto place = std::clamp<std::chrono::microseconds>(position, std::chrono::microseconds(0),
                                                           std::max(last - kJustBeforeTheEnd, last * 0));
  static_cast<void>(midi_->Device().SetPosition(SongMilliseconds(place)));
  if (state_ == State::Ended) state_ = State::Stopped;
}

void SongPlayer::SetVolume(int volume) {
  volume_ = std::clamp(volume, 0, 100);
  if (kind_ == Kind::Companion) sources_.companion.SetVolume(volume_);
  if (midi_ != nullptr) midi_->SetVolume(volume_);
}

void SongPlayer::SetKey(int semitones) {
  Wishes().semitones = std::clamp(semitones, -12, 12);
  ApplyWishes();
}

void SongPlayer::SetTempo(double percent) {
  if (!std::isfinite(percent)) return;
  Wishes().percent = std::clamp(percent, -50.0, 100.0);
  ApplyWishes();
}

void SongPlayer::SetMelody(int level) {
  melody_ = std::clamp(level, 0, 100);
  if (midi_ != nullptr) midi_->SetMelody(melody_);
}

void SongPlayer::ApplyWishes() {
  if (coming_) {
    if (coming_->on_companion) sources_.companion.BeginNextWith(SlidersOf(coming_->wishes));
  } else if (midi_ != nullptr) {
    midi_->SetKey(wishes_.semitones);
    midi_->SetTempo(wishes_.percent);
  } else if (kind_ == Kind::Companion) {
    sources_.companion.Tempo().Set(SlidersOf(wishes_));
  }
}

void SongPlayer::SetCoding(const std::string& filename, const std::string& coding) {
  if (midi_ != nullptr && midi_->Row().filename == filename) midi_->Show(WithCoding(*midi_->Words(), coding));
}

void SongPlayer::CloseMidi() {
  if (kind_ != Kind::Midi) return;
  ++newest_move_;
  midi_.reset();
  kind_ = Kind::None;
  state_ = State::Empty;
}

void SongPlayer::Release() {
  ++newest_;
  coming_.reset();
  CloseMidi();
}

void SongPlayer::Tick(const WorkstationView& decks, SongView& view) {
  constexpr std::size_t kCompanion = 2;
  const DeckView& companion = decks.decks[kCompanion];
  FollowOutput(decks.outputs[0]);
  KeepForeseen();
  LookAtCompanion(companion);
  view = SongView{};
  view.at = context_.clock.Now();
  view.coming = coming_ ? coming_->row.filename : "";
  view.volume = volume_;
  view.semitones = Wishes().semitones;
  view.percent = Wishes().percent;
  view.melody = melody_;
  view.failure = failure_;
  view.failures = failures_;
  if (kind_ == Kind::Midi) ShowMidi(view);
  if (kind_ == Kind::Companion) ShowCompanion(companion, view);
  if (kind_ == Kind::None && coming_) view.state = State::Loading;
}

SongRow SongPlayer::Row() const {
  if (kind_ == Kind::Companion) return companion_row_;
  return midi_ == nullptr ? SongRow{} : midi_->Row();
}

decks::StreamHandle SongPlayer::Hear(HeardSong& song) {
  song = {};
  if (kind_ != Kind::Midi || state_ != State::Playing) return 0;
  const decks::HeardStream heard = midi_->Heard();
  if (!heard.playing || heard.ended) return 0;
  song.playing = true;
  song.volume = volume_;
  song.position = std::chrono::microseconds(heard.frame.value * 1'000'000 / kSongRate);
  song.speed = heard.ratio;
  song.grid = midi_->Beats();
  return midi_->Stream();
}

void SongPlayer::ShowMidi(SongView& view) {
  karaoke::Karaoke& device = midi_->Device();
  if (state_ == State::Playing && !device.IsPlaying()) state_ = State::Ended;
  view.state = state_;
  view.filename = midi_->Row().filename;
  view.words = midi_->Words();
  if (view.words->note) view.note = context_.say(*view.words->note);
  view.position = std::chrono::milliseconds(device.Position());
  view.length = std::chrono::milliseconds(device.MusicTimeLength());
  view.speed = state_ == State::Playing ? device.Velocity() : 0;
  view.has_melody = midi_->HasMelody();
}

void SongPlayer::ShowCompanion(const DeckView& deck, SongView& view) const {
  view.filename = companion_row_.filename;
  view.words = companion_words_;
  switch (deck.loaded_state) {
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
