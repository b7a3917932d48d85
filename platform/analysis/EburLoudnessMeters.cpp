// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/analysis/EburLoudnessMeters.h"

#include <ebur128.h>

#include <cmath>

#include "music/TruePeak.h"

namespace platform::analysis {
namespace {

struct StateDeleter {
  void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};
using State = std::unique_ptr<ebur128_state, StateDeleter>;

class EburLoudnessMeter final : public decks::LoudnessMeter {
 public:
  EburLoudnessMeter(State state, int sample_rate, int channels)
      : state_(std::move(state)), peak_(sample_rate, channels) {}

  void Add(std::span<const std::int16_t> samples) override {
    good_ = good_ && ebur128_add_frames_short(state_.get(), samples.data(),
                                              samples.size() / state_->channels) == EBUR128_SUCCESS;
    peak_.Add(samples);
  }

  music::Loudness Finish() override {
    music::Loudness loudness;
    double integrated = 0;
    good_ = good_ && ebur128_loudness_global(state_.get(), &integrated) == EBUR128_SUCCESS;
    loudness.true_peak = peak_.Finish();
    loudness.valid = good_ && std::isfinite(integrated);
    if (loudness.valid) loudness.integrated.value = static_cast<float>(integrated);
    return loudness;
  }

 private:
  State state_;
  music::TruePeak peak_;
  bool good_ = true;
};

/// The order of our channels is front left, front right, centre, LFE, rear pair, side pair.
void NameChannels(ebur128_state& state) {
  constexpr unsigned kFirstOfSides = 6;
  if (state.channels == 1) ebur128_set_channel(&state, 0, EBUR128_DUAL_MONO);  // both speakers play it
  for (unsigned channel = kFirstOfSides; channel < state.channels; ++channel) {
    ebur128_set_channel(&state, channel, channel % 2 == 0 ? EBUR128_LEFT_SURROUND : EBUR128_RIGHT_SURROUND);
  }
}

}  // namespace

std::unique_ptr<decks::LoudnessMeter> EburLoudnessMeters::Make(int sample_rate, int channels) {
  if (sample_rate <= 0 || channels <= 0) return nullptr;
  // The histogram keeps the memory the same for three minutes and for three hours.
  constexpr int kModes = EBUR128_MODE_I | EBUR128_MODE_HISTOGRAM;
  State state(ebur128_init(static_cast<unsigned>(channels), static_cast<unsigned long>(sample_rate), kModes));
  if (state == nullptr) return nullptr;
  NameChannels(*state);
  return std::make_unique<EburLoudnessMeter>(std::move(state), sample_rate, channels);
}

}  // namespace platform::analysis
