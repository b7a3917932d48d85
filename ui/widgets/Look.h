// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAnyStringView>
#include <QString>
#include <QWidget>

#include "ui/skins/Skin.h"
#include "ui/strings/Strings.h"

class QLabel;
class QLayout;

namespace ui {

/// Colours and language that a part of the window is made with. Both outlive the parts: a change of either
/// makes the parts anew.
struct Look {
  const Skin& skin;
  const Strings& say;
};

enum class Weight { Normal, Bold };

/// Pixels of a number of ems of the widget's own font.
[[nodiscard]] int Em(const QWidget& widget, double ems);

/// Pixels of a thin line: one, and more where the type is large.
[[nodiscard]] int Line(const QWidget& widget);
/// Height of the line above a list, so that lists side by side begin at the same height.
inline constexpr double kListHeadEms = 2.8;

/// Font size relative to the window's; kept when the window grows.
void SetFontEm(QWidget& widget, double ems, Weight weight = Weight::Normal);
/// The label keeps room for this text, so that nothing beside it moves when its own gets shorter.
void SetWidest(QLabel& label, QAnyStringView text);
/// Fixed height in ems of the window's font.
void SetHeightEm(QWidget& widget, double ems);
/// Margins and gaps of a layout in ems of the window's font; kept when the window grows.
void SetSpacingEm(QLayout& layout, double margin, double gap);
/// Gives the window and everything in it sizes after a base font size in points.
void ApplyBaseSize(QWidget& window, double points);

/// Object name, the name that assistive programs read, and the tooltip of a control.
void Name(QWidget& widget, QAnyStringView object_name, const QString& accessible_name,
          const QString& tip = {});
void Name(QWidget& widget, QAnyStringView object_name, const Texts& texts);
/// Of what is only read: assistive programs take its text.
void Name(QWidget& widget, QAnyStringView object_name);
/// "deck1Play": object name of a part of deck 1 or 2.
[[nodiscard]] QString DeckName(int deck, const char* part);

/// Which rules of the style sheet hold for a widget: "plain", "page", "tool", "lamp1", "lamp2".
void SetKind(QWidget& widget, const char* kind);
/// Repaints only when the text is another one.
void SetText(QLabel& label, const QString& text);
/// Colour of a label's text.
void SetTextColour(QWidget& label, const QColor& colour);

}  // namespace ui
