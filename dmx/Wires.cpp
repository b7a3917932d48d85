// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/Wires.h"

namespace dmx {

DmxInterfaceStatus Wires::Status() const {
  DmxInterfaceStatus all;
  for (const DmxInterface* wire : wires_) {
    const DmxInterfaceStatus one = wire->Status();
    if (one.state > all.state) {
      const auto frames = all.frames;
      all = one;
      all.frames += frames;
    } else {
      all.frames += one.frames;
    }
  }
  return all;
}

}  // namespace dmx
