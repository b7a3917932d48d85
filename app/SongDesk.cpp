// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SongDesk.h"

namespace app {

SongDesk::SongDesk(const DeskContext& context, karaoke::SynthesiserFactory* /*outside*/)
    : context_(context) {}

void SongDesk::StartUp() {}

void SongDesk::Tick(const WorkstationView& /*decks*/) {
  views_.Publish();
}

void SongDesk::ShutDown() {}

}  // namespace app
