// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "karaoke/SongReader.h"
#include "karaoke/TempoMap.h"
#include "karaoke/ports/Synthesiser.h"
#include "support/Result.h"

namespace karaoke {

/// What is sent to a synthesiser at one time.
struct SongEvent {
  Microseconds at{0};
  ChannelMessage message;       ///< a status of 0xF0 means a system exclusive one
  std::uint32_t exclusive = 0;  ///< its number then
};

/// Everything of a song that sounds, in the order of time.
struct SongEvents {
  std::vector<SongEvent> events;
  std::vector<std::string> exclusives;
  Microseconds length{0};
  TempoMap tempo;
};

/// The tracks of a MIDI file, merged.
[[nodiscard]] support::Result<SongEvents> ReadSongEvents(std::string_view bytes);

/// The channel whose notes begin with the syllables; nothing when none does so for half of them.
[[nodiscard]] std::optional<std::size_t> FindMelodyChannel(const SongEvents& song,
                                                           const std::vector<Syllable>& syllables);

/// Channel 10, and those that a file makes drum channels by a bank or a system exclusive message.
class DrumChannels {
 public:
  [[nodiscard]] bool operator[](std::size_t channel) const { return drums_[channel]; }
  void Follow(const ChannelMessage& message);
  void FollowExclusive(std::string_view message);

 private:
  bool drums_[16] = {false, false, false, false, false, false, false, false, false, true};
};

/// A message that makes every setting of a synthesiser new (GM, GS and XG have one each).
[[nodiscard]] bool IsSystemReset(std::string_view exclusive);

}  // namespace karaoke
