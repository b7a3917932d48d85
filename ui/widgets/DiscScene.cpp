// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/DiscScene.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstring>

namespace ui {
namespace {

using karaoke::DiscPicture;

constexpr std::uint32_t kOpaque = 0xFF000000;
constexpr int kWhole = 256;
constexpr int kBandRows = 16;  ///< few enough to stay near the processor

/// share of 256 parts of one colour, the rest of the other.
std::uint32_t Blend(std::uint32_t one, std::uint32_t other, int share) {
  const auto part = static_cast<std::uint32_t>(share), rest = static_cast<std::uint32_t>(kWhole - share);
  constexpr std::uint32_t kOuter = 0xFF00FF, kInner = 0x00FF00;
  const std::uint32_t outer = ((one & kOuter) * part + (other & kOuter) * rest) >> 8 & kOuter;
  const std::uint32_t inner = ((one & kInner) * part + (other & kInner) * rest) >> 8 & kInner;
  return kOpaque | outer | inner;
}

/// Pixels a point: whole ones where little of the display is lost by it.
double ScaleFor(QSize display) {
  constexpr double kWellFilled = 0.85;
  const double most = std::min(static_cast<double>(display.width()) / DiscPicture::kSeenWidth,
                               static_cast<double>(display.height()) / DiscPicture::kSeenHeight);
  const double whole = std::floor(most);
  return whole >= most * kWellFilled ? whole : most;
}

}  // namespace

std::vector<DiscScene::Under> DiscScene::Spread(int points, int pixels) {
  std::vector<Under> under(static_cast<std::size_t>(pixels));
  for (int pixel = 0; pixel < pixels; ++pixel) {
    // In parts of a pixel times a point, so that it comes out even.
    const std::int64_t begin = std::int64_t{pixel} * points, end = begin + points;
    const std::int64_t point = begin / pixels, seam = (point + 1) * pixels;
    const bool both = end > seam && point + 1 < points;
    under[static_cast<std::size_t>(pixel)] = {
        static_cast<int>(point), both ? static_cast<int>((seam - begin) * kWhole / points) : kWhole};
  }
  return under;
}

void DiscScene::SetSize(QSize pixels) {
  if (pixels == size_) return;
  size_ = pixels;
  const double scale = ScaleFor(pixels);
  const QSize seen(static_cast<int>(std::lround(DiscPicture::kSeenWidth * scale)),
                   static_cast<int>(std::lround(DiscPicture::kSeenHeight * scale)));
  place_ = QRect(QPoint((pixels.width() - seen.width()) / 2, (pixels.height() - seen.height()) / 2), seen);
  columns_ = Spread(DiscPicture::kSeenWidth, place_.width());
  rows_ = Spread(DiscPicture::kSeenHeight, place_.height());
  for (Line& line : lines_) line = {-1, std::vector<std::uint32_t>(columns_.size())};
  band_ = QImage(std::max(1, place_.width()), kBandRows, QImage::Format_RGB32);
  fresh_ = true;
}

void DiscScene::SetImage(const std::shared_ptr<const karaoke::DiscImage>& image) {
  if (image == (show_ ? show_->Image() : nullptr)) return;
  show_.reset();
  if (image != nullptr) show_.emplace(image);
  fresh_ = true;
}

QRect DiscScene::MoveTo(std::chrono::microseconds time) {
  if (!show_) return {};
  const DiscPicture& picture = show_->At(time);
  if (!show_->Changed() && !fresh_) return {};
  const QRect points = TakePicture(picture);
  const bool all = fresh_ || ground_ != (picture.Ground() | kOpaque);
  ground_ = picture.Ground() | kOpaque;
  fresh_ = false;
  return all ? QRect(QPoint(0, 0), size_) : OnDisplay(points);
}

/// The points that changed.
QRect DiscScene::TakePicture(const DiscPicture& picture) {
  int left = DiscPicture::kSeenWidth, right = -1, top = -1, bottom = -1;
  for (int y = 0; y < DiscPicture::kSeenHeight; ++y) {
    Row row;
    const auto numbers = picture.SeenRow(y);
    std::transform(numbers.begin(), numbers.end(), row.begin(),
                   [&](std::uint8_t number) { return picture.colours[number] | kOpaque; });
    Row& old = points_[static_cast<std::size_t>(y)];
    const auto first = std::mismatch(row.begin(), row.end(), old.begin()).first;
    if (first == row.end()) continue;
    const auto last = std::mismatch(row.rbegin(), row.rend(), old.rbegin()).first;
    left = std::min(left, static_cast<int>(first - row.begin()));
    right = std::max(right, static_cast<int>(row.rend() - last) - 1);
    if (top < 0) top = y;
    bottom = y;
    old = row;
  }
  for (Line& line : lines_) line.point = -1;
  return top < 0 ? QRect() : QRect(QPoint(left, top), QPoint(right, bottom));
}

QRect DiscScene::OnDisplay(const QRect& points) const {
  if (points.isEmpty()) return {};
  // A pixel more on every side: it may lie on a point that changed and on one that did not.
  const auto pixel = [](int point, int count, int pixels) { return point * pixels / count; };
  const QPoint from(pixel(points.left(), DiscPicture::kSeenWidth, place_.width()) - 1,
                    pixel(points.top(), DiscPicture::kSeenHeight, place_.height()) - 1);
  const QPoint until(pixel(points.right() + 1, DiscPicture::kSeenWidth, place_.width()) + 1,
                     pixel(points.bottom() + 1, DiscPicture::kSeenHeight, place_.height()) + 1);
  return QRect(from, until).translated(place_.topLeft()) & place_;
}

void DiscScene::Paint(QPainter& painter, const QRect& part) {
  PaintAround(painter, part);
  if (place_.isEmpty()) return;
  if (place_.width() < DiscPicture::kSeenWidth) return PaintShrunk(painter);
  PaintBands(painter, part & place_);
}

void DiscScene::PaintAround(QPainter& painter, const QRect& part) const {
  const QColor ground = QColor::fromRgb(ground_);
  const int right = place_.x() + place_.width(), bottom = place_.y() + place_.height();
  const QRect around[] = {{0, 0, size_.width(), place_.y()},
                          {0, bottom, size_.width(), size_.height() - bottom},
                          {0, place_.y(), place_.x(), place_.height()},
                          {right, place_.y(), size_.width() - right, place_.height()}};
  for (const QRect& side : around) {
    if (!(side & part).isEmpty()) painter.fillRect(side & part, ground);
  }
}

/// A display that has fewer pixels than the disc has points.
void DiscScene::PaintShrunk(QPainter& painter) const {
  const QImage image(reinterpret_cast<const uchar*>(points_.data()), DiscPicture::kSeenWidth,
                     DiscPicture::kSeenHeight, sizeof(Row), QImage::Format_RGB32);
  painter.drawImage(place_.topLeft(),
                    image.scaled(place_.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

void DiscScene::PaintBands(QPainter& painter, const QRect& part) {
  if (part.isEmpty()) return;
  const int left = part.x() - place_.x(), right = left + part.width();
  for (Line& line : lines_) line.point = -1;  // perhaps of other columns
  const int end = part.y() + part.height();
  for (int y = part.y(); y < end; y += kBandRows) {
    const int height = std::min(kBandRows, end - y);
    for (int row = 0; row < height; ++row) {
      auto* pixels = reinterpret_cast<std::uint32_t*>(band_.scanLine(row));
      FillLine(y + row - place_.y(), left, right, pixels);
    }
    painter.drawImage(QPoint(part.x(), y), band_, QRect(left, 0, right - left, height));
  }
}

void DiscScene::FillLine(int pixel_row, int left, int right, std::uint32_t* pixels) {
  const Under under = rows_[static_cast<std::size_t>(pixel_row)];
  const std::uint32_t* one = LineOf(under.point, left, right);
  if (under.share == kWhole) {
    std::memcpy(pixels + left, one + left, static_cast<std::size_t>(right - left) * sizeof(*pixels));
    return;
  }
  const std::uint32_t* other = LineOf(under.point + 1, left, right);
  for (int x = left; x < right; ++x) pixels[x] = Blend(one[x], other[x], under.share);
}

const std::uint32_t* DiscScene::LineOf(int point, int left, int right) {
  Line& line = lines_[static_cast<std::size_t>(point % 2)];
  if (line.point == point) return line.pixels.data();
  line.point = point;
  const Row& row = points_[static_cast<std::size_t>(point)];
  for (int x = left; x < right; ++x) {
    const Under under = columns_[static_cast<std::size_t>(x)];
    const std::uint32_t one = row[static_cast<std::size_t>(under.point)];
    line.pixels[static_cast<std::size_t>(x)] =
        under.share == kWhole ? one : Blend(one, row[static_cast<std::size_t>(under.point) + 1], under.share);
  }
  return line.pixels.data();
}

}  // namespace ui
