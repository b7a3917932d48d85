// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/pulseaudio.h>

#include <vector>

#include "engine/ports/OutputDevice.h"
#include "platform/audio/PulseConnection.h"

namespace platform::audio {

/// A sound output of the server with the order of its channels in the server's own words.
struct PulseSink {
  engine::OutputDeviceInfo info;
  pa_channel_map map;
};

/// The default first, then in the server's order; empty when the server does not answer.
/// Requires: the connection's lock.
[[nodiscard]] std::vector<PulseSink> AskForSinks(PulseConnection& connection);

[[nodiscard]] engine::Speaker SpeakerOf(pa_channel_position_t position);

}  // namespace platform::audio
