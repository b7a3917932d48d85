// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPixmap>
#include <QSlider>
#include <chrono>
#include <memory>
#include <vector>

#include "app/sound/DeckView.h"
#include "music/Wave.h"
#include "ui/widgets/CuePaint.h"
#include "ui/widgets/MixHandle.h"
#include "ui/widgets/SeekGuard.h"
#include "ui/widgets/WavePaint.h"

namespace ui {

/// The whole track from left to right, with the place that is heard; a click or a drag goes to another one,
/// unless it is guarded.
///
/// The track is prepared in two pictures, heard and still to come; moving on repaints only the pixels between
/// the old place and the new one. The times stand on a strip of their own below, where no mark runs over
/// them.
class WaveOverview final : public QSlider {
  Q_OBJECT

 public:
  /// Slim: without times and handles, for a line of a few; the mix points are only shown.
  enum class Form { Whole, Slim };
  WaveOverview(const Skin& skin, const QColor& accent, QWidget* parent = nullptr, Form form = Form::Whole);

  /// No length: nothing is loaded. A length that is not exact yet is drawn the same way and may still change.
  /// The wave may come later than the length.
  void Show(std::chrono::microseconds position, std::chrono::microseconds length,
            const std::shared_ptr<const music::Wave>& wave = nullptr);

  /// The mix points of the track, and the sign of life while they are looked for.
  void ShowMixPoints(const app::DeckView& view);
  void ShowCues(const CueMarks& marks);
  /// Where a section begins, with its kind; empty where that is not to be said.
  struct SectionMark {
    std::chrono::microseconds start;
    QString name;
    bool operator==(const SectionMark&) const = default;
  };
  void ShowSections(const std::vector<SectionMark>& sections);
  [[nodiscard]] MixHandle& Handle(app::MixPoint which) { return *handles_.Of(which); }

  /// Of the track, at a column of the widget.
  [[nodiscard]] std::chrono::microseconds PlaceAt(int column) const;

  void Guard(SeekGuard guard) { guard_ = std::move(guard); }

  [[nodiscard]] QSize sizeHint() const override;
  /// The Menu key asks for the place that is heard.
  [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// The user let go at this place.
  void SeekWanted(std::chrono::microseconds position);
  /// The user would have gone to another place.
  void Guarded();
  void MixPointMoved(app::MixPoint which, std::chrono::microseconds place);
  void MixPointReset(app::MixPoint which);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void sliderChange(SliderChange change) override;

 private:
  [[nodiscard]] int ColumnOf(std::chrono::microseconds position) const;
  [[nodiscard]] QPixmap PaintTrack(WaveTone tone) const;
  /// The part above the strip of times.
  [[nodiscard]] QRect WaveBox() const;
  void PaintTimes(QPainter& painter) const;
  void RepaintColumn(int column);
  void AimAt(int column);
  void MakeHandle(app::MixPoint which);
  void PlaceHandles();
  void PaintMixPoints(QPainter& painter) const;
  void PaintSections(QPainter& painter) const;
  /// Between the track's ends and not beyond the other point.
  [[nodiscard]] std::chrono::microseconds Allowed(app::MixPoint which, std::chrono::microseconds place) const;

  const Skin& skin_;
  QColor accent_;
  const Form form_;
  std::shared_ptr<const music::Wave> wave_;
  std::chrono::microseconds position_{0};
  std::chrono::microseconds length_{0};
  SeekGuard guard_;
  int shown_column_ = 0;
  int aim_ = -1;  ///< column under the pointer while it is held down
  bool has_points_ = false;
  app::MixPointPair<std::chrono::microseconds> points_;
  app::MixPointPair<MixHandle*> handles_;
  double busy_ = 0;
  CueMarks cues_;
  std::vector<SectionMark> sections_;
  QPixmap heard_;
  QPixmap to_come_;
};

}  // namespace ui
