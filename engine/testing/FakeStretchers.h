// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/ports/Stretcher.h"

namespace engine::testing {

/// Stretchers and resamplers that read between two samples in a straight line: the place of every output
/// frame is known exactly, the pitch is not kept. The stretcher holds back as real ones do: a pad before the
/// start and a delay after it. Threads: any; what it makes, one at a time.
class FakeStretchers final : public StretcherFactory {
 public:
  [[nodiscard]] std::unique_ptr<Stretcher> MakeStretcher(StretchQuality quality, int sample_rate) override;
  [[nodiscard]] std::unique_ptr<Resampler> MakeResampler(double ratio) override;
};

}  // namespace engine::testing
