// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <array>

#include "decks/EqPresets.h"
#include "ui/widgets/EqGraph.h"

namespace app {
struct WorkstationView;
}

namespace ui {

/// "+3", "0", "−12".
[[nodiscard]] QString GainText(int decibels);
/// The ten values of a preset in one line.
[[nodiscard]] QString EqValuesText(const decks::EqPreset& preset);

/// Those of the twenty sliders that have a band.
[[nodiscard]] std::array<int, 10> ShownSliders(const std::array<int, decks::kEqSliders>& sliders);
/// What the bands of decks 1 and 2 do.
[[nodiscard]] std::array<EqGraph::Curve, 2> CurvesOf(const app::WorkstationView& view);

}  // namespace ui
