// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lists/AutoMix.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "app/WorkstationView.h"

namespace app {
namespace {

using State = DeckView::State;
using std::chrono::microseconds;
using namespace std::chrono_literals;

constexpr auto kAhead = 60s;             ///< the next track is loaded so long before it is due
constexpr auto kArming = 800ms;          ///< its start is scheduled so long before, for late outputs
constexpr auto kMatching = 1200ms;       ///< and so long where that may become half a beat earlier
constexpr auto kPatience = 20s;          ///< with a file that does not come
constexpr auto kLookingAgain = 1s;       ///< for a track, where the lists held none
constexpr auto kOnItsWay = 100ms;        ///< to the deck
constexpr auto kGrace = 250ms;           ///< with a start that was scheduled
constexpr auto kLatest = 1s;             ///< that a leader without a fade sounds on beside the next one
constexpr microseconds kSwift{300'000};  ///< of the crossfader where there is nothing to fade

const DeckView& Of(const WorkstationView& view, int deck) {
  return view.decks[static_cast<std::size_t>(deck - 1)];
}

int Other(int deck) {
  return 3 - deck;
}

bool Plays(const DeckView& deck) {
  return deck.state == State::Playing;
}

}  // namespace

int MixerHands::VolumeOf(int deck) const {
  return static_cast<int>(std::lround(LevelAt(deck, crossfader)));
}

double MixerHands::LevelAt(int deck, double place) const {
  const auto gains = decks::GainsAt(curve, place / 100.0);
  return faders[deck == 1 ? 0 : 1] * (deck == 1 ? gains.first : gains.second);
}

AutoMix::AutoMix(MixingDecks& decks, const support::Clock& clock, PassedOver passed_over)
    : decks_(decks), clock_(clock), passed_over_told_(std::move(passed_over)) {}

void AutoMix::Choose(const MixWishes& wishes) {
  const bool was_on = std::exchange(wishes_, wishes).on;
  if (was_on && !wishes.on && phase_ != Phase::Mixing) Forget();  // what sounds already is faded to its end
  if (!was_on) done_with_.clear();
  opening_ = opening_ && wishes.on;
}

void AutoMix::Follow(const MixerHands& hands, MovedByHand moved) {
  // What the window knows of the crossfader may be older than what was made of it here.
  const int crossfader = hands_.crossfader;
  hands_ = hands;
  if (moved == MovedByHand::Crossfader) {
    hand_has_crossfader_ = true;
  } else {
    hands_.crossfader = crossfader;
  }
  SendVolumes();
}

void AutoMix::Tick(const WorkstationView& view, const ListTables& tables, const Files& played) {
  for (const int deck : {1, 2}) {
    const DeckView& shown = Of(view, deck);
    if (Plays(shown) && Spent(deck) != shown.filename) Spent(deck) = shown.filename;
  }
  if (phase_ == Phase::Mixing) return TickMixing(view);
  if (!wishes_.on) return;
  if (phase_ == Phase::Armed) return TickArmed(view);
  TickWaiting(view, tables, played);
}

/// The one deck of the two that plays. One that has ended leads on until the next one is ready.
int AutoMix::LeaderIn(const WorkstationView& view) const {
  const bool first = Plays(Of(view, 1)), second = Plays(Of(view, 2));
  if (first != second) return first ? 1 : 2;
  if (first || leader_ == 0 || next_ == 0) return 0;
  return Of(view, leader_).state == State::Ended ? leader_ : 0;
}

void AutoMix::TickWaiting(const WorkstationView& view, const ListTables& tables, const Files& played) {
  const int leader = LeaderIn(view);
  if (leader == 0 && opening_) return TickOpening(view, tables, played);
  opening_ = false;
  if (leader == 0 || (next_ != 0 && next_ == leader)) return Forget();
  const DeckView& led = Of(view, leader);
  if (leader_ != leader) done_with_.insert(led.filename);
  leader_ = leader;
  plan_ = PlanMix(led, wishes_);
  const microseconds rest((plan_.at - led.position).count());
  const double left = static_cast<double>(rest.count()) / std::max(led.speed, 0.01);
  const bool ended = led.state == State::Ended;
  if (led.length.count() <= 0 || (!ended && left > std::chrono::duration<double, std::micro>(kAhead).count()))
    return;
  const int next = Other(leader);
  if (!MakeReady(next, Of(view, next), tables, played)) return;
  next_ = next;
  Place(next, Of(view, next));
  if (ended) {
    decks_.Play(next);
    hand_has_crossfader_ = false;
    plan_.fade = {};
    return BeginMixing(led);
  }
  due_ = microseconds(std::llround(std::max(0.0, left)));
  const bool matches = wishes_.match_tempo && plan_.fade.count() > 0;
  if (due_ <= (matches ? kMatching : kArming) && !IsHeldBack(led)) Arm(led);
}

/// Nothing plays: what a hand has made ready begins, else the first track of the lists.
void AutoMix::TickOpening(const WorkstationView& view, const ListTables& tables, const Files& played) {
  const auto paused = [&view](int deck) { return Of(view, deck).state == State::Paused; };
  const auto ready = [&](int deck) {
    return Of(view, deck).state == State::Stopped && Of(view, deck).filename != Spent(deck);
  };
  const int deck = next_ != 0 ? next_ : !ready(1) && ready(2) ? 2 : 1;
  opening_ = !paused(1) && !paused(2);
  if (!opening_) return Forget();
  if (!MakeReady(deck, Of(view, deck), tables, played)) {
    opening_ = !at_the_end_;
    return;
  }
  Place(deck, Of(view, deck));
  MoveCrossfader(CrossfaderAt(0, deck, 1));
  decks_.Play(deck);
  opening_ = false;
  Forget();
}

bool AutoMix::MakeReady(int deck, const DeckView& view, const ListTables& tables, const Files& played) {
  switch (view.state) {
    case State::Playing:
    case State::Paused:
      return false;  // a hand's
    case State::Loading:
      if (loading_.empty() || view.filename != loading_ || clock_.Now() - since_ < kPatience) return false;
      PassOver(view);
      LoadNext(deck, tables, played);
      return false;
    case State::Stopped: {
      if (!loading_.empty() && view.filename != loading_ && clock_.Now() - since_ < kOnItsWay) return false;
      const bool ours = !loaded_.empty() && view.filename == loaded_;
      const bool came = !loading_.empty() && view.filename == loading_;
      if (came) loaded_ = std::exchange(loading_, {});
      const bool by_hand = view.filename != Spent(deck);
      if (ours || came || by_hand) return true;
      break;
    }
    case State::Empty:
    case State::Ended:
      if (!loading_.empty() && clock_.Now() - since_ < kOnItsWay) return false;
      if (!loading_.empty() && view.filename == loading_) PassOver(view);
      break;
  }
  // Lists that hold nothing more are not gone through at every tick.
  if (!at_the_end_ || clock_.Now() - since_ > kLookingAgain) LoadNext(deck, tables, played);
  return false;
}

void AutoMix::LoadNext(int deck, const ListTables& tables, const Files& played) {
  loading_.clear();
  loaded_.clear();
  placed_ = false;
  since_ = clock_.Now();
  const RowToLoad next = NextOf(deck, tables, played);
  at_the_end_ = next.row == 0;
  next_ = next.row == 0 ? 0 : deck;
  if (next.row == 0) return;
  loading_ = next.playlist->Cell(next.row, catalogue::track::kFilename);
  decks_.Load(deck, *next.playlist, next.row);
}

AutoMix::RowToLoad AutoMix::NextOf(int deck, const ListTables& tables, const Files& played) const {
  for (const int list : {deck, Other(deck)}) {
    const auto& playlist = tables.playlists[static_cast<std::size_t>(list - 1)];
    const int row = playlist == nullptr ? 0 : NextRow(*playlist, played, done_with_);
    if (row != 0) return {playlist.get(), row};
  }
  return {};
}

ComingTrack AutoMix::Coming(const WorkstationView& view, const ListTables& tables,
                            const Files& played) const {
  const int deck = phase_ != Phase::Waiting ? next_ : leader_ == 0 ? 0 : Other(leader_);
  if (!wishes_.on || deck == 0) return {};
  const DeckView& shown = Of(view, deck);
  const bool hand = phase_ == Phase::Waiting && (Plays(shown) || shown.state == State::Paused);
  if (hand) return {};
  const bool stands = shown.state != State::Empty && shown.state != State::Ended;
  const bool ours = phase_ != Phase::Waiting || (!loading_.empty() && shown.filename == loading_) ||
                    (!loaded_.empty() && shown.filename == loaded_);
  if (stands && (ours || shown.filename != spent_[deck == 1 ? 0 : 1]))
    return {shown.filename, shown.artist, shown.title, {}};
  const RowToLoad next = NextOf(deck, tables, played);
  if (next.row == 0) return {};
  const auto cell = [&next](int column) { return std::string(next.playlist->Cell(next.row, column)); };
  namespace column = catalogue::track;
  return {cell(column::kFilename), cell(column::kArtist), cell(column::kTitle), {}};
}

std::optional<microseconds> AutoMix::ComingIn(const WorkstationView& view) const {
  if (!wishes_.on || leader_ == 0) return std::nullopt;
  const DeckView& led = Of(view, leader_);
  if (phase_ == Phase::Mixing || led.state == State::Ended) return microseconds(0);
  if (!Plays(led) || led.length.count() <= 0) return std::nullopt;
  return std::max(Lasting(plan_.at - led.position, led.speed), microseconds(0));
}

void AutoMix::PassOver(const DeckView& view) {
  done_with_.insert(loading_);
  passed_over_told_(view.title.empty() ? loading_ : view.title);
  loading_.clear();
}

/// Once, when the point is known; who moved the deck himself wanted it elsewhere.
void AutoMix::Place(int deck, const DeckView& view) {
  if (placed_ || !wishes_.at_mix_points || !view.has_mix_points) return;
  placed_ = true;
  const bool at_start = view.position < 50ms;
  const bool heard_after_it =
      view.start_mix_point + 1s < view.length;  // a silent file has its point at its end
  if (at_start && heard_after_it && view.start_mix_point > microseconds(0))
    decks_.Seek(deck, view.start_mix_point);
}

void AutoMix::Arm(const DeckView& leader) {
  phase_ = Phase::Armed;
  since_ = clock_.Now();
  hand_has_crossfader_ = false;
  if (wishes_.match_tempo && plan_.fade.count() > 0) MeetBeats(leader);
  // Both at once, because nobody has heard the next one yet: the crossfader stands at the leader's end.
  MoveCrossfader(CrossfaderAt(0, leader_, 1));
  if (plan_.fade.count() == 0) decks_.SetVolume(next_, hands_.faders[next_ == 1 ? 0 : 1]);
  scheduled_ = leader.position < plan_.at && decks_.StartWith(next_, leader_, plan_.at);
}

void AutoMix::MeetBeats(const DeckView& leader) {
  const microseconds wished = plan_.at;
  plan_.at = decks_.MatchTempo(next_, wished, wishes_.most_percent);
  due_ += Lasting(plan_.at - wished, leader.speed);
}

bool AutoMix::IsHeldBack(const DeckView& led) const {
  return Plays(led) && led.cues.looping && led.position < led.cues.loop_end && led.cues.loop_end <= plan_.at;
}

void AutoMix::TickArmed(const WorkstationView& view) {
  const DeckView& led = Of(view, leader_);
  const DeckView& next = Of(view, next_);
  if (IsHeldBack(led)) {
    decks_.CancelStart(next_);
    phase_ = Phase::Waiting;
    return SendVolumes();
  }
  const bool started = decks_.Started(next_);
  const auto waited = clock_.Now() - since_;
  const bool late = waited >= due_ + (scheduled_ ? microseconds(kGrace) : microseconds(0));
  if (started || late) {
    decks_.Play(next_);
    return BeginMixing(led);
  }
  // Paused, stopped, moved to another place or loaded over: the moment is another one, or none.
  const microseconds rest = Lasting(plan_.at - led.position, led.speed);
  const bool moved =
      std::chrono::abs(rest - (due_ - std::chrono::duration_cast<microseconds>(waited))) > 100ms;
  const bool led_goes_on = Plays(led) || led.state == State::Ended;
  if (Plays(next)) return BeginMixing(led);
  if (!led_goes_on || next.state != State::Stopped || (Plays(led) && moved)) {
    decks_.CancelStart(next_);
    phase_ = Phase::Waiting;
    SendVolumes();
  }
}

void AutoMix::BeginMixing(const DeckView& led) {
  phase_ = Phase::Mixing;
  since_ = clock_.Now();
  decks_.SetMixing(leader_, true);
  fade_from_ = hands_.crossfader;
  if (plan_.fade.count() == 0 && !SoundsOn(led) && !hand_has_crossfader_)
    MoveCrossfader(CrossfaderAt(0, next_, 1));
}

/// Without a fade the next one begins at full level, on a slower device that much before the leader has ended
/// in the room.
bool AutoMix::SoundsOn(const DeckView& led) const {
  return plan_.fade.count() == 0 && Plays(led) && led.position < plan_.at && clock_.Now() - since_ < kLatest;
}

void AutoMix::TickMixing(const WorkstationView& view) {
  const DeckView& led = Of(view, leader_);
  const DeckView& next = Of(view, next_);
  const auto passed = clock_.Now() - since_;
  const bool begun = Plays(next) || passed < 500ms;
  const bool gone = !Plays(led) && plan_.fade > kSwift && passed < plan_.fade - kSwift;
  if (gone) {  // the rest of the way, quickly
    fade_from_ = hands_.crossfader;
    since_ = clock_.Now();
    plan_.fade = kSwift;
    return;
  }
  if (!begun) return EndMixing(view);
  if (SoundsOn(led)) return;
  if (!hand_has_crossfader_) FadeOn(passed);
  if (passed >= plan_.fade) EndMixing(view);
}

void AutoMix::FadeOn(support::Duration passed) {
  if (passed >= plan_.fade) {
    MoveCrossfader(CrossfaderAt(fade_from_, next_, 1));
    return SendVolumes();  // where it stood there already, the decks were on their way only
  }
  const auto share = [this](support::Duration time) {
    return std::chrono::duration<double>(time) / std::chrono::duration<double>(plan_.fade);
  };
  const int place = CrossfaderAt(fade_from_, next_, share(passed));
  if (place != hands_.crossfader) {
    hands_.crossfader = place;
    ++moves_;
  }
  const support::Duration ahead = std::min<support::Duration>(kGlideAhead, plan_.fade - passed);
  const double then = PlaceOfFade(fade_from_, next_, share(passed + ahead));
  for (const int deck : {1, 2}) {
    decks_.Glide(deck, hands_.LevelAt(deck, then), std::chrono::ceil<std::chrono::milliseconds>(ahead));
  }
}

void AutoMix::EndMixing(const WorkstationView& view) {
  const bool arrived = Plays(Of(view, next_));
  decks_.SetMixing(leader_, false);
  const bool both = arrived && Plays(Of(view, leader_));
  if (both && !hand_has_crossfader_) decks_.Stop(leader_);
  // The next one ended or was stopped before the crossfader came: whoever still plays is heard.
  if (!arrived && Plays(Of(view, leader_)) && !hand_has_crossfader_)
    MoveCrossfader(CrossfaderAt(0, leader_, 1));
  Forget();
}

MixInHand AutoMix::InHand() const {
  MixInHand mix;
  mix.spent = spent_;
  mix.leader = leader_;
  mix.next = next_;
  mix.placed = placed_;
  mix.mixing = phase_ == Phase::Mixing;
  mix.plan = plan_;
  mix.fade_from = fade_from_;
  if (mix.mixing) mix.mixed = std::chrono::duration_cast<microseconds>(clock_.Now() - since_);
  mix.hand_has_crossfader = hand_has_crossfader_;
  return mix;
}

void AutoMix::Restore(const MixerHands& hands) {
  hands_ = hands;
  ++moves_;
  SendVolumes();
}

void AutoMix::GoOn(const MixInHand& mix, const WorkstationView& view) {
  spent_ = mix.spent;
  if (mix.next == 0) return;
  if (mix.mixing) return GoOnMixing(mix, view);
  const DeckView& next = Of(view, mix.next);
  if (!wishes_.on || next.state != State::Stopped) return;
  next_ = mix.next;
  loaded_ = next.filename;
  placed_ = mix.placed;
}

/// Both sound: so does the rest of the fade. Else whoever does is heard alone.
void AutoMix::GoOnMixing(const MixInHand& mix, const WorkstationView& view) {
  if (mix.leader == 0) return;
  hand_has_crossfader_ = hand_has_crossfader_ || mix.hand_has_crossfader;
  const bool leader = Plays(Of(view, mix.leader)), next = Plays(Of(view, mix.next));
  if (leader != next && !hand_has_crossfader_)
    MoveCrossfader(CrossfaderAt(0, leader ? mix.leader : mix.next, 1));
  if (!leader || !next) return;
  leader_ = mix.leader;
  next_ = mix.next;
  plan_ = mix.plan;
  fade_from_ = mix.fade_from;
  phase_ = Phase::Mixing;
  since_ = clock_.Now() - mix.mixed;
  decks_.SetMixing(leader_, true);
}

void AutoMix::MoveCrossfader(int place) {
  if (place == hands_.crossfader) return;
  hands_.crossfader = place;
  ++moves_;
  SendVolumes();
}

void AutoMix::SendVolumes() {
  for (const int deck : {1, 2}) decks_.SetVolume(deck, hands_.VolumeOf(deck));
}

void AutoMix::Forget() {
  if (phase_ == Phase::Armed) decks_.CancelStart(next_);
  phase_ = Phase::Waiting;
  leader_ = next_ = 0;
  loading_.clear();
  loaded_.clear();
  placed_ = false;
  at_the_end_ = false;
}

}  // namespace app
