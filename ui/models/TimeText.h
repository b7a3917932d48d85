// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <chrono>

namespace ui {

/// "03:45"; minutes may pass 99. Parts of a second are dropped.
[[nodiscard]] QString MinutesText(std::chrono::microseconds time);
/// "03:45.120".
[[nodiscard]] QString FineTimeText(std::chrono::microseconds time);

}  // namespace ui
