// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "dmx/Collection.h"

namespace dmx {

/// One channel in a step of a show, or the live state of one channel's fader.
struct Sliders {
  std::int16_t ChannelValue = 0;  ///< level, 0 to 255
  std::int16_t Dif = 0;           ///< what a fade goes through from the previous level
  std::int16_t Prev = 0;          ///< the previous level
  bool Changed = false;

  bool operator==(const Sliders&) const = default;
};

/// The levels of a step: a record for each channel in use, in channel order.
class SceneChannel : public Collection<Sliders> {};

/// One look of a scene. Times are texts as dmx/ShowTime.h reads them.
struct SceneStep {
  std::string FadeTime = "00:00.0";  ///< from the previous step's levels to these
  std::string WaitTime = "00:00.0";  ///< how long they hold before the next step begins
  dmx::SceneChannel SceneChannel;

  bool operator==(const SceneStep&) const = default;
};

/// The steps of a scene in play order, and the channels that are being edited.
class Steps : public Collection<SceneStep> {
 public:
  dmx::SceneChannel SceneChannel;

  bool operator==(const Steps&) const = default;
};

struct Scene {
  std::string SceneName;
  std::int16_t Loops = 1;  ///< how often it is played; below 1 it is not
  dmx::Steps Steps;

  bool operator==(const Scene&) const = default;
};

/// A show's scenes in play order.
class Scenes : public Collection<Scene> {};

}  // namespace dmx
