// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/stretch/SampleRateResampler.h"

#include <algorithm>
#include <cassert>

namespace platform::stretch {
namespace {

constexpr std::size_t kMostFrames = 1024;

}  // namespace

SampleRateResampler::SampleRateResampler(double ratio)
    : state_(src_new(SRC_SINC_MEDIUM_QUALITY, 2, nullptr)), in_(2 * kMostFrames), out_(2 * kMostFrames) {
  SetRatio(ratio);
}

void SampleRateResampler::SetRatio(double ratio) {
  outputs_per_source_ = 1 / std::clamp(ratio, 1.0 / 255, 255.0);
  // Sets it at once; without this the library glides to a new ratio over the next block.
  if (state_) src_set_ratio(state_.get(), outputs_per_source_);
}

void SampleRateResampler::Reset() {
  if (!state_) return;
  src_reset(state_.get());
  src_set_ratio(state_.get(), outputs_per_source_);
}

engine::Resampler::Progress SampleRateResampler::Process(std::span<const float> left_in,
                                                         std::span<const float> right_in,
                                                         std::span<float> left_out,
                                                         std::span<float> right_out) {
  assert(left_in.size() == right_in.size() && left_out.size() == right_out.size());
  Progress done;
  while (state_) {
    const auto used = static_cast<std::size_t>(done.used), made = static_cast<std::size_t>(done.made);
    const Progress some = ProcessSome(left_in.subspan(used), right_in.subspan(used), left_out.subspan(made),
                                      right_out.subspan(made));
    done.used += some.used;
    done.made += some.made;
    if (some.used == 0 && some.made == 0) break;
  }
  return done;
}

engine::Resampler::Progress SampleRateResampler::ProcessSome(std::span<const float> left_in,
                                                             std::span<const float> right_in,
                                                             std::span<float> left_out,
                                                             std::span<float> right_out) {
  const std::size_t offered = std::min(left_in.size(), kMostFrames);
  for (std::size_t i = 0; i < offered; ++i) {
    in_[2 * i] = left_in[i];
    in_[2 * i + 1] = right_in[i];
  }
  SRC_DATA data{};
  data.data_in = in_.data();
  data.data_out = out_.data();
  data.input_frames = static_cast<long>(offered);
  data.output_frames = static_cast<long>(std::min(left_out.size(), kMostFrames));
  data.src_ratio = outputs_per_source_;
  if (src_process(state_.get(), &data) != 0) return {};
  for (std::size_t i = 0; i < static_cast<std::size_t>(data.output_frames_gen); ++i) {
    left_out[i] = out_[2 * i];
    right_out[i] = out_[2 * i + 1];
  }
  return {static_cast<int>(data.input_frames_used), static_cast<int>(data.output_frames_gen)};
}

}  // namespace platform::stretch
