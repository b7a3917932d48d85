// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

namespace ui {

/// A line of text, or two where it is as high, that ends in an ellipsis where the room ends; the whole of it
/// is the tooltip then.
class ElidedLabel final : public QLabel {
  Q_OBJECT

 public:
  /// Stretches: takes the room that is left. Natural: as wide as its text where there is room, up to a limit.
  enum class Width { Stretches, Natural };

  explicit ElidedLabel(Width width = Width::Stretches, QWidget* parent = nullptr);

  /// Takes the height it is given and breaks a text that is too long for one line.
  void UseTwoLines();
  /// Repaints only when the text is another one.
  void Show(const QString& text);
  /// The tooltip, instead of the whole text; empty for that.
  void SetTip(const QString& tip);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void UpdateTip();
  bool two_lines_ = false;
  QString tip_;
};

}  // namespace ui
