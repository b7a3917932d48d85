// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>
#include <vector>

#include "app/songs/SongView.h"
#include "support/Settings.h"
#include "ui/widgets/LyricScene.h"

class QScreen;

namespace ui {

class LyricSurface;
class NextUpCard;

/// The singers' window: the words and nothing else, on a screen of theirs or in a window of its own.
///
/// The choice is remembered. A screen that is pulled takes the window with it, so that it never covers the
/// decks, and brings it back when it is plugged in again. Escape and a double click put the window away.
class frmKaraoke final : public QWidget {
  Q_OBJECT

 public:
  /// main: the window that is never covered unasked.
  frmKaraoke(support::Settings& settings, const QWidget& main);
  ~frmKaraoke() override;

  /// Where the words can be shown: nowhere, in a window, or on a screen, by its name.
  static const QString kNowhere;
  static const QString kInWindow;
  struct ScreenPlace {
    QString name;
    int number = 0;  ///< from 1, as the system counts
    QSize size;
    bool connected = true;
  };
  /// The screens there are, and the one that was chosen and is not there now.
  [[nodiscard]] std::vector<ScreenPlace> Screens() const;
  [[nodiscard]] const QString& Place() const { return place_; }
  /// Stored.
  void ShowOn(const QString& place);
  /// As it was stored; not over the decks.
  void Restore();

  void SetLook(const SceneLook& look);
  void Show(const app::SongView& view, support::TimePoint now);
  /// Who sings next, over the words or below them.
  [[nodiscard]] NextUpCard& NextUp() { return *next_up_; }

 Q_SIGNALS:
  /// Screens came or went, or the window was put elsewhere.
  void PlacesChanged();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void Appear();
  void AppearOn(QScreen& screen);
  /// The screen has another size now.
  void FillScreen();
  void ScreenCame(QScreen* screen);
  void ScreenWent(QScreen* screen);
  void Leave();

  support::Settings& settings_;
  const QWidget& main_;
  LyricSurface* surface_;
  NextUpCard* next_up_;
  QString place_;
  QPointer<QScreen> screen_;  ///< that it fills
};

}  // namespace ui
