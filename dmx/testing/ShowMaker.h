// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "dmx/Scenes.h"

namespace dmx::testing {

/// A step with a record for each of the levels.
inline SceneStep StepWith(std::string fade, std::string wait, const std::vector<int>& levels) {
  SceneStep step{std::move(fade), std::move(wait), {}};
  for (const int level : levels) step.SceneChannel.Add().ChannelValue = static_cast<std::int16_t>(level);
  return step;
}

inline Scene& AddScene(Scenes& scenes, int loops, std::vector<SceneStep> steps) {
  Scene& scene = scenes.Add();
  scene.Loops = static_cast<std::int16_t>(loops);
  for (SceneStep& step : steps) scene.Steps.Add(std::move(step));
  return scene;
}

}  // namespace dmx::testing
