// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <vector>

#include "ui/strings/Strings.h"

namespace ui {

/// Who sings next, for the guests' eyes: a card over the whole screen between songs, a strip below the words
/// while one is sung.
///
/// The words end at nine tenths of the height, the strip lies below. Mouse and keys go through it.
class NextUpCard final : public QWidget {
  Q_OBJECT

 public:
  enum class Form { Hidden, Card, Strip };
  /// Somebody who comes, as guests know the singer.
  struct Guest {
    QString name;
    QString song;
    bool operator==(const Guest&) const = default;
  };
  /// The head is what stands above the first name.
  struct Said {
    QString head;
    std::vector<Guest> next;  ///< the first one at once, at most kMost
    QString thanks;           ///< to whoever has just sung; else empty
    bool operator==(const Said&) const = default;
  };
  static constexpr std::size_t kMost = 4;
  static constexpr double kStripBegins = 0.925;  ///< of the height

  explicit NextUpCard(QWidget& screen);

  /// Repaints only what is another.
  void Show(Form form, const Said& said);
  [[nodiscard]] Form Shown() const { return form_; }
  [[nodiscard]] const Said& What() const { return said_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void Fit();
  void PaintCard(QPainter& painter) const;
  void PaintStrip(QPainter& painter) const;

  QWidget& screen_;
  Form form_ = Form::Hidden;
  Said said_;
};

}  // namespace ui
