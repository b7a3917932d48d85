// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "karaoke/CTextOutlineEx.h"
#include "support/Settings.h"

namespace karaoke {

/// What a piece of text on the singers' screen is.
enum class LyricRole { CurrentText, CurrentWord, NextText };
/// Where it is drawn: the picture in the main window, or the window for the singers.
enum class LyricDisplay { MainWindow, SingersWindow };

/// How the user wants the words to look.
struct LyricLook {
  std::string font_name;
  bool font_bold = false;
  bool font_italic = false;
  std::array<Colour, 3> fill{};  ///< by role
  Colour outline = 0;
  Colour background = 0;
  std::string bouncing_ball;  ///< a picture's path; empty: our own
  /// Ours: a broad outline behind the letters, and a background that is more than one colour.
  bool stage = false;
  bool operator==(const LyricLook&) const = default;
};

/// What words look like while nobody wishes anything: warm on dark. Sung and unsung words differ in how
/// bright they are, not in their hue alone.
[[nodiscard]] LyricLook StageLook();

/// Who reads the look: without a stored background a display is black, the settings page white.
enum class LookReader { Display, SettingsPage };
/// A look of the user's own.
[[nodiscard]] LyricLook ReadLook(const support::Settings& settings, LookReader reader);

/// A decimal number, or "&H" and a hexadecimal one; the fallback for anything else.
[[nodiscard]] Colour ParseColour(std::string_view text, Colour fallback);

/// 2 pixels for fonts of 30 points and more, else 1.
[[nodiscard]] int PenWidthFor(float font_size);

/// Draws the three roles, with a renderer of its own for each on each display.
class LyricPainter {
 public:
  explicit LyricPainter(DrawingSystem& system);

  void Look(const LyricLook& look) { look_ = look; }
  void Draw(LyricRole role, LyricDisplay display, DrawingSurface& surface, const FontObject& font,
            std::string_view text, int x, int y);

 private:
  using Pair = std::array<CTextOutlineEx, 2>;

  LyricLook look_;
  std::array<Pair, 3> renderers_;
};

}  // namespace karaoke
