// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "decks/ports/SoundDesk.h"
#include "support/Clock.h"
#include "ui/skins/Skin.h"

namespace ui {

/// Three narrow upright bars: loudness with a mark at its short-term value, true peak with peak hold, and
/// what the limiter takes away, from above. Repaints only what changed by a row.
class MasterMeter final : public QWidget {
  Q_OBJECT

 public:
  explicit MasterMeter(const Skin& skin, QWidget* parent = nullptr);

  void Show(const decks::MasterReading& reading, support::TimePoint now);
  /// The highest true peak of the last seconds, in dBTP.
  [[nodiscard]] support::Decibels Peak() const { return peak_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Rows {
    int loudness = 0, mark = 0, peak = 0, held = 0, reduction = 0;
    bool operator==(const Rows&) const = default;
  };
  [[nodiscard]] int RowOf(float db) const;
  [[nodiscard]] Rows RowsNow() const;

  const Skin& skin_;
  decks::MasterReading reading_;
  support::Decibels peak_ = decks::MasterReading::kSilence;
  support::TimePoint peak_at_{};
  Rows shown_;
};

}  // namespace ui
