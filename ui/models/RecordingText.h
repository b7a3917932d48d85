// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <chrono>
#include <cstdint>

namespace ui {

class Strings;

/// "1:02:03"; hours may pass 99. Parts of a second are dropped.
[[nodiscard]] QString HoursText(std::chrono::microseconds time);
/// "12.3 MB", "1.24 GB", of a thousand each.
[[nodiscard]] QString SizeText(std::int64_t bytes, const Strings& say);
/// How much longer something may go on; from two hours on in whole ones.
[[nodiscard]] QString RoomText(std::chrono::seconds room, const Strings& say);

}  // namespace ui
