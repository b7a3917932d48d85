// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include "app/sound/EffectTable.h"

namespace ui {

/// What a knob of an effect means where it stands, with its unit: "375 ms", "1.2 kHz", "40 %".
[[nodiscard]] QString EffectText(const app::EffectKnob& knob, int slider);
/// The same of a meaning that is not the knob's own.
[[nodiscard]] QString EffectText(app::EffectKnob::Unit unit, double meaning);
/// "1/4", "3/4", "2": of a length in quarters of a beat.
[[nodiscard]] QString BeatText(int quarters);

}  // namespace ui
