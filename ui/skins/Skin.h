// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPalette>
#include <array>

class QApplication;

namespace ui {

/// The colours of the window, and how close its parts stand. Text colours keep a contrast of 4.5 : 1 and more
/// on every ground they stand on.
struct Skin {
  enum class Name { Dark = 0, Light = 1 };
  /// How close rows and controls stand.
  enum class Density { Comfortable = 0, Compact = 1 };

  QColor ground;   ///< between the panels
  QColor panel;    ///< of decks, mixer, pages
  QColor raised;   ///< buttons, fields, table heads
  QColor well;     ///< sunk parts: grooves, meters, overview
  QColor stripe;   ///< every other row of a grid
  QColor chosen;   ///< the row under the cursor
  QColor line;     ///< edges
  QColor text;     ///< what must be read
  QColor dim;      ///< captions
  QColor faint;    ///< of controls that cannot be used now
  QColor warning;  ///< soon: less than half a minute left, late blocks
  QColor danger;   ///< now: last seconds, overload, a file that could not be played
  QColor good;     ///< level well below full scale
  QColor warm;     ///< level near full scale
  QColor on_deck;  ///< text on a deck's colour
  std::array<QColor, 2> decks;
  Density density = Density::Comfortable;

  /// Deck 1 or 2.
  [[nodiscard]] const QColor& Deck(int deck) const { return decks[deck == 1 ? 0 : 1]; }
  [[nodiscard]] QPalette Palette() const;
  /// Height of a row of a list, in ems.
  [[nodiscard]] double RowEms() const { return density == Density::Compact ? 1.65 : 2.1; }
};

[[nodiscard]] const Skin& SkinOf(Skin::Name name, Skin::Density density = Skin::Density::Comfortable);

/// Style, palette, font family and style sheet for all windows of the program; em is the size of their type
/// in pixels.
void ApplySkin(QApplication& application, const Skin& skin, int em);

}  // namespace ui
