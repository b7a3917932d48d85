// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QThreadPool>
#include <QWidget>

#include "app/songs/SongView.h"
#include "ui/widgets/DiscScene.h"
#include "ui/widgets/LyricScene.h"

namespace ui {

/// Shows the words of the song that is heard, or its disc's graphics.
///
/// Lines that come are drawn by a thread of its own; what is shown follows from the time alone, so a window
/// that stood still is right in its next picture. Owns: that thread, for which the destructor waits.
class LyricSurface final : public QWidget {
  Q_OBJECT

 public:
  explicit LyricSurface(karaoke::LyricDisplay display, QWidget* parent = nullptr);
  ~LyricSurface() override;

  void SetLook(const SceneLook& look);
  /// What stands there while no song does.
  void SetSample(std::shared_ptr<const app::SongWords> words, std::chrono::microseconds time);
  /// What is said while nothing else stands there; nothing without it.
  void SetHint(const QString& hint) { hint_ = hint; }
  void Show(const app::SongView& view, support::TimePoint now);
  /// Of the picture that is shown.
  [[nodiscard]] std::chrono::microseconds ShownTime() const { return time_; }
  [[nodiscard]] LyricScene& Scene() { return scene_; }
  [[nodiscard]] const DiscScene& Disc() const { return disc_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void FitScene();
  void DrawAhead();
  void ShowWords(const app::SongView& view, support::TimePoint now);
  void ShowDisc(std::chrono::microseconds time);
  void UpdatePixels(const QRect& changed);

  LyricScene scene_;
  DiscScene disc_;
  std::shared_ptr<const app::SongWords> sample_;
  std::chrono::microseconds sample_time_{0};
  std::chrono::microseconds time_{0};
  QString hint_;
  bool drawing_ = false;
  QThreadPool pool_;
};

}  // namespace ui
