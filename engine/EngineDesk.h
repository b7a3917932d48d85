// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>
#include <optional>

#include "decks/ports/SoundDesk.h"
#include "engine/DeviceTable.h"
#include "engine/Players.h"

namespace engine {

/// The desk of the engine's streams and devices. Threads: the owner's.
class EngineDesk final : public decks::SoundDesk {
 public:
  /// Both outlive it.
  EngineDesk(Players& players, DeviceTable& devices) : players_(players), devices_(devices) {}

  void SetTone(decks::StreamHandle stream, const decks::Tone& tone) override;
  void Direct(const decks::DeskLines& lines) override;
  bool HallReachesHeadphones() override;
  decks::MasterReading Master() override;

 private:
  /// The hall's music on its way to head-phones on another device; null where that is not its way.
  [[nodiscard]] std::shared_ptr<const PassingSound> Passing(std::size_t deck);
  void PlaceHalls(DeviceSlot& phones);

  Players& players_;
  DeviceTable& devices_;
  decks::DeskLines lines_;
  std::array<std::optional<double>, HallElsewhere::kHalls> behind_;  ///< seconds
};

}  // namespace engine
