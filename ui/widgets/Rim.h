// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>

class QColor;
class QPainter;

namespace ui {

/// How well two colours are told from each other, from 1 to 21.
[[nodiscard]] double Contrast(const QColor& a, const QColor& b);

/// Fills an area with any colour so that it is seen on its ground in every skin: where the two are too alike,
/// as white on a light one, with a rim around it. line: how thick.
void FillRimmed(QPainter& painter, const QRect& area, const QColor& colour, const QColor& ground,
                const QColor& rim, int line);

}  // namespace ui
