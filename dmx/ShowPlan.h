// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <vector>

#include "dmx/Scenes.h"
#include "dmx/ports/DmxInterface.h"
#include "support/Result.h"

namespace dmx {

using ShowTime = std::chrono::microseconds;
using UniverseLevels = std::span<DmxLevel, kUniverseChannels>;
using ConstUniverseLevels = std::span<const DmxLevel, kUniverseChannels>;

/// A show laid out in time: what every channel shows at any moment depends on nothing but that moment.
///
/// Levels move in a straight line from the previous step's to a step's own over its fade time, and hold for
/// its wait time. A channel that a step has no record for keeps its level. The first step of a scene comes
/// from the last of the scene before, or, in a further loop, from its own scene's last.
/// Threads: any; immutable.
class ShowPlan {
 public:
  /// channels: what each record stands for, 0 for nothing; records beyond them are left out. Fails when the
  /// show is too large to be laid out.
  [[nodiscard]] static support::Result<ShowPlan> Make(const Scenes& scenes, std::span<const int> channels);

  [[nodiscard]] ShowTime Length() const { return length_; }

  struct Place {
    int scene = 0;  ///< from 1, as the others; 0: there is nothing to play
    int loop = 0;
    int step = 0;
    bool fading = false;   ///< or waiting
    ShowTime step_end{0};  ///< since the start of the show

    bool operator==(const Place&) const = default;
  };
  /// After the end: the last step, waiting.
  [[nodiscard]] Place At(ShowTime elapsed) const;

  /// start: what was there before the show; other channels than the show's are left as they are. Returns true
  /// while a level moves.
  bool LevelsAt(ShowTime elapsed, ConstUniverseLevels start, UniverseLevels levels) const;

 private:
  struct Step {
    ShowTime start{0};  ///< since the start of its pass
    ShowTime fade{0};
    ShowTime wait{0};
  };
  /// Steps that are played in a row, a number of times.
  struct Pass {
    ShowTime start{0};
    ShowTime length{0};
    std::size_t first_step = 0;
    std::size_t steps = 0;
    int scene = 0;
    int first_loop = 1;
  };
  struct Found {
    const Pass* pass = nullptr;
    std::size_t step = 0;  ///< in steps_
    std::int64_t round = 0;
    ShowTime since_step{0};
  };

  void AddPass(const Scene& scene, int number, int first_loop, int rounds);
  [[nodiscard]] Found Find(ShowTime elapsed) const;
  [[nodiscard]] const std::uint16_t* LevelsOf(std::size_t step) const {
    return levels_.data() + step * channels_.size();
  }

  std::vector<int> channels_;
  std::vector<int> records_;  ///< of a step, from 1: that of each channel
  std::vector<Pass> passes_;
  std::vector<Step> steps_;
  std::vector<std::uint16_t> levels_;  ///< a row of channels for each step
  ShowTime length_{0};
};

}  // namespace dmx
