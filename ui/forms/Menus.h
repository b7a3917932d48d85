// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPoint>
#include <chrono>
#include <functional>
#include <initializer_list>
#include <vector>

#include "ui/widgets/Look.h"

class QAbstractButton;
class QAction;
class QKeySequence;
class QMenu;

namespace app {
class Deck;
}  // namespace app

/// What a right click or the Menu key offers: the acts that buttons and keys of the same page have.
namespace ui {

/// An empty menu that goes when it is closed, in the size of type of the widget.
[[nodiscard]] QMenu* NewMenu(QWidget& over, const QString& name);
/// With the key that does the same, where there is one.
QAction* AddAct(QMenu& menu, const QString& name, const QString& text, const QKeySequence& key,
                std::function<void()> act);

/// The menu of a widget, of parts that several forms know; each part stands behind a line.
class ContextMenu final : public QObject {
  Q_OBJECT

 public:
  /// Adds entries for what is chosen, or for the place within the widget that the menu was asked for at.
  using Fill = std::function<void(QMenu& menu, const QPoint& place)>;

  /// Goes with the widget.
  ContextMenu(QWidget& widget, const QString& name);
  void AddFirst(Fill fill) { parts_.insert(parts_.begin(), std::move(fill)); }
  void AddLast(Fill fill) { parts_.push_back(std::move(fill)); }

 private:
  void PopUp(const QPoint& place);

  QWidget& widget_;
  const QString name_;
  std::vector<Fill> parts_;
};

/// Each entry presses a button; one that is off or not there has none.
void GiveButtonMenu(QWidget& rows, const QString& name, std::vector<QAbstractButton*> buttons);

/// On a wave of deck 1 or 2: going to the place, and what begins or ends there. place_at: of a point in it.
void GiveWaveMenu(QWidget& wave, app::Deck& deck,
                  std::function<std::chrono::microseconds(const QPoint& place)> place_at, const Look& look);

}  // namespace ui
