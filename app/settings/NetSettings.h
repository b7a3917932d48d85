// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "dmx/ports/NetOutput.h"

namespace support {
class Settings;
}

namespace app {

/// Lamps behind a network, as the settings have it; what is out of bounds is off, or the nearest. The id of
/// this program's sender is made and stored when it is asked for first.
[[nodiscard]] dmx::NetWish ReadNetWish(support::Settings& settings);
void StoreNetWish(support::Settings& settings, const dmx::NetWish& wish);

}  // namespace app
