// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "karaoke/DiscImage.h"

class QPainter;

namespace ui {

/// The graphics of a disc on a display: as large as it takes them, in its middle, their own ground around
/// them.
///
/// A point of the disc becomes a square of whole pixels where that fills the display well enough, else one
/// with softened edges. Threads: the window's.
class DiscScene {
 public:
  void SetSize(QSize pixels);
  /// Null: none.
  void SetImage(const std::shared_ptr<const karaoke::DiscImage>& image);
  [[nodiscard]] bool HasImage() const { return show_.has_value(); }

  /// Goes to a time of the song and gives the part of the display that looks unlike before, in pixels.
  [[nodiscard]] QRect MoveTo(std::chrono::microseconds time);
  /// A part of the display as it is since the newest MoveTo.
  void Paint(QPainter& painter, const QRect& part);
  /// Where the graphics lie in the display.
  [[nodiscard]] QRect Place() const { return place_; }

 private:
  using Row = std::array<std::uint32_t, karaoke::DiscPicture::kSeenWidth>;
  /// The points under a row or a column of pixels.
  struct Under {
    int point = 0;
    int share = 256;  ///< in 256 parts; the rest is the next point's
  };
  /// A row of points in the width of the display.
  struct Line {
    int point = -1;  ///< which one; -1 is none
    std::vector<std::uint32_t> pixels;
  };

  [[nodiscard]] static std::vector<Under> Spread(int points, int pixels);
  [[nodiscard]] QRect TakePicture(const karaoke::DiscPicture& picture);
  [[nodiscard]] QRect OnDisplay(const QRect& points) const;
  void PaintAround(QPainter& painter, const QRect& part) const;
  void PaintShrunk(QPainter& painter) const;
  void PaintBands(QPainter& painter, const QRect& part);
  void FillLine(int pixel_row, int left, int right, std::uint32_t* pixels);
  /// Valid until two other ones were asked for.
  [[nodiscard]] const std::uint32_t* LineOf(int point, int left, int right);

  std::optional<karaoke::DiscShow> show_;
  QSize size_;
  QRect place_;
  std::vector<Under> columns_, rows_;  ///< by pixel of the place
  std::array<Row, karaoke::DiscPicture::kSeenHeight> points_{};
  std::uint32_t ground_ = 0;
  bool fresh_ = true;  ///< nothing of it was shown
  std::array<Line, 2> lines_;
  QImage band_;
};

}  // namespace ui
