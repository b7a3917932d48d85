// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/OrganDesk.h"

namespace app {

OrganDesk::OrganDesk(const DeskContext& context, lightorgan::IoBoards* /*outside*/) : context_(context) {}

void OrganDesk::StartUp() {}

void OrganDesk::Tick(const WorkstationView& /*decks*/) {
  views_.Publish();
}

void OrganDesk::ShutDown() {}

}  // namespace app
