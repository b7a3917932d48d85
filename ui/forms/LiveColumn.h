// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QWidget>
#include <span>
#include <vector>

#include "app/lights/LiveLightStation.h"
#include "ui/widgets/Look.h"

class QPushButton;

namespace ui {

class Fader;

/// A group of fixtures on the live console: its light, and who has it.
class LiveColumn final : public QWidget {
  Q_OBJECT

 public:
  struct Group {
    QString name;
    std::vector<int> fixtures;  ///< positions from 1
    int missing = 0;            ///< how many of it are not patched
    bool saved = false;
    bool operator==(const Group&) const = default;
  };
  static constexpr double kButtonEms = 3.4;  ///< 44 pixels in the smallest window that has room for them

  /// key: what its parts are named after.
  LiveColumn(const Group& group, const QString& key, const Look& look, QWidget* parent = nullptr);

  void Show(std::span<const app::LiveFixture> fixtures, bool chosen);

  [[nodiscard]] QSize sizeHint() const override { return {Em(*this, kWidthEms), Em(*this, kLeastEms)}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 Q_SIGNALS:
  void Chosen();
  /// 0 to 1.
  void LightWanted(double light);
  void LetGoWanted();

 private:
  static constexpr double kWidthEms = 6.4;
  static constexpr double kLeastEms = 17;

  Group group_;
  Look look_;
  QPushButton* name_;
  Fader* level_;
  QPushButton* on_;
  QPushButton* owner_;
  double last_ = 1;  ///< the light that it had when it was switched off
};

}  // namespace ui
