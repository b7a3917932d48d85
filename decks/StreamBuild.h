// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "decks/ports/AudioEngine.h"

namespace decks {

/// Which creator opens a file; told by the end of its name alone.
enum class StreamType { General, Flac, Wma };

/// "FLAC" as the last four characters, "WMA" as the last three, in any letter case.
[[nodiscard]] StreamType StreamTypeOf(std::string_view filename);

/// The speaker flag of a pair code; 0 (all speakers) for every other code.
[[nodiscard]] std::uint32_t SpeakerFlag(int code);

/// A decoding stream by the creator of its type. Returns 0 on failure.
StreamHandle CreateDecoder(AudioEngine& engine, const std::string& filename, StreamType type,
                           std::uint64_t length, std::uint32_t flags);

/// The playable tempo stream that takes over a decoder.
StreamHandle WrapInTempo(AudioEngine& engine, StreamHandle decoder);

/// Takes the deck's seven effects off a stream, in the order that the engine was always asked in.
void RemoveEffects(AudioEngine& engine, StreamHandle stream);

/// Sets a stream's level and nothing else.
void SetLevel(AudioEngine& engine, StreamHandle stream, int volume);

}  // namespace decks
