// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/ShowPlayer.h"

#include <algorithm>
#include <utility>

namespace dmx {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;

constexpr support::Duration kSampleInterval = std::chrono::microseconds(22'700);
constexpr support::Duration kAfterWait = milliseconds(55);

}  // namespace

void ShowPlayer::Play(std::shared_ptr<const ShowPlan> plan, Repeat repeat, support::TimePoint now) {
  plan_ = std::move(plan);
  repeat_ = repeat;
  state_ = State::Playing;
  started_ = now;
  before_ = universe_.Levels();
  shown_ = before_;
  WaitTimer.Enabled = false;
  PlayTimer.Start(now, support::Duration(0));
}

void ShowPlayer::Pause(support::TimePoint now) {
  if (state_ != State::Playing) return;
  paused_at_ = Position(now);
  state_ = State::Paused;
}

void ShowPlayer::Resume(support::TimePoint now) {
  if (state_ != State::Paused) return;
  state_ = State::Playing;
  Seek(paused_at_, now);
}

void ShowPlayer::Stop() {
  state_ = State::Stopped;
  PlayTimer.Enabled = false;
  WaitTimer.Enabled = false;
  plan_.reset();
}

void ShowPlayer::Seek(ShowTime position, support::TimePoint now) {
  if (state_ == State::Stopped) return;
  position = std::clamp(position, ShowTime(0), plan_->Length());
  paused_at_ = position;
  started_ = now - position;
  WaitTimer.Enabled = false;
  PlayTimer.Start(now, support::Duration(0));
}

void ShowPlayer::Tick(support::TimePoint now) {
  if (state_ != State::Playing) return;
  if (WaitTimer.Enabled && now >= WaitTimer.due) {
    WaitTimer.Enabled = false;
    PlayTimer.Start(now, kAfterWait);
  }
  if (PlayTimer.Enabled && now >= PlayTimer.due) Sample(now);
}

void ShowPlayer::Sample(support::TimePoint now) {
  const ShowTime elapsed = Position(now);
  auto wanted = shown_;
  plan_->LevelsAt(elapsed, before_, wanted);
  for (int channel = 1; channel <= kUniverseChannels; ++channel) {
    const auto place = static_cast<std::size_t>(channel - 1);
    if (wanted[place] == shown_[place]) continue;
    shown_[place] = wanted[place];
    universe_.MoveFader(channel, wanted[place]);
  }
  if (elapsed >= plan_->Length()) return repeat_ == Repeat::ForEver ? StartAgain(now) : Stop();
  const ShowPlan::Place place = plan_->At(elapsed);
  if (!place.fading) {
    PlayTimer.Enabled = false;
    WaitTimer.Start(now, place.step_end - elapsed);
  } else {
    // A timer that is late catches up with its beat, so that many late ticks do not become fewer samples.
    const support::TimePoint next = PlayTimer.due + kSampleInterval;
    PlayTimer = {true, kSampleInterval, next > now ? next : now + kSampleInterval};
  }
}

void ShowPlayer::StartAgain(support::TimePoint now) {
  if (plan_->Length().count() == 0) return Stop();  // it has no time in which it could be repeated
  started_ += (now - started_) / plan_->Length() * plan_->Length();
  before_ = shown_;
  WaitTimer.Enabled = false;
  PlayTimer.Start(now, support::Duration(0));
}

ShowTime ShowPlayer::Position(support::TimePoint now) const {
  if (state_ == State::Stopped) return ShowTime(0);
  if (state_ == State::Paused) return paused_at_;
  return std::min(duration_cast<ShowTime>(now - started_), plan_->Length());
}

ShowPlan::Place ShowPlayer::PlaceAt(support::TimePoint now) const {
  return plan_ == nullptr ? ShowPlan::Place{} : plan_->At(Position(now));
}

}  // namespace dmx
