// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <functional>
#include <initializer_list>

#include "ui/widgets/Look.h"

class QCheckBox;
class QTableWidget;

/// What forms are made of. A form says what is on it: its rows and columns, the labels, buttons and choices
/// in them, and what a hand on each of them does.
namespace ui {

class ElidedLabel;
class QuietCombo;

/// One thing in a row or a column, and its share of the room that is left.
struct Part {
  Part(QWidget* what, int share = 0, Qt::Alignment where = {}) : widget(what), stretch(share), place(where) {}
  Part(QLayout* what, int share = 0) : layout(what), stretch(share) {}
  /// Room that stays empty.
  static Part Room(int share = 1) { return {static_cast<QWidget*>(nullptr), share}; }

  QWidget* widget = nullptr;
  QLayout* layout = nullptr;
  int stretch;
  Qt::Alignment place;
};
using Parts = std::initializer_list<Part>;

/// Side by side and below one another; the gap and the margin around all are in ems. The Tab key takes them
/// in this order.
[[nodiscard]] QHBoxLayout* Row(double gap, Parts parts = {});
[[nodiscard]] QVBoxLayout* Column(double gap, Parts parts = {});
/// What fills a widget.
void FillRow(QWidget& widget, double margin, double gap, Parts parts);
void FillColumn(QWidget& widget, double margin, double gap, Parts parts);

[[nodiscard]] QLabel* Heading(const QString& text, double ems = 1.3);
[[nodiscard]] QLabel* Caption(const QString& text, const QColor& colour);
/// A label of its own name whose text comes later; widest: the text that it keeps room for.
[[nodiscard]] QLabel* Reading(QAnyStringView name, Qt::Alignment place = Qt::AlignLeft | Qt::AlignVCenter,
                              QAnyStringView widest = {});
[[nodiscard]] ElidedLabel* Sentence(QAnyStringView name, const QColor& colour = {});

using OnPress = std::function<void()>;
using OnSwitch = std::function<void(bool)>;
using OnChoice = std::function<void(int)>;

/// A button is captioned, called and explained by its texts.
[[nodiscard]] QPushButton* PlainButton(QAnyStringView name, const Texts& texts, OnPress pressed = {});
[[nodiscard]] QPushButton* ToolButton(QAnyStringView name, const Texts& texts, OnPress pressed = {});
/// Lit while it is on.
[[nodiscard]] QPushButton* Lamp(QAnyStringView name, const Texts& texts, OnSwitch switched = {},
                                const char* kind = "lamp1");

/// One of several. The list is called and explained by its texts; chosen: by a hand.
[[nodiscard]] QuietCombo* Choice(const Skin& skin, QAnyStringView name, const Texts& texts,
                                 const QStringList& items = {}, int present = 0, OnChoice chosen = {});
[[nodiscard]] QCheckBox* Check(QAnyStringView name, const Texts& texts, bool on, OnSwitch switched);

/// A small window at its button, above it where there is no room below.
void ShowBelow(QWidget& popup, const QWidget& button);
/// A table of rows to choose from, without grid and numbers; the column that stretches is wide.
[[nodiscard]] QTableWidget* MakeTable(QAnyStringView name, const Texts& texts, const QStringList& heads,
                                      int stretches);

}  // namespace ui
