// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "dmx/Scenes.h"
#include "dmx/dmx_output.h"
#include "dmx/ports/DmxInterface.h"

namespace dmx {

/// The levels of the channels as a step keeps them. before: the step that it follows, nullptr for the first;
/// its levels are what Prev, Dif and Changed are told against. kept: what records keep that are sent nowhere
/// (channel 0); nullptr: they are dark.
[[nodiscard]] SceneChannel RecordLook(std::span<const DmxLevel, kUniverseChannels> levels,
                                      std::span<const int> channels, const SceneChannel* before,
                                      const SceneChannel* kept = nullptr);

/// Moves the channels' faders to the levels of a step.
void ShowLook(const SceneChannel& look, std::span<const int> channels, Universe& universe);

}  // namespace dmx
