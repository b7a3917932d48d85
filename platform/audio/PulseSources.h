// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/pulseaudio.h>

#include <vector>

#include "engine/ports/InputDevice.h"
#include "platform/audio/PulseConnection.h"

namespace platform::audio {

/// A sound input of the server with the order of its channels in the server's own words.
struct PulseSource {
  engine::InputDeviceInfo info;
  pa_channel_map map;
};

/// In the server's order; empty when the server does not answer. What is made of another source hears what
/// that one hears. Requires: the connection's lock.
[[nodiscard]] std::vector<PulseSource> AskForSources(PulseConnection& connection);

}  // namespace platform::audio
