// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Voice.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace engine {
namespace {

constexpr double kFadeSeconds = 0.005;
/// An echo that hardly loses anything would keep the stream for minutes; both in fades.
constexpr int kLongestTail = 4000;
constexpr int kEndOfTail = 400;

}  // namespace

FadeCurve::FadeCurve(int sample_rate) : frames_(std::max(1, static_cast<int>(sample_rate * kFadeSeconds))) {
  for (int i = 0; i <= frames_; ++i) {
    curve_.push_back(static_cast<float>(0.5 - 0.5 * std::cos(std::numbers::pi * i / frames_)));
  }
}

void Voice::Begin(Stream& stream, const FadeCurve& curve) noexcept {
  *this = Voice();
  stream_ = &stream;
  curve_ = &curve;
}

bool Voice::TakeRequests() noexcept {
  const std::uint64_t volume = stream_->VolumeAsked();
  if (volume != volume_seen_) {
    volume_seen_ = volume;
    Ramp(Stream::VolumeOf(volume), curve_->Frames());
  }
  const std::uint64_t transport = stream_->TransportAsked();
  if (transport != transport_seen_) {
    transport_seen_ = transport;
    switch (Stream::TransportOf(transport)) {
      case Stream::Transport::None:
        break;
      case Stream::Transport::Play:
        Start();
        break;
      case Stream::Transport::Pause:
        Pause();
        break;
      case Stream::Transport::Free:
        Pause();
        freed_ = true;
        break;
    }
  }
  const float pan = std::clamp(stream_->Pan(), -1.0F, 1.0F);
  if (pan != pan_.Target()) pan_.Set(pan, IsHeard() ? curve_->Frames() : 0);
  const float gain = stream_->Gain();
  if (gain != gain_.Target()) gain_.Set(gain, IsHeard() ? curve_->Frames() : 0);
  return !freed_ || IsHeard();
}

void Voice::Start() noexcept {
  if (!freed_) wanted_ = true;
}

void Voice::Ramp(float volume, int frames) noexcept {
  if (ending_ && volume > 0) return;  // its tail is being closed for good
  // A stream that nobody hears takes it at once; one that waits for its first sound keeps the ramp for that.
  const bool heard_soon = sounding_ || wanted_ || rings_;
  volume_.Set(std::clamp(volume, 0.0F, 1.0F), heard_soon ? std::max(frames, 1) : 0);
}

bool Voice::Enough(int frames) noexcept {
  Lane& lane = LaneOf(active_);
  const bool finished = lane.Finished();
  return finished || lane.Queued() >= frames;
}

void Voice::LookForLane(std::int64_t frame) noexcept {
  to_switch_ = to_start_ = kRunFrames;
  // Held while it is looked at: what is only ready may be cleared for another place at any moment.
  Stream::HandOver ready = Stream::HandOver::Ready;
  if (stream_->hand_over.load(std::memory_order_relaxed) != ready) return;
  if (!stream_->hand_over.compare_exchange_strong(ready, Stream::HandOver::Held, std::memory_order_acq_rel)) {
    return;
  }
  const bool taken = TakesOffered(frame);
  stream_->hand_over.store(taken ? Stream::HandOver::Taken : Stream::HandOver::Ready,
                           std::memory_order_release);
  if (!taken) return;
  offset_[static_cast<std::size_t>(Other())] = 0;
  const double reached = active_ >= 0 ? Source(active_) : 0;
  const std::int64_t given = active_ >= 0 ? LaneOf(active_).Taken() : 0;
  Flip(frame);
  SkipWhatIsPast(frame, reached, given);
}

bool Voice::TakesOffered(std::int64_t frame) noexcept {
  const LaneEntry& entry = LaneOf(Other()).Entry();
  switch (entry.when) {
    case LaneEntry::When::AtOnce:
      return !sounding_ || wanted_;  // else it stops first
    case LaneEntry::When::AtFrame:
      to_start_ = to_switch_ = static_cast<int>(std::clamp<std::int64_t>(entry.frame - frame, 0, kRunFrames));
      return to_switch_ == 0 && (!sounding_ || wanted_);
    case LaneEntry::When::Aligned:
      if (active_ < 0) return false;
      to_switch_ = FramesToAlignedSwitch(kRunFrames);
      return sounding_ && to_switch_ == 0;
    case LaneEntry::When::Counted:
      if (active_ < 0) return false;
      to_switch_ =
          static_cast<int>(std::clamp<std::int64_t>(entry.frame - LaneOf(active_).Taken(), 0, kRunFrames));
      return sounding_ && to_switch_ == 0;
  }
  return false;
}

void Voice::SkipWhatIsPast(std::int64_t frame, double reached, std::int64_t taken) noexcept {
  const LaneEntry& entry = LaneOf(active_).Entry();
  if (entry.when == LaneEntry::When::Aligned) SkipTo(active_, reached);
  if (entry.when == LaneEntry::When::AtFrame) Skip(active_, frame - entry.frame);
  if (entry.when == LaneEntry::When::Counted) Skip(active_, taken - entry.frame);
}

void Voice::Flip(std::int64_t frame) noexcept {
  active_ = Other();
  ended_ = false;
  dry_ = false;
  if (sounding_) {
    crossfade_left_ = curve_->Frames();
    return;
  }
  crossfade_left_ = 0;
  stream_->hand_over.store(Stream::HandOver::Free, std::memory_order_release);
  Lane& lane = LaneOf(active_);
  Log({.frame = frame,
       .source = Source(active_),
       .line = Line(active_),
       .taken = 0,
       .moved = lane.Moved(),
       .place = lane.Place(),
       .segment = lane.Segment(),
       .lane = static_cast<std::uint32_t>(active_)});
}

void Voice::LookForStart() noexcept {
  constexpr int kRestFadesAfterDry = 4;
  if (!wanted_ || ended_ || sounding_ || active_ < 0) return;
  Lane& lane = LaneOf(active_);
  if (lane.Place() != stream_->PlaceWanted()) return;  // the place asked for is still being prepared
  if (!Enough(curve_->Frames() * (dry_ ? kRestFadesAfterDry : 2))) return;
  dry_ = false;
  sounding_ = true;
  if (StreamEffect* effect = stream_->Effect()) effect->Reset();
  const bool start_of_file = lane.Taken() == 0 && Source(active_) == 0;
  fade_ = start_of_file ? curve_->Frames() : 0;
}

bool Voice::Render(std::span<float> stereo, std::int64_t frame) noexcept {
  std::fill(stereo.begin(), stereo.end(), 0.0F);
  const int frames = static_cast<int>(stereo.size() / 2);
  bool heard = false;
  for (int done = 0; done < frames;) {
    LookForLane(frame + done);
    LookForStart();
    if (!sounding_) {
      const int silent = std::min(std::max(to_start_, 1), frames - done);
      const auto begin = static_cast<std::size_t>(2 * done);
      heard = RingOut(stereo.subspan(begin, static_cast<std::size_t>(2 * silent))) || heard;
      done += silent;
      continue;
    }
    const int run = RunLength(frames - done);
    const std::span<float> part =
        stereo.subspan(static_cast<std::size_t>(2 * done), static_cast<std::size_t>(2 * run));
    done += RenderRun(part, frame + done);
    heard = true;
  }
  const StreamEffect* ringing = stream_->Ringing();
  rings_ = ringing != nullptr && ringing->Rings();
  return heard;
}

bool Voice::RingOut(std::span<float> stereo) noexcept {
  StreamEffect* ringing = stream_->Ringing();
  if (ringing == nullptr || !ringing->Rings()) return false;
  Apply(ringing, stereo);
  if (!freed_) return true;
  rung_ += static_cast<std::int64_t>(stereo.size() / 2);
  const bool long_enough = rung_ > static_cast<std::int64_t>(kLongestTail) * curve_->Frames();
  if (long_enough && !std::exchange(ending_, true) && volume_.Target() != 0) {
    volume_.Set(0, kEndOfTail * curve_->Frames());
  }
  return true;
}

int Voice::RunLength(int frames) noexcept {
  frames = std::min(frames, kRunFrames);
  if (crossfade_left_ > 0) frames = std::min(frames, crossfade_left_);
  const LaneBlock* block = LaneOf(active_).Front();
  const int offset = offset_[static_cast<std::size_t>(active_)];
  if (block != nullptr && block->frames > offset) frames = std::min(frames, block->frames - offset);
  if (!dry_ && !Enough(frames + curve_->Frames())) {
    dry_ = true;
    if (wanted_) ++late_;
  }
  const bool closing = !wanted_ || dry_;
  if (closing) frames = std::min(frames, std::max(fade_, 1));
  return std::clamp(to_switch_, 1, frames);
}

int Voice::FramesToAlignedSwitch(int frames) noexcept {
  const LaneBlock* mine = LaneOf(active_).Front();
  const LaneBlock* next = LaneOf(Other()).Front();
  if (next == nullptr) return 0;
  const double ratio = mine != nullptr ? mine->ratio : 1;
  const double to_go = std::ceil((next->source - Source(active_)) / ratio - 1e-6);
  return static_cast<int>(std::clamp(to_go, 0.0, static_cast<double>(frames)));
}

double Voice::Source(int number) noexcept {
  const LaneBlock* block = LaneOf(number).Front();
  if (block == nullptr) return source_[static_cast<std::size_t>(number)];
  return block->source + offset_[static_cast<std::size_t>(number)] * block->ratio;
}

double Voice::Line(int number) noexcept {
  const LaneBlock* block = LaneOf(number).Front();
  if (block == nullptr) return line_[static_cast<std::size_t>(number)];
  return block->line + offset_[static_cast<std::size_t>(number)] * block->ratio;
}

void Voice::Skip(int number, std::int64_t frames) noexcept {
  std::array<float, 2 * kRunFrames> ignored;
  while (frames > 0) {
    const auto count = static_cast<std::size_t>(std::min<std::int64_t>(frames, kRunFrames));
    const int got = Take(number, {ignored.data(), 2 * count});
    if (got == 0) return;
    frames -= got;
  }
}

void Voice::SkipTo(int number, double source) noexcept {
  std::array<float, 2> ignored;
  Lane& lane = LaneOf(number);
  for (LaneBlock* block = lane.Front(); block != nullptr; block = lane.Front()) {
    if (block->last || Source(number) + block->ratio > source + 1e-6) return;
    if (Take(number, ignored) == 0) return;
  }
}

int Voice::Take(int number, std::span<float> stereo) noexcept {
  Lane& lane = LaneOf(number);
  int& offset = offset_[static_cast<std::size_t>(number)];
  const int frames = static_cast<int>(stereo.size() / 2);
  int done = 0;
  while (done < frames) {
    LaneBlock* block = lane.Front();
    if (block == nullptr) break;
    const int count = std::min(frames - done, block->frames - offset);
    std::copy_n(block->samples.data() + 2 * offset, 2 * count, stereo.data() + 2 * done);
    done += count;
    offset += count;
    source_[static_cast<std::size_t>(number)] = block->source + offset * block->ratio;
    line_[static_cast<std::size_t>(number)] = block->line + offset * block->ratio;
    if (offset < block->frames) break;
    const bool last = block->last;
    lane.DropFront();
    offset = 0;
    if (last) break;
  }
  lane.CountTaken(done);
  return done;
}

int Voice::RenderRun(std::span<float> stereo, std::int64_t frame) noexcept {
  Lane& lane = LaneOf(active_);
  const LaneBlock* block = lane.Front();
  HeardEntry entry{.frame = frame,
                   .source = Source(active_),
                   .line = Line(active_),
                   .taken = lane.Taken(),
                   .moved = lane.Moved(),
                   .place = lane.Place(),
                   .segment = lane.Segment(),
                   .lane = static_cast<std::uint32_t>(active_)};
  if (block != nullptr) entry.ratio = block->ratio;
  entry.frames = Take(active_, stereo);
  const int frames = static_cast<int>(stereo.size() / 2);
  const bool at_end = lane.Finished() && lane.Front() == nullptr;
  if (crossfade_left_ > 0) Blend(stereo);
  const bool ends = at_end && crossfade_left_ == 0;
  const std::size_t given = ends ? 2 * static_cast<std::size_t>(entry.frames) : stereo.size();
  Apply(stream_->Effect(), stereo);
  Fade(stereo);  // after the bands, whose echo of a start or an end would be cut off
  Apply(stream_->Ringing(), stereo.first(given));
  stream_->tap.Write(frame, stereo);
  for (std::size_t i = 0; i < stereo.size(); i += 2) {
    entry.left_peak = std::max(entry.left_peak, std::abs(stereo[i]));
    entry.right_peak = std::max(entry.right_peak, std::abs(stereo[i + 1]));
  }
  if (entry.frames > 0) Log(entry);
  if (ends) {
    ended_ = true;
    if (lane.Place() == stream_->PlaceWanted()) wanted_ = false;  // else a seek is on its way
    StopSounding();
    Log({.frame = frame + entry.frames,
         .source = Source(active_),
         .line = Line(active_),
         .taken = lane.Taken(),
         .moved = lane.Moved(),
         .place = lane.Place(),
         .segment = lane.Segment(),
         .lane = static_cast<std::uint32_t>(active_),
         .ended = true});
  } else if ((!wanted_ || dry_) && fade_ == 0) {
    StopSounding();
  }
  return ended_ ? entry.frames : frames;
}

void Voice::Blend(std::span<float> stereo) noexcept {
  std::array<float, 2 * kRunFrames> old{};
  const int frames = static_cast<int>(stereo.size() / 2);
  Take(Other(), {old.data(), stereo.size()});
  const int begin = curve_->Frames() - crossfade_left_;
  for (int i = 0; i < frames; ++i) {
    const float in = curve_->At(begin + i);
    const std::size_t at = static_cast<std::size_t>(2 * i);
    stereo[at] = stereo[at] * in + old[at] * (1 - in);
    stereo[at + 1] = stereo[at + 1] * in + old[at + 1] * (1 - in);
  }
  crossfade_left_ -= frames;
  if (crossfade_left_ == 0) EndCrossfade();
}

void Voice::Apply(StreamEffect* effect, std::span<float> stereo) noexcept {
  if (effect == nullptr) return;
  effect->Process(stereo);
  const auto bad = std::count_if(stereo.begin(), stereo.end(), [](float s) { return !std::isfinite(s); });
  if (bad == 0) return;
  // One such sample would stay in the limiter, and in the effect, for ever.
  std::replace_if(
      stereo.begin(), stereo.end(), [](float s) { return !std::isfinite(s); }, 0.0F);
  effect->Reset();
  bad_ += static_cast<std::uint64_t>(bad);
}

void Voice::Fade(std::span<float> stereo) noexcept {
  const bool closing = !wanted_ || dry_;
  if (!closing && fade_ == curve_->Frames()) return;
  for (std::size_t i = 0; i < stereo.size(); i += 2) {
    fade_ = std::clamp(fade_ + (closing ? -1 : 1), 0, curve_->Frames());
    const float gain = curve_->At(fade_);
    stereo[i] *= gain;
    stereo[i + 1] *= gain;
  }
}

void Voice::EndCrossfade() noexcept {
  crossfade_left_ = 0;
  stream_->hand_over.store(Stream::HandOver::Free, std::memory_order_release);
}

void Voice::StopSounding() noexcept {
  sounding_ = false;
  fade_ = 0;
  if (crossfade_left_ > 0) EndCrossfade();
}

void Voice::ApplyGain(std::span<float> stereo) noexcept {
  if (volume_.RestsAt(1) && gain_.RestsAt(1) && pan_.RestsAt(0)) return;
  for (std::size_t i = 0; i < stereo.size(); i += 2) {
    const float volume = volume_.Next() * gain_.Next();
    const float pan = pan_.Next();
    stereo[i] *= volume * std::min(1.0F, 1 - pan);
    stereo[i + 1] *= volume * std::min(1.0F, 1 + pan);
  }
  if (IsHeard()) return;
  volume_.Arrive();
  gain_.Arrive();
  pan_.Arrive();
}

void Voice::Publish() noexcept {
  stream_->ended_place.store(ended_ ? LaneOf(active_).Place() : 0, std::memory_order_relaxed);
  stream_->playing.store(wanted_, std::memory_order_release);
  stream_->heard.store(sounding_ || rings_, std::memory_order_release);
  stream_->transport_seen.store(transport_seen_, std::memory_order_release);
}

}  // namespace engine
