// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QRect>
#include <span>

#include "music/Wave.h"
#include "ui/skins/Skin.h"

class QPainter;

namespace ui {

/// Colours of a drawn wave: its outline and, inside it, the three bands from the bass outwards in.
struct WaveInk {
  QColor outline;
  QColor low;
  QColor mid;
  QColor high;
};

/// Of a deck's wave; what was heard already steps back.
enum class WaveTone { ToCome, Heard };
[[nodiscard]] WaveInk InkOf(const Skin& skin, const QColor& accent, WaveTone tone);

/// What one pixel shows of several columns: nothing that sticks out of any of them is lost.
[[nodiscard]] music::WaveColumn Together(std::span<const music::WaveColumn> columns);

/// Paints the columns from number `first` on into a box, `step` of them (or a part of one) for each pixel.
/// Places before the first column and after the last one stay as they are.
void PaintWave(QPainter& painter, const QRect& box, std::span<const music::WaveColumn> columns, double first,
               double step, const WaveInk& ink);

}  // namespace ui
