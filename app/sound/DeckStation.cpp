// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/DeckStation.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace app {
namespace {

using State = DeckView::State;

constexpr float kSilence = -90;

std::chrono::microseconds TimeOf(support::SourceFrame frame, int sample_rate) {
  if (sample_rate <= 0) return {};
  const std::int64_t seconds = frame.value / sample_rate;
  const std::int64_t rest = frame.value % sample_rate;
  return std::chrono::seconds(seconds) + std::chrono::microseconds(rest * 1'000'000 / sample_rate);
}

/// The same file while it is being opened again.
decks::HeardStream StandingAtTheStart(decks::HeardStream heard) {
  heard.playing = heard.ended = false;
  heard.frame = {};
  heard.left_peak = heard.right_peak = 0;
  return heard;
}

std::chrono::microseconds Microseconds(double seconds) {
  return std::chrono::microseconds(std::llround(seconds * 1e6));
}

support::BytePosition BytesAt(std::chrono::microseconds time, const decks::HeardStream& heard) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
  const std::int64_t frames =
      seconds.count() * heard.sample_rate + (time - seconds).count() * heard.sample_rate / 1'000'000;
  return {frames * heard.channels * 2};
}

}  // namespace

DeckStation::DeckStation(int number, decks::AudioEngine& engine, decks::SoundControl& sound,
                         const decks::MasterControls& controls, const DeckTools& tools,
                         std::shared_ptr<Mailbox> box)
    : engine_(engine),
      sound_(sound),
      tools_(tools),
      box_(std::move(box)),
      player_(engine, controls),
      tempo_(engine, player_),
      tone_(sound, tools.desk, player_),
      effects_(tools.effects, player_),
      cues_(*this, sound, {tools.analyses, tools.loops, tools.tell}) {
  player_.Channel(static_cast<std::int16_t>(number));
}

void DeckStation::Load(Track track) {
  if (!track.beside) ForgetReopening();
  play_when_ready_ = false;
  message_.clear();
  coming_ = std::move(track);
  Prepare(kLoad, coming_->filename);
}

bool DeckStation::CancelLoad() {
  if (!coming_) return false;
  coming_.reset();
  play_when_ready_ = false;
  Forget(kLoad);
  return true;
}

void DeckStation::BeginNextWith(const decks::TempoSliders& sliders) {
  if (coming_) coming_->tempo = sliders;
}

void DeckStation::Play() {
  message_.clear();
  if (state_ == State::Ended && !coming_) Reopen({0});
  if (coming_ || reopen_at_) {
    play_when_ready_ = true;
    return;
  }
  if (state_ == State::Paused) return Resume();
  if (state_ != State::Stopped || player_.STRM() == 0) return;
  starting_ = cancelled_ = listening_ = false;
  player_.Play();
  tempo_.Apply();  // to the head-phones' stream, which may be a new one
  state_ = State::Playing;
}

bool DeckStation::StartWith(const DeckStation& other, std::chrono::microseconds place) {
  constexpr double kDeviceRate = 44100;
  if (state_ != State::Stopped || player_.STRM() == 0 || reopen_at_ || coming_) return false;
  const decks::HeardStream led = sound_.Heard(other.player_.STRM());
  if (!led.playing || led.waiting || led.sample_rate <= 0 || led.ratio <= 0) return false;
  const std::chrono::duration<double> rest = place - TimeOf(led.frame, led.sample_rate);
  // What is mixed now on this deck's own device is heard that much later, whatever the other one's does.
  const double seconds = rest.count() / led.ratio - sound_.Heard(player_.STRM()).lag;
  const support::EngineFrame next = sound_.NextFrame(player_.STRM());
  const support::EngineFrame at{next.value + std::llround(std::max(0.0, seconds) * kDeviceRate)};
  starting_ = sound_.Schedule({decks::ScheduledCommand::Kind::Start, player_.STRM(), at});
  return starting_;
}

void DeckStation::CancelStart() {
  if (!std::exchange(starting_, false) || player_.STRM() == 0) return;
  sound_.CancelScheduled(player_.STRM());
  cancelled_ = true;
}

void DeckStation::Pause() {
  play_when_ready_ = false;
  if (state_ != State::Playing) return;
  player_.PausePlay();
  state_ = State::Paused;
}

void DeckStation::Resume() {
  if (state_ != State::Paused) return;
  listening_ = false;
  player_.ResumePlay();
  state_ = State::Playing;
}

void DeckStation::Stop() {
  play_when_ready_ = false;
  starting_ = false;
  if (state_ == State::Empty || player_.STRM() == 0) return;
  message_.clear();
  listening_ = false;
  cues_.Stopped();
  player_.StopPlay();
  state_ = State::Stopped;
  if (!coming_) Reopen({0});
}

void DeckStation::Reopen(support::BytePosition at) {
  state_ = State::Stopped;
  reopen_at_ = at;
  Forget(kMoveMain);
  Forget(kMovePrelisten);
  Prepare(kReopen, track_.filename);
}

void DeckStation::Seek(std::chrono::microseconds position) {
  if (player_.STRM() == 0) return;
  const decks::HeardStream heard = sound_.Heard(player_.STRM());
  const support::BytePosition bytes = BytesAt(std::max(position, std::chrono::microseconds(0)), heard);
  if (state_ == State::Ended || reopen_at_) return Reopen(bytes);
  player_.StreamTime(bytes);
}

void DeckStation::SetGain(support::Decibels gain) {
  tone_.SetGain(gain);
}

void DeckStation::RouteMain(OutputView output) {
  if (player_.device() == output.device && player_.Speaker() == output.speaker) return;
  player_.device(static_cast<std::int16_t>(output.device));
  player_.Speaker(static_cast<std::int16_t>(output.speaker));
  if (player_.STRM() != 0) Prepare(kMoveMain, track_.filename);
}

void DeckStation::RoutePrelisten(OutputView output) {
  if (player_.PreDevice() == output.device && player_.PreSpeaker() == output.speaker) return;
  player_.PreDevice(static_cast<std::int16_t>(output.device));
  player_.PreSpeaker(static_cast<std::int16_t>(output.speaker));
  if (player_.STRM() != 0) Prepare(kMovePrelisten, track_.filename);
}

void DeckStation::Release() {
  coming_.reset();
  for (std::uint64_t& number : newest_) ++number;
  Clear();
}

void DeckStation::Tick(DeckView& view) {
  view = DeckView{};
  ShowHeard(view);
  const Track& shown = coming_ ? *coming_ : track_;
  view.state = coming_ ? State::Loading : state_;
  view.filename = shown.filename;
  view.loaded = state_ == State::Empty ? "" : track_.filename;
  view.loaded_state = state_;
  view.artist = shown.artist;
  view.title = shown.title;
  view.message = message_;
  view.volume = player_.volume();
  NoticeTheEndOfListening();
  view.pre_volume = player_.PreVolume();
  view.listening = listening_;
  ShowAnalysis(view);
  tempo_.Show(view);
  view.speed = tempo_.Speed();
  if (coming_) view.bpm = coming_->bpm;
  view.equaliser = gains_;
  tone_.Show(view);
  effects_.Follow(view.playing_bpm);
  effects_.Show(view);
  cues_.Show(view);
}

void DeckStation::ShowHeard(DeckView& view) {
  view.cut_short = false;
  if (state_ == State::Empty) return;
  if (player_.STRM() != 0 && !reopen_at_) {
    heard_ = sound_.Heard(player_.STRM());
  } else {
    heard_ = StandingAtTheStart(heard_);
  }
  const decks::HeardStream& heard = heard_;
  if (cancelled_ && heard.playing && state_ == State::Stopped) {
    engine_.BASS_ChannelPause(player_.STRM());
    cancelled_ = false;
  }
  tempo_.Heard(heard);
  NoticeTheEnd();
  view.position = TimeOf(heard.frame, heard.sample_rate);
  view.length = TimeOf(heard.length, heard.sample_rate);
  view.length_exact = heard.length_exact;
  view.cut_short = heard.cut_short;
  view.waiting = heard.waiting;
  view.sample_rate = heard.sample_rate;
  const float gain = tone_.Gain().value;
  view.left_db = heard.left_peak > 0 ? std::max(kSilence, player_.LeftdB() + gain) : kSilence;
  view.right_db = heard.right_peak > 0 ? std::max(kSilence, player_.RightdB() + gain) : kSilence;
}

void DeckStation::NoticeTheEnd() {
  if (state_ == State::Playing && heard_.ended) {
    state_ = State::Ended;
    cues_.Stopped();
  }
  // A seek just before the end is heard after it.
  if (state_ == State::Ended && heard_.playing && !heard_.ended) state_ = State::Playing;
  player_.IsPlaying(state_ == State::Playing || state_ == State::Paused);
}

void DeckStation::Prepare(Wish wish, const std::string& filename) {
  const std::uint64_t number = ++newest_[wish];
  sound_.Prepare(filename, [this, box = box_, wish, number](support::Result<void> result) {
    box->Post([this, wish, number, result = std::move(result)] {
      if (number == newest_[wish]) Prepared(wish, result);
    });
  });
}

void DeckStation::Prepared(Wish wish, const support::Result<void>& result) {
  if (!result && (wish == kMoveMain || wish == kMovePrelisten)) {
    message_ = tools_.say(result.Failure());  // what sounds goes on where it is
    return;
  }
  switch (wish) {
    case kLoad:
      return Loaded(*std::exchange(coming_, std::nullopt), result);
    case kReopen:
      return OpenTrack(track_, result);
    case kMoveMain:
      return MoveMain();
    case kMovePrelisten:
      return MovePrelisten();
    case kWishes:
      break;
  }
}

void DeckStation::Loaded(Track track, const support::Result<void>& result) {
  if (!result && track.beside && (player_.STRM() != 0 || reopen_at_)) {
    play_when_ready_ = false;
    message_ = tools_.say(result.Failure());
    return;
  }
  ForgetReopening();
  if (result) {
    tempo_.Begin(track.bpm);
    tone_.Begin();
    cues_.Begin();
  }
  OpenTrack(std::move(track), result);
}

void DeckStation::ForgetReopening() {
  reopen_at_.reset();
  Forget(kReopen);
}

void DeckStation::OpenTrack(Track track, const support::Result<void>& result) {
  const support::BytePosition start =
      std::exchange(reopen_at_, std::nullopt).value_or(support::BytePosition{0});
  if (!result) return Reject(track, tools_.say(result.Failure()));
  for (const Wish wish : {kReopen, kMoveMain, kMovePrelisten}) Forget(wish);
  player_.Filename(track.filename);
  starting_ = cancelled_ = listening_ = false;
  player_.OpenFile();
  if (player_.PreVolume() != 0) player_.PreVolume(0);
  track_ = std::move(track);
  state_ = State::Stopped;
  if (player_.STRM() == 0) return Reject(track_, tools_.say(sound_.LastError()));
  tools_.equaliser.SetUp(player_.STRM());
  tempo_.Heard(sound_.Heard(player_.STRM()));
  if (const auto tempo = std::exchange(track_.tempo, std::nullopt)) tempo_.Set(*tempo);
  gains_ = {};
  ApplySliders();
  Analyse();
  if (start.value != 0) player_.StreamTime(start);
  const auto place = std::exchange(track_.stands_at, {});
  if (place > place.zero()) player_.StreamTime(BytesAt(place, sound_.Heard(player_.STRM())));
  message_.clear();
  if (std::exchange(play_when_ready_, false)) Play();
}

void DeckStation::Reject(const Track& track, const std::string& sentence) {
  play_when_ready_ = false;
  if (state_ != State::Playing) {
    const std::string filename = track.filename;
    Clear();
    track_.filename = filename;
  }
  message_ = sentence;
}

void DeckStation::Clear() {
  if (player_.STRM() != 0 || player_.PreSTRM() != 0) player_.StopPlay();
  state_ = State::Empty;
  effects_.Silence();
  cues_.Begin();
  tempo_.Begin(0);
  tone_.Begin();
  listening_ = false;
  tools_.analyses.Drop(player_.Channel());
  track_ = {};
  message_.clear();
  reopen_at_.reset();
  play_when_ready_ = false;
}

void DeckStation::MoveMain() {
  const support::BytePosition heard = player_.StreamTime();
  const decks::Equaliser::Gains gains = tools_.equaliser.GainsOf(player_.STRM());
  player_.OpenMain();
  if (player_.STRM() == 0) {
    state_ = State::Stopped;
    return Reject(track_, tools_.say(sound_.LastError()));
  }
  tools_.equaliser.SetUp(player_.STRM());
  tools_.equaliser.SetGains(player_.STRM(), gains);
  ApplySliders();
  engine_.BASS_ChannelSetPosition(player_.STRM(), heard);
  if (state_ == State::Playing) player_.PlayMain();
}

void DeckStation::ApplySliders() {
  player_.volume(player_.volume());
  tone_.Apply();
  effects_.Apply();
  tempo_.Apply();
  cues_.Apply();
}

void DeckStation::Analyse() {
  if (player_.Filename().empty() || state_ == State::Empty) return;
  tools_.analyses.Hold(player_.Channel(), player_.ScanRequest());
}

void DeckStation::SetMixPoint(MixPoint which, std::optional<std::chrono::microseconds> mark) {
  if (state_ == State::Empty) return;
  track_.marks.Of(which) = mark;
  Say(which, mark ? catalogue::PointBy::Hand : catalogue::PointBy::Scan, mark);
}

void DeckStation::Say(MixPoint which, catalogue::PointBy by, std::optional<std::chrono::microseconds> place) {
  tools_.analyses.ChangeMarks(player_.Channel(), [which, by, place](catalogue::FileMarks& marks) {
    (which == MixPoint::Start ? marks.start : marks.end) = by;
    (which == MixPoint::Start ? marks.start_at : marks.end_at) = place;
  });
}

void DeckStation::ForgetGrid() {
  tempo_.ForgetCorrections();
  tools_.analyses.ChangeMarks(player_.Channel(),
                              [](catalogue::FileMarks& marks) { marks.grid.reset(), marks.bar.reset(); });
}

void DeckStation::BarHere() {
  const auto beat = tempo_.NearestBeat();
  if (state_ == State::Empty || !beat) return;
  tools_.analyses.ChangeMarks(player_.Channel(), [beat](catalogue::FileMarks& marks) { marks.bar = beat; });
}

void DeckStation::KeepCorrections() {
  if (auto grid = tempo_.TakeCorrection()) {
    tools_.analyses.ChangeMarks(player_.Channel(),
                                [&grid](catalogue::FileMarks& marks) { marks.grid = std::move(grid); });
  }
  tempo_.Kept(tools_.analyses.MarksOf(player_.Channel()).grid);
}

void DeckStation::FollowEqualiser(int slider, int decibels) {
  const int band = slider - 1;
  if (!player_.IsPlaying() || band < 0 || band >= decks::kEqBands) return;
  gains_[static_cast<std::size_t>(band)] = static_cast<float>(decibels);
}

void DeckStation::SetEqualiser(const decks::Equaliser::Gains& gains) {
  if (player_.STRM() == 0) return;
  tools_.equaliser.SetGains(player_.STRM(), gains);
  gains_ = gains;
}

void DeckStation::ShowAnalysis(DeckView& view) {
  view.scan_busy = tools_.analyses.Busy(player_.Channel());
  if (state_ == State::Empty) return;
  KeepCorrections();
  if (const auto analysis = tools_.analyses.Of(player_.Channel())) {
    view.wave = analysis->wave;
    view.loudness = analysis->loudness;
    view.form = analysis->form;
    if (analysis->grid != nullptr && !analysis->grid->Empty()) tempo_.Found(analysis->grid);
    if (analysis->mix_points) ShowFound(analysis->mix_points->points, view);
  }
  view.bar = catalogue::BarOf(view.form.get(), tools_.analyses.MarksOf(player_.Channel()));
  ShowMixPoint(MixPoint::Start, view);
  ShowMixPoint(MixPoint::End, view);
}

void DeckStation::ShowFound(const music::MixPoints& points, DeckView& view) {
  player_.StartMixPoint(points.start);
  player_.EndMixPoint(points.end);
  view.found = {Microseconds(points.start_seconds), Microseconds(points.end_seconds)};
}

void DeckStation::ShowMixPoint(MixPoint which, DeckView& view) {
  constexpr auto kSame = std::chrono::milliseconds(2);  // the catalogue remembers milliseconds
  auto& mark = track_.marks.Of(which);
  const auto& found = view.found.Of(which);
  const bool start = which == MixPoint::Start;
  auto& shown = start ? view.start_mix_point : view.end_mix_point;
  const catalogue::FileMarks marks = tools_.analyses.MarksOf(player_.Channel());
  const catalogue::PointBy by = start ? marks.start : marks.end;
  const auto& by_hand = start ? marks.start_at : marks.end_at;
  if (by == catalogue::PointBy::Hand && by_hand) mark = by_hand;  // whatever the row has lost
  if (by == catalogue::PointBy::Hand && mark && !by_hand) Say(which, by, mark);
  // What the row remembers may have been found by an older threshold.
  if (mark && by == catalogue::PointBy::Scan) mark.reset();
  if (mark && found && std::chrono::abs(*mark - *found) < kSame) mark.reset();
  if (!mark && found && by == catalogue::PointBy::Unknown) Say(which, catalogue::PointBy::Scan);
  shown = mark.value_or(found.value_or(std::chrono::microseconds(0)));
  view.moved.Of(which) = mark.has_value();
  view.has_mix_points = (start || view.has_mix_points) && (mark || found);
  if (!mark) return;
  const support::BytePosition bytes = BytesAt(*mark, heard_);
  if (start) {
    player_.StartMixPoint(bytes);
  } else {
    player_.EndMixPoint(bytes);
  }
}

void DeckStation::MovePrelisten() {
  if (player_.PreDevice() == 0) {
    listening_ = false;
    return player_.ClosePrelisten();
  }
  const std::int16_t level = player_.PreVolume();
  player_.OpenPrelisten();
  if (state_ == State::Playing || listening_) player_.PlayPrelisten();
  tempo_.Apply();
  player_.PreVolume(level);
}

}  // namespace app
