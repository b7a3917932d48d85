// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace ui {

/// A round face that bounces on the words, drawn in that many pixels.
[[nodiscard]] QImage Smile(int pixels);

}  // namespace ui
