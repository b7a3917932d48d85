// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/RunningWave.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "music/TrackForm.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/WavePaint.h"

namespace ui {
namespace {

using std::chrono::microseconds;

constexpr double kEmsASecond = 6;
constexpr int kTileWidth = 256;
constexpr std::size_t kMostTiles = 48;  ///< more than the widest screen shows at once

}  // namespace

RunningWave::RunningWave(const Skin& skin, const QColor& accent, QWidget* parent)
    : QWidget(parent), skin_(skin), accent_(accent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize RunningWave::sizeHint() const {
  return {Em(*this, 30), Em(*this, 9)};
}

QSize RunningWave::minimumSizeHint() const {
  return {Em(*this, 12), Em(*this, 2.6)};
}

void RunningWave::Show(microseconds position, microseconds length,
                       const std::shared_ptr<const music::Wave>& wave) {
  if (wave != wave_ || length != length_) {
    wave_ = wave;
    length_ = length;
    DropTiles();
  }
  position_ = position;
  if (Scroll() == shown_scroll_) return;
  shown_scroll_ = Scroll();
  update();
}

void RunningWave::ShowBeats(const std::shared_ptr<const music::BeatGrid>& grid,
                            std::optional<music::Seconds> bar) {
  if (grid == grid_ && bar == bar_) return;
  grid_ = grid;
  bar_ = bar;
  DropTiles();
}

void RunningWave::DrawBeats(QPainter& painter, int first) const {
  if (grid_ == nullptr || grid_->Empty()) return;
  const auto& beats = grid_->Beats();
  const double pixels = PixelsASecond();
  const int wide = std::max(3, Em(*this, 0.2));
  const int first_bar = bar_ ? music::FirstBarBeat(*grid_, *bar_) : -1;
  const music::Seconds from((first - wide) / pixels);
  for (auto beat = std::lower_bound(beats.begin(), beats.end(), from); beat != beats.end(); ++beat) {
    const int column = static_cast<int>(std::lround(beat->count() * pixels)) - first;
    if (column > kTileWidth + wide) break;
    const auto number = static_cast<int>(beat - beats.begin());
    const bool begins_bar = bar_ && (number - first_bar) % music::kBeatsPerBar == 0;
    // At the edges, so that the sound of the beat itself stays in sight.
    const int mark = std::max(5, height() / 6);
    painter.fillRect(column, 0, Line(*this), height(), begins_bar ? skin_.warning : skin_.line);
    painter.fillRect(column - wide / 2, 0, wide, mark, skin_.warning);
    painter.fillRect(column - wide / 2, height() - mark, wide, mark, skin_.warning);
  }
}

microseconds RunningWave::PlaceAt(int column) const {
  return position_ + microseconds(std::llround((column - MarkColumn()) / PixelsASecond() * 1e6));
}

double RunningWave::PixelsASecond() const {
  return Em(*this, kEmsASecond);
}

void RunningWave::ShowCues(const CueMarks& marks) {
  if (marks == cues_) return;
  cues_ = marks;
  update();
}

int RunningWave::Scroll() const {
  const microseconds place = held_ ? DraggedTo() : position_;
  return static_cast<int>(std::lround(double(place.count()) / 1e6 * PixelsASecond()));
}

microseconds RunningWave::DraggedTo() const {
  const auto way = static_cast<std::int64_t>(dragged_ / PixelsASecond() * 1e6);
  return std::clamp(held_place_ - microseconds(way), microseconds(0), length_);
}

void RunningWave::DropTiles() {
  tiles_.clear();
  update();
}

const QPixmap& RunningWave::Tile(int number) {
  const auto found = tiles_.find(number);
  if (found != tiles_.end()) return found->second;
  if (tiles_.size() >= kMostTiles) tiles_.clear();
  ++tiles_drawn_;
  return tiles_.emplace(number, DrawTile(number)).first->second;
}

QPixmap RunningWave::DrawTile(int number) const {
  QPixmap tile(QSize(kTileWidth, height()) * devicePixelRatio());
  tile.setDevicePixelRatio(devicePixelRatio());
  QPainter painter(&tile);
  const QRect box(0, 0, kTileWidth, height());
  painter.fillRect(box, skin_.well);
  const int first = number * kTileWidth;
  const double pixels = PixelsASecond();
  const bool beats = grid_ != nullptr && !grid_->Empty();
  for (int second = std::max(0, static_cast<int>(first / pixels));
       !beats && second * pixels < first + kTileWidth; ++second) {
    painter.fillRect(static_cast<int>(second * pixels) - first, 0, 1, height(), skin_.line);
  }
  const double step = music::Wave::kColumnsASecond / pixels;
  if (wave_)
    PaintWave(painter, box, wave_->fine, first * step, step, InkOf(skin_, accent_, WaveTone::ToCome));
  DrawBeats(painter, first);
  return tile;
}

void RunningWave::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (length_.count() <= 0 || !wave_) {
    painter.fillRect(rect(), skin_.well);
    painter.fillRect(0, height() / 2, width(), 1, skin_.line);
  } else {
    const int left = shown_scroll_ - MarkColumn();
    const int last = static_cast<int>(double(length_.count()) / 1e6 * PixelsASecond());
    for (int tile = left < 0 ? 0 : left / kTileWidth; tile * kTileWidth < left + width(); ++tile) {
      painter.drawPixmap(tile * kTileWidth - left, 0, Tile(tile));
    }
    // Before the start and after the end of the track there is nothing.
    if (left < 0) painter.fillRect(0, 0, -left, height(), skin_.panel);
    if (last - left < width()) painter.fillRect(last - left, 0, width(), height(), skin_.panel);
    PaintCues(painter, *this, height(), cues_, skin_, [this, left](microseconds place) {
      return static_cast<int>(std::lround(double(place.count()) / 1e6 * PixelsASecond())) - left;
    });
    const int half = Line(*this);
    painter.fillRect(MarkColumn() - half, 0, 2 * half + 1, height(), skin_.text);
  }
  painter.setPen(skin_.line);
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void RunningWave::resizeEvent(QResizeEvent*) {
  DropTiles();
}

void RunningWave::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) DropTiles();
  QWidget::changeEvent(event);
}

void RunningWave::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || length_.count() <= 0) return event->ignore();
  if (guard_.Holds(event->modifiers())) {
    guarded_at_ = event->position().toPoint();
    return;
  }
  TakeHold(event->position().toPoint().x());
}

void RunningWave::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || length_.count() <= 0) return event->ignore();
  TakeHold(event->position().toPoint().x());
}

void RunningWave::TakeHold(int column) {
  held_ = true;
  guarded_at_.reset();
  held_at_ = column;
  held_place_ = position_;
  dragged_ = 0;
}

void RunningWave::mouseMoveEvent(QMouseEvent* event) {
  if (guarded_at_ && event->position().toPoint() != *guarded_at_) {
    guarded_at_.reset();
    Q_EMIT Guarded();
  }
  if (!held_) return event->ignore();
  dragged_ = event->position().toPoint().x() - held_at_;
  shown_scroll_ = Scroll();
  update();
}

void RunningWave::mouseReleaseEvent(QMouseEvent* event) {
  guarded_at_.reset();
  if (event->button() != Qt::LeftButton || !held_) return event->ignore();
  const microseconds place = DraggedTo();
  held_ = false;
  if (dragged_ != 0) Q_EMIT SeekWanted(place);
}

}  // namespace ui
