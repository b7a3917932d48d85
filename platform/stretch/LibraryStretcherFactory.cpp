// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/stretch/LibraryStretcherFactory.h"

#include "platform/stretch/RubberBandStretcher.h"
#include "platform/stretch/SampleRateResampler.h"
#include "platform/stretch/SoundTouchStretcher.h"

namespace platform::stretch {

std::unique_ptr<engine::Stretcher> LibraryStretcherFactory::MakeStretcher(engine::StretchQuality quality,
                                                                          int sample_rate) {
  if (quality == engine::StretchQuality::LowPower) return std::make_unique<SoundTouchStretcher>(sample_rate);
  return std::make_unique<RubberBandStretcher>(sample_rate);
}

std::unique_ptr<engine::Resampler> LibraryStretcherFactory::MakeResampler(double ratio) {
  return std::make_unique<SampleRateResampler>(ratio);
}

}  // namespace platform::stretch
