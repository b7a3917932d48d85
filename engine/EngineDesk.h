// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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
  Players& players_;
  DeviceTable& devices_;
  decks::DeskLines lines_;
};

}  // namespace engine
