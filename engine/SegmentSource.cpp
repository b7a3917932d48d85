// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/SegmentSource.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

#include "engine/Downmix.h"

namespace engine {

SegmentSource::SegmentSource(std::shared_ptr<PcmStore> store, StretcherFactory& stretchers, int device_rate)
    : store_(std::move(store)),
      stretchers_(stretchers),
      device_rate_(device_rate),
      channels_(store_->Format().channels),
      interleaved_(static_cast<std::size_t>(kWindow * channels_)) {}

SegmentPath SegmentSource::PathOf(const Tempo& tempo) const {
  const double rate = tempo.sample_rate > 0 ? tempo.sample_rate : store_->Format().sample_rate;
  SegmentPath path;
  path.resampled = tempo.bendable || rate != device_rate_;
  path.stretched = tempo.speed != 1 || tempo.semitones != 0;
  if (path.stretched) path.quality = tempo.quality;
  return path;
}

void SegmentSource::Begin(std::int64_t frame, const Tempo& tempo, const std::optional<music::Loop>& loop) {
  path_ = PathOf(tempo);
  loop_ = loop;
  if (loop_ && (frame >= LoopEnd(store_->Complete()) || LoopEnd(store_->Complete()) <= loop_->begin.value)) {
    loop_.reset();
  }
  source_ = line_ = static_cast<double>(frame);
  cursor_ = frame;
  ended_ = false;
  drop_ = 0;
  window_.begin = window_.end = 0;
  if (path_.resampled) {
    const double rate = tempo.sample_rate > 0 ? tempo.sample_rate : store_->Format().sample_rate;
    if (resampler_ == nullptr) resampler_ = stretchers_.MakeResampler(rate / device_rate_);
    resampler_->Reset();
  }
  SetTempo(tempo);
  if (path_.stretched) BeginStretcher();
}

void SegmentSource::BeginStretcher() {
  if (stretcher_ == nullptr || stretcher_quality_ != path_.quality) {
    stretcher_ = stretchers_.MakeStretcher(path_.quality, device_rate_);
    stretcher_quality_ = path_.quality;
  }
  stretcher_->Reset();
  stretcher_->SetTempo(tempo_.speed);
  stretcher_->SetPitch(tempo_.semitones);
  // What lies before the place warms the stretcher up; before the file there is silence.
  cursor_ -= std::llround(stretcher_->StartPad() * resample_ratio_);
  drop_ = stretcher_->StartDelay();
}

void SegmentSource::SetTempo(const Tempo& tempo) {
  assert(PathOf(tempo) == path_ && "another path is another segment");
  const double rate = tempo.sample_rate > 0 ? tempo.sample_rate : store_->Format().sample_rate;
  const bool bent_only = tempo.speed == tempo_.speed && tempo.semitones == tempo_.semitones;
  tempo_ = tempo;
  resample_ratio_ = rate / device_rate_ * tempo.bend;
  ratio_ = resample_ratio_ * tempo.speed;
  if (path_.resampled) resampler_->SetRatio(resample_ratio_);
  if (path_.stretched && !bent_only && stretcher_ != nullptr && stretcher_quality_ == path_.quality) {
    stretcher_->SetTempo(tempo.speed);
    stretcher_->SetPitch(tempo.semitones);
  }
}

bool SegmentSource::Make(LaneBlock& block, int frames) {
  assert(!ended_ && "nothing follows the end");
  block.source = source_;
  block.line = line_;
  block.ratio = ratio_;
  block.last = false;
  const bool complete = store_->Complete();
  LeaveLoopBehind(static_cast<std::int64_t>(source_), complete);
  if (loop_) {
    const double left = std::ceil((static_cast<double>(LoopEnd(complete)) - source_) / ratio_ - 1e-9);
    frames = std::clamp(static_cast<int>(std::min<double>(left, frames)), 1, frames);
  } else if (complete) {
    const double left = std::ceil((static_cast<double>(store_->Length()) - source_) / ratio_);
    if (left <= frames) {
      frames = static_cast<int>(std::max(left, 0.0));
      block.last = true;
    }
  }
  const bool plain = path_ == SegmentPath{};
  if (plain && !complete && store_->Ready() - cursor_ < frames) return false;
  block.frames = plain ? MakePlainBlock(block, frames) : MakeLibraryBlock(block, frames);
  if (block.frames < frames) block.last = false;
  source_ += block.frames * ratio_;
  line_ += block.frames * ratio_;
  if (loop_ && source_ >= static_cast<double>(LoopEnd(complete))) {
    source_ -= static_cast<double>(LoopEnd(complete) - loop_->begin.value);
  }
  ended_ = block.last;
  return block.frames > 0 || block.last;
}

int SegmentSource::MakePlainBlock(LaneBlock& block, int frames) {
  const int made = PullStore({left_.data(), static_cast<std::size_t>(frames)},
                             {right_.data(), static_cast<std::size_t>(frames)});
  for (std::size_t i = 0; i < static_cast<std::size_t>(made); ++i) {
    block.samples[2 * i] = left_[i];
    block.samples[2 * i + 1] = right_[i];
  }
  return made;
}

int SegmentSource::MakeLibraryBlock(LaneBlock& block, int frames) {
  int made = 0;
  std::array<float, kLaneBlockFrames> left;
  std::array<float, kLaneBlockFrames> right;
  while (made < frames) {
    const std::size_t room = static_cast<std::size_t>(frames - made);
    const int got = Pull({left.data(), room}, {right.data(), room});
    if (got == 0) break;
    for (int i = 0; i < got; ++i) {
      const float l = left[static_cast<std::size_t>(i)];
      const float r = right[static_cast<std::size_t>(i)];
      block.samples[static_cast<std::size_t>(2 * (made + i))] = std::isfinite(l) ? l : 0;
      block.samples[static_cast<std::size_t>(2 * (made + i) + 1)] = std::isfinite(r) ? r : 0;
    }
    made += got;
  }
  return made;
}

int SegmentSource::Pull(std::span<float> left, std::span<float> right) {
  return path_.stretched ? PullStretched(left, right) : PullResampled(left, right);
}

std::int64_t SegmentSource::LoopEnd(bool complete) const {
  return complete ? std::min(loop_->end.value, store_->Length()) : loop_->end.value;
}

std::int64_t SegmentSource::ReadStore(std::int64_t frame, std::span<float> left, std::span<float> right) {
  const auto wanted = static_cast<std::int64_t>(left.size());
  const std::int64_t before = std::clamp<std::int64_t>(-frame, 0, wanted);
  std::fill_n(left.begin(), before, 0.0F);
  std::fill_n(right.begin(), before, 0.0F);
  if (before == wanted) return before;
  const std::size_t room = static_cast<std::size_t>(wanted - before);
  const std::int64_t got =
      store_->Read(frame + before, {interleaved_.data(), room * static_cast<std::size_t>(channels_)});
  const std::size_t count = static_cast<std::size_t>(got);
  Downmix({interleaved_.data(), count * static_cast<std::size_t>(channels_)}, channels_,
          left.subspan(static_cast<std::size_t>(before), count),
          right.subspan(static_cast<std::size_t>(before), count));
  return before + got;
}

/// A file that turns out shorter than it said may end before the loop, or before what plays in it.
void SegmentSource::LeaveLoopBehind(std::int64_t frame, bool complete) {
  if (loop_ && LoopEnd(complete) <= std::max(frame, loop_->begin.value)) loop_.reset();
}

int SegmentSource::PullStore(std::span<float> left, std::span<float> right) {
  const bool complete = store_->Complete();
  LeaveLoopBehind(cursor_, complete);
  std::int64_t wanted = std::min<std::int64_t>(kWindow, static_cast<std::int64_t>(left.size()));
  if (loop_) wanted = std::min(wanted, LoopEnd(complete) - cursor_);
  const std::size_t count = static_cast<std::size_t>(wanted);
  std::int64_t made = ReadStore(cursor_, left.first(count), right.first(count));
  if (complete && made < wanted) {
    std::fill_n(left.begin() + made, wanted - made, 0.0F);
    std::fill_n(right.begin() + made, wanted - made, 0.0F);
    made = wanted;
  }
  if (loop_)
    BlendTurn(left.first(static_cast<std::size_t>(made)), right.first(static_cast<std::size_t>(made)),
              LoopEnd(complete));
  cursor_ += made;
  if (loop_ && cursor_ >= LoopEnd(complete)) cursor_ = loop_->begin.value;
  return static_cast<int>(made);
}

void SegmentSource::BlendTurn(std::span<float> left, std::span<float> right, std::int64_t end) {
  constexpr std::int64_t kFadesASecond = 200;
  const std::int64_t fade =
      std::min(store_->Format().sample_rate / kFadesASecond, (end - loop_->begin.value) / 2);
  const auto made = static_cast<std::int64_t>(left.size());
  const std::int64_t first = std::clamp<std::int64_t>(end - fade - cursor_, 0, made);
  if (first == made) return;
  const std::int64_t into = cursor_ + first - (end - fade);
  const std::size_t count = static_cast<std::size_t>(made - first);
  const std::span<float> other_left = std::span(before_left_).first(count);
  const std::span<float> other_right = std::span(before_right_).first(count);
  const std::int64_t got = ReadStore(loop_->begin.value - fade + into, other_left, other_right);
  for (std::int64_t i = 0; i < got; ++i) {
    const double along = static_cast<double>(into + i + 1) / static_cast<double>(fade + 1);
    const float in = static_cast<float>(0.5 - 0.5 * std::cos(std::numbers::pi * along));
    const auto at = static_cast<std::size_t>(first + i);
    left[at] += (before_left_[static_cast<std::size_t>(i)] - left[at]) * in;
    right[at] += (before_right_[static_cast<std::size_t>(i)] - right[at]) * in;
  }
}

int SegmentSource::PullResampled(std::span<float> left, std::span<float> right) {
  if (!path_.resampled) return PullStore(left, right);
  Window& w = window_;
  constexpr int kTries = 64;
  for (int attempt = 0; attempt < kTries; ++attempt) {
    const std::size_t begin = static_cast<std::size_t>(w.begin);
    const std::size_t held = static_cast<std::size_t>(w.end - w.begin);
    const Resampler::Progress progress =
        resampler_->Process({w.left.data() + begin, held}, {w.right.data() + begin, held}, left, right);
    w.begin += std::clamp(progress.used, 0, w.end - w.begin);
    if (progress.made > 0) return std::min(progress.made, static_cast<int>(left.size()));
    std::copy(w.left.begin() + w.begin, w.left.begin() + w.end, w.left.begin());
    std::copy(w.right.begin() + w.begin, w.right.begin() + w.end, w.right.begin());
    w.end -= w.begin;
    w.begin = 0;
    const std::size_t end = static_cast<std::size_t>(w.end);
    const int got = PullStore(std::span(w.left).subspan(end), std::span(w.right).subspan(end));
    if (got == 0) return 0;
    w.end += got;
  }
  return 0;
}

int SegmentSource::PullStretched(std::span<float> left, std::span<float> right) {
  constexpr int kTries = 4096;
  for (int attempt = 0; attempt < kTries; ++attempt) {
    if (stretcher_->Available() > 0) {
      const std::size_t room =
          drop_ > 0 ? std::min(left.size(), static_cast<std::size_t>(drop_)) : left.size();
      const int got = stretcher_->Take(left.first(room), right.first(room));
      if (drop_ == 0 && got > 0) return got;
      drop_ -= std::min(got, drop_);
      if (got > 0) continue;
    }
    constexpr int kSome = 64;  // a library that asks for nothing and has nothing gets a little
    const int asked = stretcher_->Wanted();
    const std::size_t wanted = static_cast<std::size_t>(asked > 0 ? std::min(asked, kWindow) : kSome);
    const int got = PullResampled({left_.data(), wanted}, {right_.data(), wanted});
    if (got == 0) return 0;
    const std::size_t count = static_cast<std::size_t>(got);
    stretcher_->Put({left_.data(), count}, {right_.data(), count});
  }
  return 0;
}

}  // namespace engine
