// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/LightDesk.h"

namespace app {

LightDesk::LightDesk(const DeskContext& context, dmx::DmxInterface* /*outside*/) : context_(context) {}

void LightDesk::StartUp() {}

void LightDesk::Tick(const WorkstationView& /*decks*/) {
  views_.Publish();
}

void LightDesk::ShutDown() {}

}  // namespace app
