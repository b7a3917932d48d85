// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lists/BreakMusic.h"

#include <algorithm>
#include <cmath>

#include "app/WorkstationView.h"

namespace app {
namespace {

using State = DeckView::State;
using namespace std::chrono_literals;

constexpr std::size_t kBreakList = 2;  ///< playlist 3
constexpr auto kLongestLoad = 20s;     ///< that is waited for a file
constexpr auto kUntilItShows = 100ms;  ///< that the deck does what it was told

const DeckView& Shown(const WorkstationView& view, int deck) {
  return view.decks[static_cast<std::size_t>(deck - 1)];
}

bool Sounds(const WorkstationView& view) {
  return Shown(view, 1).state == State::Playing || Shown(view, 2).state == State::Playing;
}

}  // namespace

void BreakMusic::Enter(Phase phase) {
  phase_ = phase;
  since_ = clock_.Now();
  from_ = share_;
}

void BreakMusic::Tick(const WorkstationView& view, const ListTables& tables, const Files& played,
                      const MixerHands& mixer, const BreakStage& stage, bool others) {
  if (deck_ != 0 && HandIsOn(view)) LetGo(mixer);
  if (stage.song || !wishes_.on) {
    due_ = stage.song && wishes_.on && stage.singers;
    return FallSilent(view, mixer);
  }
  if (!stage.singers) due_ = false;
  if (phase_ == Phase::Falling) Rise(mixer);  // the song did not come
  TickSilence(view, tables, played, mixer, others);
  Move(view, mixer);
}

BreakInHand BreakMusic::InHand() const {
  return {deck_, file_, phase_ >= Phase::Rising,
          due_ || phase_ == Phase::Waiting || phase_ == Phase::Loading};
}

void BreakMusic::GoOn(const BreakInHand& music, const WorkstationView& view) {
  if (phase_ != Phase::Idle || deck_ != 0) return;
  due_ = due_ || music.due;
  if (music.deck < 1 || music.deck > 2 || music.file.empty()) return;
  const DeckView& deck = Shown(view, music.deck);
  if (deck.filename != music.file) return;
  deck_ = music.deck;
  file_ = music.file;
  done_.insert(file_);
  if (!music.plays || deck.state != State::Playing) return;
  share_ = 1;
  Enter(Phase::Playing);
}

/// A hand has paused or stopped what plays, or brought another track there; or it plays on the other deck.
bool BreakMusic::HandIsOn(const WorkstationView& view) const {
  if (phase_ < Phase::Loading || clock_.Now() - since_ < kUntilItShows) return false;
  if (Shown(view, 3 - deck_).state == State::Playing) return true;
  const DeckView& deck = Shown(view, deck_);
  if (phase_ == Phase::Loading) {
    const bool empty = deck.state == State::Empty || deck.state == State::Ended;
    return deck.filename != file_ && !empty;
  }
  return deck.filename != file_ || (deck.state != State::Playing && deck.state != State::Ended);
}

/// The deck is the hands' again, at the level of its fader.
void BreakMusic::LetGo(const MixerHands& mixer) {
  decks_.SetVolume(deck_, mixer.VolumeOf(deck_));
  deck_ = 0;
  file_.clear();
  share_ = 0;
  Enter(Phase::Idle);
}

void BreakMusic::TickSilence(const WorkstationView& view, const ListTables& tables, const Files& played,
                             const MixerHands& mixer, bool others) {
  switch (phase_) {
    case Phase::Idle:
      if (!due_) return;
      due_ = false;
      return Enter(Phase::Waiting);
    case Phase::Waiting:
      if (Sounds(view) || others) return Enter(Phase::Idle);
      if (clock_.Now() - since_ >= wishes_.pause) Begin(view, tables, played, mixer);
      return;
    case Phase::Loading:
      return Await(Shown(view, deck_), tables, played, mixer);
    case Phase::Rising:
    case Phase::Playing:
    case Phase::Falling:
      if (Shown(view, deck_).state != State::Ended || others) return;
      done_.insert(file_);
      return LoadNext(tables, played);
  }
}

/// Its own deck, where it still stands as it was left; else one that holds nothing of the hands'.
int BreakMusic::FreeDeck(const WorkstationView& view) const {
  const auto ours = [&](int deck) { return deck == deck_ && Shown(view, deck).filename == file_; };
  for (const int deck : {1, 2}) {
    if (ours(deck) && Shown(view, deck).state == State::Paused) return deck;
  }
  for (const int deck : {1, 2}) {
    const State state = Shown(view, deck).state;
    if (state == State::Empty || state == State::Ended || (ours(deck) && state == State::Stopped))
      return deck;
  }
  return 0;
}

void BreakMusic::Begin(const WorkstationView& view, const ListTables& tables, const Files& played,
                       const MixerHands& mixer) {
  const int deck = FreeDeck(view);
  if (deck == 0) return Enter(Phase::Idle);
  const bool goes_on = deck == deck_ && !file_.empty() && Shown(view, deck).state == State::Paused;
  deck_ = deck;
  share_ = 0;
  if (!goes_on) return LoadNext(tables, played);
  Rise(mixer);
}

void BreakMusic::LoadNext(const ListTables& tables, const Files& played) {
  share_ = 0;
  const auto& list = tables.playlists[kBreakList];
  if (list == nullptr) return Enter(Phase::Idle);
  int row = NextRow(*list, played, done_);
  if (row == 0) {  // a night is longer than a list
    done_ = done_.size() < 2 ? Files() : Files{file_};
    row = NextRow(*list, {}, done_);
  }
  if (row == 0) return Enter(Phase::Idle);
  file_ = list->Cell(row, catalogue::track::kFilename);
  Enter(Phase::Loading);
  decks_.Load(deck_, *list, row);
}

void BreakMusic::Await(const DeckView& deck, const ListTables& tables, const Files& played,
                       const MixerHands& mixer) {
  const auto waited = clock_.Now() - since_;
  if (waited < kUntilItShows) return;
  const bool there = deck.filename == file_;
  if (there && deck.state == State::Stopped) {
    done_.insert(file_);
    if (deck.has_mix_points && deck.start_mix_point > 0us && deck.start_mix_point + 1s < deck.length)
      decks_.Seek(deck_, deck.start_mix_point);
    return Rise(mixer);
  }
  const bool comes = there && deck.state == State::Loading && waited < kLongestLoad;
  if (comes) return;
  const bool failed = !there || deck.state == State::Empty || deck.state == State::Loading;
  if (!failed) return LetGo(mixer);  // a hand was quicker
  done_.insert(file_);
  const auto& list = tables.playlists[kBreakList];
  if (++misses_ > (list == nullptr ? 0 : list->Rows())) return Enter(Phase::Idle);
  LoadNext(tables, played);
}

/// From silence, or from where it was falling to.
void BreakMusic::Rise(const MixerHands& mixer) {
  misses_ = 0;
  if (phase_ != Phase::Falling) {
    lifted_ = mixer.VolumeOf(3 - deck_) > mixer.VolumeOf(deck_);
    crossfader_ = mixer.crossfader;
    decks_.SetVolume(deck_, 0);
    decks_.Play(deck_);
  }
  Enter(Phase::Rising);
}

void BreakMusic::FallSilent(const WorkstationView& view, const MixerHands& mixer) {
  if (phase_ == Phase::Rising || phase_ == Phase::Playing) Enter(Phase::Falling);
  if (phase_ != Phase::Falling) return Enter(Phase::Idle);
  Move(view, mixer);
  if (share_ > 0) return;
  decks_.Pause(deck_);
  decks_.SetVolume(deck_, mixer.VolumeOf(deck_));
  Enter(Phase::Idle);
}

/// The level of its fader, where the crossfader stands at the other deck's end nobody would hear it; a hand
/// that moves it wants what it does.
int BreakMusic::Full(const MixerHands& mixer) {
  lifted_ = lifted_ && mixer.crossfader == crossfader_;
  return lifted_ ? mixer.faders[deck_ == 1 ? 0 : 1] : mixer.VolumeOf(deck_);
}

void BreakMusic::Move(const WorkstationView& view, const MixerHands& mixer) {
  if (phase_ < Phase::Rising) return;
  const double full = Full(mixer);
  if (phase_ != Phase::Playing) {
    const bool rises = phase_ == Phase::Rising;
    const auto share = [&](support::Duration ahead) {
      const std::chrono::duration<double> passed = clock_.Now() - since_ + ahead;
      const std::chrono::duration<double> whole = rises ? kRise : kFall;
      return std::clamp(from_ + (rises ? passed / whole : -passed / whole), 0.0, 1.0);
    };
    share_ = share({});
    if (share_ > 0 && share_ < 1) return decks_.Glide(deck_, full * share(kGlideAhead), kGlideAhead);
    if (rises && share_ >= 1) Enter(Phase::Playing);
    return decks_.SetVolume(deck_, static_cast<int>(std::lround(full * share_)));
  }
  const int level = static_cast<int>(std::lround(full));
  if (Shown(view, deck_).volume != level) decks_.SetVolume(deck_, level);
}

}  // namespace app
