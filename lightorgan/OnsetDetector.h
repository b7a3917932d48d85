// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

#include "lightorgan/ports/Music.h"

namespace lightorgan {

/// Tells the beats of a sound without a beat grid by how its spectrum grows.
///
/// Law: an onset is where the summed growth of the bins' log magnitudes passes 1.5 times its median over the
/// last half second and a little more, at least 120 ms after the last onset. A steady tone and silence have
/// none. Threads: one.
class OnsetDetector {
 public:
  OnsetDetector();
  /// elapsed: since the last call.
  [[nodiscard]] bool Onset(const Bins& bins, std::chrono::microseconds elapsed);

 private:
  struct Growth {
    float value;
    std::chrono::microseconds age;
  };
  Bins last_{};
  std::vector<Growth> recent_;  ///< half a second of it, with room reserved
  std::vector<float> sorting_;
  std::chrono::microseconds since_{std::chrono::seconds(1)};
};

}  // namespace lightorgan
