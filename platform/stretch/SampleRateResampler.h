// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <samplerate.h>

#include <memory>
#include <vector>

#include "engine/ports/Stretcher.h"

namespace platform::stretch {

/// libsamplerate's sinc converter, whose ratio may move while it runs.
///
/// soxr's variable mode is cheaper, but used the heap while running and shifted the sound by a frame and a
/// half. Heap: in the constructor only.
class SampleRateResampler : public engine::Resampler {
 public:
  explicit SampleRateResampler(double ratio);

  void SetRatio(double ratio) override;
  void Reset() override;
  Progress Process(std::span<const float> left_in, std::span<const float> right_in, std::span<float> left_out,
                   std::span<float> right_out) override;

 private:
  struct Free {
    void operator()(SRC_STATE* state) const { src_delete(state); }
  };
  Progress ProcessSome(std::span<const float> left_in, std::span<const float> right_in,
                       std::span<float> left_out, std::span<float> right_out);

  std::unique_ptr<SRC_STATE, Free> state_;
  double outputs_per_source_ = 1;
  std::vector<float> in_;  ///< interleaved, as the library wants it
  std::vector<float> out_;
};

}  // namespace platform::stretch
