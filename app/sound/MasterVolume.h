// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace app {

/// The master slider runs from 0 (loudest) to 99; the system's volume from 0 to 100 percent.
[[nodiscard]] int MainVolumeOf(int percent);
/// The nearest percentage; MainVolumeOf(PercentOf(s)) is s.
[[nodiscard]] int PercentOf(int main_volume);

}  // namespace app
