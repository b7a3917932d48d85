// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "app/OutputView.h"
#include "support/Sentences.h"
#include "support/Settings.h"

namespace app {

inline constexpr int kOutputs = 3;  ///< deck 1, deck 2, pre-listen
inline constexpr int kPrelistenOutput = 3;

/// An output as start-up and the settings page ask for it.
struct OutputWish {
  OutputView place;
  std::uint32_t flags = 0;  ///< for opening the device
  std::string name;         ///< of the device, for sentences; empty when it is not known
};

struct OutputsAtStart {
  std::array<OutputWish, kOutputs> wishes;
  support::Saying notice;  ///< a sentence when a stored device is not there, else none
};

/// Otherwise deck 2 plays where deck 1 does.
[[nodiscard]] bool HasSecondOutput(const support::Settings& settings);

/// Where the outputs play according to the settings.
///
/// A stored device name that is found wins over the number, because numbers may change between two runs. A
/// device that is gone is replaced by the first one for a deck, and by none for the head-phones.
[[nodiscard]] OutputsAtStart ReadOutputs(const support::Settings& settings,
                                         std::span<const std::string> device_names,
                                         const support::Sentences& say);

/// Stores a choice of output 1 to 3 with the name of its device.
void StoreOutput(support::Settings& settings, int output, OutputView place,
                 std::span<const std::string> device_names);

/// Deck 2 plays where deck 1 does; what it played on is kept.
void ShareFirstOutput(support::Settings& settings);

/// The deck, 1 or 2, that plays on the loudspeakers of the head-phones; 0 when they are their own.
[[nodiscard]] int DeckOnHeadphones(const std::array<OutputView, kOutputs>& outputs);

/// A wish for a place; the flags ask for speaker assignment where a pair is chosen.
[[nodiscard]] OutputWish WishFor(OutputView place, std::span<const std::string> device_names,
                                 const support::Sentences& say);

}  // namespace app
