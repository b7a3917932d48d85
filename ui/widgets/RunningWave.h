// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPixmap>
#include <QWidget>
#include <chrono>
#include <map>
#include <memory>
#include <optional>

#include "music/BeatGrid.h"
#include "music/Wave.h"
#include "ui/skins/Skin.h"
#include "ui/widgets/CuePaint.h"
#include "ui/widgets/SeekGuard.h"

namespace ui {

/// The seconds around the place that is heard, moving past a mark that stands still. Dragging it looks for
/// another place, which is taken when the hand lets go. While it is guarded, the hand has to take hold with a
/// double click, or with Shift.
///
/// Painted from tiles that are drawn once and then only moved.
class RunningWave final : public QWidget {
  Q_OBJECT

 public:
  RunningWave(const Skin& skin, const QColor& accent, QWidget* parent = nullptr);

  /// No wave: nothing is loaded, or it is being made.
  void Show(std::chrono::microseconds position, std::chrono::microseconds length,
            const std::shared_ptr<const music::Wave>& wave);
  void ShowCues(const CueMarks& marks);
  /// Null: no beats are known. bar: a beat that begins a bar, or nothing.
  void ShowBeats(const std::shared_ptr<const music::BeatGrid>& grid,
                 std::optional<music::Seconds> bar = std::nullopt);
  /// Of the track, at a column of the widget.
  [[nodiscard]] std::chrono::microseconds PlaceAt(int column) const;
  void Guard(SeekGuard guard) { guard_ = std::move(guard); }
  /// Tiles drawn since the beginning.
  [[nodiscard]] int TilesDrawn() const { return tiles_drawn_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// The user let go at this place.
  void SeekWanted(std::chrono::microseconds position);
  /// The user would have gone to another place.
  void Guarded();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] double PixelsASecond() const;
  /// Pixels from the start of the track to the place under the mark.
  [[nodiscard]] int Scroll() const;
  [[nodiscard]] int MarkColumn() const { return width() / 3; }
  [[nodiscard]] std::chrono::microseconds DraggedTo() const;
  const QPixmap& Tile(int number);
  [[nodiscard]] QPixmap DrawTile(int number) const;
  void DrawBeats(QPainter& painter, int first) const;
  void DropTiles();
  void TakeHold(int column);

  const Skin& skin_;
  QColor accent_;
  std::shared_ptr<const music::Wave> wave_;
  std::shared_ptr<const music::BeatGrid> grid_;
  std::optional<music::Seconds> bar_;
  std::chrono::microseconds position_{0};
  std::chrono::microseconds length_{0};
  CueMarks cues_;
  std::map<int, QPixmap> tiles_;
  int shown_scroll_ = 0;
  int tiles_drawn_ = 0;
  SeekGuard guard_;
  bool held_ = false;
  int held_at_ = 0;
  std::optional<QPoint> guarded_at_;         ///< where the hand pressed in vain
  int dragged_ = 0;                          ///< pixels to the right since the hand took hold
  std::chrono::microseconds held_place_{0};  ///< under the mark at that moment
};

}  // namespace ui
