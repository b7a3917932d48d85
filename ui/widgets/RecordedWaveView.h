// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <chrono>
#include <memory>
#include <vector>

#include "app/recording/RecordedWave.h"
#include "ui/skins/Skin.h"

namespace ui {

/// What was recorded so far from left to right, with a mark where each track begins; there is nothing to
/// click.
class RecordedWaveView final : public QWidget {
  Q_OBJECT

 public:
  explicit RecordedWaveView(const Skin& skin, QWidget* parent = nullptr);

  /// wave: null is none.
  void Show(const std::shared_ptr<const app::RecordedWave>& wave,
            const std::vector<std::chrono::microseconds>& marks);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Skin& skin_;
  std::shared_ptr<const app::RecordedWave> wave_;
  std::vector<std::chrono::microseconds> marks_;
};

}  // namespace ui
