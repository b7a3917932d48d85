// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>

#include "ui/skins/Skin.h"

namespace ui {

/// A field of a colour, with or without a caption.
class ColourButton final : public QAbstractButton {
  Q_OBJECT

 public:
  ColourButton(const QString& caption, const Skin& skin, QWidget* parent = nullptr);

  void SetColour(const QColor& colour);
  [[nodiscard]] const QColor& Colour() const { return colour_; }

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Skin& skin_;
  QColor colour_;
};

}  // namespace ui
