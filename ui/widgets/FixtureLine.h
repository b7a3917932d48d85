// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <vector>

#include "ui/models/ChannelText.h"
#include "ui/skins/Skin.h"

namespace ui {

/// Names of the fixtures above the faders of their channels.
class FixtureLine final : public QWidget {
  Q_OBJECT

 public:
  explicit FixtureLine(const Skin& skin, QWidget* parent = nullptr);

  /// A name and where it stands, from the left of this widget.
  struct Mark {
    int left = 0;
    int right = 0;
    QString name;
    QString tip;

    bool operator==(const Mark&) const = default;
  };
  void Show(std::vector<Mark> marks);
  [[nodiscard]] const std::vector<Mark>& Shown() const { return marks_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  const Skin& skin_;
  std::vector<Mark> marks_;
};

}  // namespace ui
