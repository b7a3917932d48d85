// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "karaoke/SongEvents.h"

namespace karaoke {

/// What a synthesiser must be sent to be as if a part of a song had been played: the last of every setting,
/// then the notes that still sound.
class SongChase {
 public:
  void Pass(const SongEvents& song, const SongEvent& event);
  /// In an order that means the same.
  [[nodiscard]] std::vector<SongEvent> Result() const;

 private:
  /// Settings that only their last value matters of: kind, and the controller or key.
  using Values = std::map<std::pair<std::uint8_t, std::uint8_t>, SongEvent>;

  void PassControl(const SongEvent& event);
  void ResetControls(std::size_t channel);

  std::vector<SongEvent> ordered_;  ///< what means something by its order: banks, programs, parameters
  Values values_;
  std::map<std::pair<std::size_t, std::uint8_t>, SongEvent> notes_;
};

}  // namespace karaoke
