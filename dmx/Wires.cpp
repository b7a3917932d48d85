// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/Wires.h"

namespace dmx {

DmxInterfaceStatus Wires::Status() const {
  using State = DmxInterfaceStatus::State;
  DmxInterfaceStatus all, lost;
  for (const DmxInterface* wire : wires_) {
    const DmxInterfaceStatus one = wire->Status();
    if (one.state > all.state) all = one;
    if (one.state == State::Searching && one.frames > 0) lost = one;
  }
  if (all.state == State::Sending && all.text.empty()) {
    all.text = lost.text;
    all.saying = lost.saying;
  }
  return all;
}

}  // namespace dmx
