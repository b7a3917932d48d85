// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "dmx/ports/DmxInterface.h"
#include "support/Clock.h"

namespace ui {

/// The levels of the faders as the hand has left them, before they come back in the view.
///
/// Law: a level that was moved here a moment ago is believed before an older echo of it. One that is only
/// shown stays until it is moved or let go.
class LevelMirror {
 public:
  using Levels = std::array<dmx::DmxLevel, dmx::kUniverseChannels>;

  /// Requires: 1 to dmx::kUniverseChannels.
  void Move(int channel, dmx::DmxLevel level, support::TimePoint now);
  /// Shows a level that is not sent. Requires: as Move.
  void Hold(int channel, dmx::DmxLevel level);
  /// All that is only shown gives way to what is reported next.
  void LetGo() { held_ = {}; }
  /// True when any level is another one now.
  bool Take(const Levels& reported, support::TimePoint now);

  [[nodiscard]] const Levels& Now() const { return levels_; }
  [[nodiscard]] dmx::DmxLevel At(int channel) const { return levels_[static_cast<std::size_t>(channel - 1)]; }

 private:
  Levels levels_{};
  std::array<support::TimePoint, dmx::kUniverseChannels> sent_at_{};
  std::array<bool, dmx::kUniverseChannels> sent_{};
  std::array<bool, dmx::kUniverseChannels> held_{};
};

}  // namespace ui
