// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/Looks.h"

#include <algorithm>
#include <cstdint>

#include "dmx/fixture.h"

namespace dmx {

SceneChannel RecordLook(std::span<const DmxLevel, kUniverseChannels> levels, std::span<const int> channels,
                        const SceneChannel* before, const SceneChannel* kept) {
  SceneChannel look;
  look.Reserve(channels.size());
  for (const int channel : channels) {
    const Sliders* previous = before == nullptr ? nullptr : before->Item(look.count() + 1);
    const Sliders* was = kept == nullptr ? nullptr : kept->Item(look.count() + 1);
    Sliders& record = look.Add();
    if (channel > 0) {
      record.ChannelValue = levels[static_cast<std::size_t>(channel - 1)];
    } else if (was != nullptr) {
      record.ChannelValue = was->ChannelValue;
    }
    record.Prev = previous == nullptr ? std::int16_t{0} : previous->ChannelValue;
    record.Dif = static_cast<std::int16_t>(record.ChannelValue - record.Prev);
    record.Changed = record.Dif != 0;
  }
  return look;
}

void ShowLook(const SceneChannel& look, std::span<const int> channels, Universe& universe) {
  auto channel = channels.begin();
  for (const Sliders& record : look) {
    if (channel == channels.end()) return;
    const int place = *channel++;
    const int level = std::clamp<int>(record.ChannelValue, 0, kHighestLevel);
    if (place > 0) universe.MoveFader(place, static_cast<DmxLevel>(level));
  }
}

}  // namespace dmx
