// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/Looks.h"

#include <algorithm>
#include <cstdint>

#include "dmx/fixture.h"

namespace dmx {

SceneChannel RecordLook(std::span<const DmxLevel, kUniverseChannels> levels, std::span<const int> channels,
                        const SceneChannel* before) {
  SceneChannel look;
  look.Reserve(channels.size());
  for (const int channel : channels) {
    const Sliders* previous = before == nullptr ? nullptr : before->Item(look.count() + 1);
    Sliders& record = look.Add();
    record.ChannelValue = levels[static_cast<std::size_t>(channel - 1)];
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
    universe.MoveFader(*channel++,
                       static_cast<DmxLevel>(std::clamp<int>(record.ChannelValue, 0, kHighestLevel)));
  }
}

}  // namespace dmx
