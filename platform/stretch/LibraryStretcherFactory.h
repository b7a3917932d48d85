// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/ports/Stretcher.h"

namespace platform::stretch {

/// Threads: any.
class LibraryStretcherFactory : public engine::StretcherFactory {
 public:
  [[nodiscard]] std::unique_ptr<engine::Stretcher> MakeStretcher(engine::StretchQuality quality,
                                                                 int sample_rate) override;
  [[nodiscard]] std::unique_ptr<engine::Resampler> MakeResampler(double ratio) override;
};

}  // namespace platform::stretch
