// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <ratio>
#include <string>
#include <string_view>

#include "dmx/Scenes.h"

namespace dmx {

/// What a show counts in.
using Tenths = std::chrono::duration<std::int64_t, std::deci>;

/// The longest time that the seven characters of a step's time can tell.
inline constexpr Tenths kLongestStepTime{99 * 600 + 599};

/// Minutes from characters 1 and 2, seconds from 4 and 5, tenths from 7; what is no number there counts 0.
[[nodiscard]] Tenths ParseShowTime(std::string_view text);
/// "mm:ss.t"; minutes may pass 99, and then there are more characters.
[[nodiscard]] std::string ShowTimeText(Tenths time);
/// Exactly seven characters, for a step; brought between 0 and kLongestStepTime.
[[nodiscard]] std::string StepTimeText(Tenths time);

/// A time as a hand types it: seconds, "1.5", or minutes before a colon, "2:30.5". Nothing where it is no
/// time.
[[nodiscard]] std::optional<Tenths> ReadTypedTime(std::string_view text);

/// The fade and wait times of its steps, played once.
[[nodiscard]] Tenths LengthOf(const Scene& scene);
/// Of all scenes, each as often as its loops say.
[[nodiscard]] Tenths PlayingTime(const Scenes& scenes);

}  // namespace dmx
