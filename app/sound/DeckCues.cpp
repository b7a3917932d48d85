// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/DeckCues.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "app/sound/DeckStation.h"
#include "app/sound/FileAnalyses.h"
#include "decks/BeatMeasure.h"
#include "decks/ports/DeckLoops.h"

namespace app {
namespace {

using support::Sentence;
using State = DeckView::State;

bool IsSlot(int slot) {
  return slot >= 0 && slot < music::kHotCues;
}

/// Rounded up, so that the frame comes out again when it is cut.
std::chrono::microseconds PlaceOfFrame(std::int64_t frame, int rate) {
  if (rate <= 0) return {};
  return std::chrono::microseconds((frame * 1'000'000 + rate - 1) / rate);
}

}  // namespace

DeckCues::DeckCues(DeckStation& deck, decks::SoundControl& sound, Tools tools)
    : deck_(deck), sound_(sound), tools_(std::move(tools)) {}

bool DeckCues::Loaded() const {
  return deck_.Player().STRM() != 0 && deck_.Standing() != State::Empty;
}

decks::BeatMeasure DeckCues::Measure() const {
  return {deck_.Tempo().Grid(), deck_.Tempo().Bpm()};
}

music::Seconds DeckCues::Here() const {
  const decks::HeardStream now = sound_.Heard(deck_.Player().STRM());
  if (now.sample_rate <= 0) return {};
  return music::Seconds(static_cast<double>(now.frame.value) / now.sample_rate);
}

music::Seconds DeckCues::FromHere() const {
  return quantise_ ? Measure().Snapped(Here()) : Here();
}

int DeckCues::Rate() const {
  return sound_.Heard(deck_.Player().STRM()).sample_rate;
}

std::int64_t DeckCues::FrameOf(music::Seconds place) const {
  return std::llround(place.count() * Rate());
}

bool DeckCues::KnowsBeats() {
  if (!Loaded()) return false;
  if (!Measure().Known()) Tell(Sentence::NoBeatsKnown);
  return Measure().Known();
}

void DeckCues::Tell(Sentence sentence) {
  if (tools_.tell) tools_.tell({sentence});
}

std::shared_ptr<const music::Cues> DeckCues::Kept() const {
  return Loaded() ? tools_.analyses.MarksOf(deck_.Player().Channel()).cues : nullptr;
}

void DeckCues::Change(const std::function<void(music::Cues&)>& change) {
  if (!Loaded()) return;
  tools_.analyses.ChangeMarks(deck_.Player().Channel(), [&change](catalogue::FileMarks& marks) {
    music::Cues cues = marks.cues != nullptr ? *marks.cues : music::Cues{};
    change(cues);
    marks.cues = std::make_shared<const music::Cues>(music::Sound(std::move(cues)));
  });
}

bool DeckCues::Reaches(std::chrono::microseconds place) {
  const decks::HeardStream now = sound_.Heard(deck_.Player().STRM());
  const bool beyond = now.length_exact && place >= PlaceOfFrame(now.length.value, now.sample_rate);
  if (beyond) Tell(Sentence::CueBeyondTrack);
  return !beyond;
}

bool DeckCues::GoTo(std::chrono::microseconds place) {
  if (!Reaches(place)) return false;
  deck_.Seek(place);
  return true;
}

void DeckCues::Hold(std::chrono::microseconds place, int by) {
  held_ = {place, true, by};
  deck_.Play();
}

void DeckCues::Cue(bool down) {
  if (!down) {
    if (!held_ || held_->by != kByCue) return;
    const auto place = std::exchange(held_, std::nullopt)->place;
    deck_.Pause();
    return deck_.Seek(place);
  }
  if (!Loaded()) return;
  const auto kept = Kept();
  const bool marked = kept != nullptr && kept->main.has_value();
  const std::chrono::microseconds main = marked ? *kept->main : std::chrono::microseconds(0);
  const State standing = deck_.Standing();
  if (standing == State::Playing) {
    held_.reset();
    End();
    deck_.Pause();
    GoTo(main);
    return;
  }
  constexpr auto kAtIt = std::chrono::milliseconds(1);
  const auto here = PlaceOfFrame(FrameOf(Here()), Rate());
  if (marked && std::chrono::abs(main - here) < kAtIt) return Hold(main, kByCue);
  // Only who has paused elsewhere means that place; at the track's start or end the cue is gone to.
  if (marked && standing != State::Paused) return static_cast<void>(GoTo(main));
  const auto set = PlaceOfFrame(FrameOf(FromHere()), Rate());
  if (!Reaches(set)) return;
  Change([&set](music::Cues& cues) { cues.main = set; });
  deck_.Seek(set);
}

void DeckCues::Hot(int slot, bool down) {
  if (!IsSlot(slot)) return;
  if (!down) {
    if (!held_ || held_->by != slot) return;
    const auto held = std::exchange(held_, std::nullopt);
    if (!held->stood) return tools_.loops->SlipBack(deck_.Player().STRM());
    End();
    deck_.Pause();
    return deck_.Seek(held->place);
  }
  if (!Loaded()) return;
  const auto kept = Kept();
  const auto at = static_cast<std::size_t>(slot);
  const auto cue = kept != nullptr ? kept->hot[at] : std::nullopt;
  if (!cue) {
    const auto set = PlaceOfFrame(FrameOf(FromHere()), Rate());
    if (!Reaches(set)) return;
    return Change([&](music::Cues& cues) { cues.hot[at] = music::Cue{set, {}, slot, {}}; });
  }
  if (!Reaches(cue->place)) return;
  End();
  deck_.Seek(cue->place);
  if (cue->length > std::chrono::microseconds(0)) {
    const std::int64_t begin = FrameOf(cue->place);
    Put({{begin}, {begin + FrameOf(cue->length)}});
  }
  if (deck_.Standing() != State::Playing) return Hold(cue->place, slot);
  if (slip_ && tools_.loops != nullptr) held_ = {cue->place, false, slot};
}

void DeckCues::Delete(int slot) {
  if (IsSlot(slot)) Change([slot](music::Cues& cues) { cues.hot[static_cast<std::size_t>(slot)].reset(); });
}

void DeckCues::Name(int slot, std::string name) {
  if (!IsSlot(slot)) return;
  Change([slot, &name](music::Cues& cues) {
    if (auto& cue = cues.hot[static_cast<std::size_t>(slot)]) cue->name = std::move(name);
  });
}

void DeckCues::Colour(int slot, int colour) {
  if (!IsSlot(slot)) return;
  Change([slot, colour](music::Cues& cues) {
    if (auto& cue = cues.hot[static_cast<std::size_t>(slot)]) cue->colour = colour;
  });
}

void DeckCues::SaveLoop(int slot) {
  if (!IsSlot(slot) || !loop_ || !Loaded()) return;
  const auto begin = PlaceOfFrame(loop_->begin.value, Rate());
  const auto end = PlaceOfFrame(loop_->end.value, Rate());
  Change([&](music::Cues& cues) {
    auto& cue = cues.hot[static_cast<std::size_t>(slot)];
    if (!cue) cue = music::Cue{{}, {}, slot, {}};
    cue->place = begin;
    cue->length = end - begin;
  });
}

bool DeckCues::Put(const music::Loop& loop) {
  if (tools_.loops == nullptr) return false;
  if (!tools_.loops->SetLoop(deck_.Player().STRM(), loop)) {
    Tell(Sentence::LoopDoesNotFit);
    return false;
  }
  loop_ = loop;
  looping_ = true;
  return true;
}

void DeckCues::End() {
  in_.reset();
  if (!std::exchange(looping_, false) || tools_.loops == nullptr) return;
  tools_.loops->SetLoop(deck_.Player().STRM(), std::nullopt);
}

void DeckCues::Loop() {
  if (!Loaded() || tools_.loops == nullptr) return;
  if (looping_) {
    looping_ = false;
    return tools_.loops->SlipBack(deck_.Player().STRM());
  }
  if (!KnowsBeats()) return;
  const music::Seconds begin = FromHere();
  Put({{FrameOf(begin)}, {FrameOf(Measure().After(begin, beats_))}});
}

void DeckCues::LoopIn() {
  if (Loaded()) in_ = FrameOf(FromHere());
}

void DeckCues::LoopOut() {
  if (!Loaded() || !in_) return;
  if (Put({{*in_}, {FrameOf(FromHere())}})) in_.reset();
}

void DeckCues::Reloop() {
  if (looping_ || !Loaded()) return Loop();
  if (!loop_) return;
  deck_.Seek(PlaceOfFrame(loop_->begin.value, Rate()));
  Put(*loop_);
}

void DeckCues::Resize(int up) {
  if (!looping_ || !loop_) {
    beats_ = decks::Resized(beats_, up);
    return;
  }
  const std::int64_t length = up > 0 ? loop_->Frames() * 2 : loop_->Frames() / 2;
  if (!Put({loop_->begin, {loop_->begin.value + length}}) || !Measure().Known() || Rate() <= 0) return;
  // The button says what the loop has now, also where that was made by hand.
  const double beats = static_cast<double>(length) / Rate() * deck_.Tempo().Bpm() / 60;
  if (beats > 0) beats_ = std::clamp(std::exp2(std::round(std::log2(beats))), 1.0 / 32, 32.0);
}

void DeckCues::MoveLoop(int on) {
  if (looping_ && loop_) Put(loop_->MovedBy(on > 0 ? loop_->Frames() : -loop_->Frames()));
}

void DeckCues::Jump(int on) {
  if (!KnowsBeats() || tools_.loops == nullptr) return;
  const music::Seconds here = Here();
  const std::int64_t frames = FrameOf(Measure().After(here, on > 0 ? jump_ : -jump_)) - FrameOf(here);
  if (!tools_.loops->JumpBy(deck_.Player().STRM(), frames)) Tell(Sentence::JumpBeyondTrack);
}

void DeckCues::ResizeJump(int up) {
  jump_ = std::max(decks::Resized(jump_, up), 0.5);
}

void DeckCues::Slip(bool on) {
  slip_ = on;
  if (tools_.loops != nullptr) tools_.loops->SetSlip(deck_.Player().STRM(), on);
}

bool DeckCues::BreaksTheBeat() const {
  constexpr double kNearly = 0.02;
  if (!looping_ || !loop_ || Rate() <= 0) return false;
  const double seconds = static_cast<double>(loop_->Frames()) / Rate();
  const double beats = seconds * deck_.Tempo().Bpm() / 60;
  return beats < 1 - kNearly || std::abs(std::remainder(beats, 1.0)) > kNearly;
}

void DeckCues::Begin() {
  held_.reset();
  in_.reset();
  loop_.reset();
  looping_ = false;
}

void DeckCues::Apply() {
  if (tools_.loops == nullptr) return;
  const decks::StreamHandle stream = deck_.Player().STRM();
  tools_.loops->SetSlip(stream, slip_);
  if (looping_ && loop_) tools_.loops->SetLoop(stream, loop_);
}

void DeckCues::Show(DeckView& view) {
  view.cues.quantise = quantise_;
  view.cues.slip = slip_;
  view.cues.beats = beats_;
  view.cues.jump = jump_;
  if (!Loaded()) return;
  if (tools_.loops != nullptr) {
    const auto state = tools_.loops->LoopState(deck_.Player().STRM());
    looping_ = state.loop.has_value();
    if (looping_) loop_ = state.loop;  // a jump has moved it
  }
  view.cues.marked = Kept();
  view.cues.looping = looping_;
  view.cues.held = held_.has_value();
  view.cues.has_beats = Measure().Known();
  if (in_) view.cues.in = PlaceOfFrame(*in_, Rate());
  if (!loop_) return;
  view.cues.has_loop = true;
  view.cues.loop_begin = PlaceOfFrame(loop_->begin.value, Rate());
  view.cues.loop_end = PlaceOfFrame(loop_->end.value, Rate());
}

}  // namespace app
