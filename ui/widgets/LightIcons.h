// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>

#include "dmx/fixture.h"

namespace ui {

/// The pictures of stage lighting, drawn in one colour on nothing. Colour pictures have their own.

/// A picture that looks the same whether its row is chosen, its button enabled or not.
[[nodiscard]] QIcon PlainIcon(const QPixmap& picture);

/// What a channel does.
[[nodiscard]] QPixmap FunctionPicture(dmx::ChannelFunction function, int pixels, const QColor& ink);
/// What a preset does; empty for PresetEffect::None and numbers that are none.
[[nodiscard]] QPixmap EffectPicture(dmx::PresetEffect effect, int pixels, const QColor& ink);

/// How many pictures there are to choose from; index 0 is the open gobo, and white.
inline constexpr int kGobos = 12;
inline constexpr int kColours = 14;
[[nodiscard]] QPixmap GoboPicture(int gobo, int pixels, const QColor& ink);
[[nodiscard]] QColor ColourOfPicture(int colour);
[[nodiscard]] QPixmap ColourPicture(int colour, int pixels, const QColor& edge);

}  // namespace ui
