// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/RecordedWaveView.h"

#include <QPainter>
#include <algorithm>

#include "ui/widgets/Look.h"

namespace ui {
namespace {

/// A short recording does not fill the box: its wave would run away to the left with every second.
constexpr std::size_t kFewestColumns = 600;

}  // namespace

RecordedWaveView::RecordedWaveView(const Skin& skin, QWidget* parent) : QWidget(parent), skin_(skin) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize RecordedWaveView::sizeHint() const {
  return {Em(*this, 20), Em(*this, 4)};
}

QSize RecordedWaveView::minimumSizeHint() const {
  return {Em(*this, 6), Em(*this, 2.5)};
}

void RecordedWaveView::Show(const std::shared_ptr<const app::RecordedWave>& wave,
                            const std::vector<std::chrono::microseconds>& marks) {
  if (wave == wave_ && marks == marks_) return;
  wave_ = wave;
  marks_ = marks;
  update();
}

void RecordedWaveView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), skin_.well);
  const int middle = height() / 2;
  painter.fillRect(0, middle, width(), 1, skin_.line);
  if (wave_ == nullptr || wave_->columns.empty()) return;
  const auto& columns = wave_->columns;
  const double in_all = static_cast<double>(std::max(columns.size(), kFewestColumns));
  const double a_column = width() / in_all;
  const int end = static_cast<int>(static_cast<double>(columns.size()) * a_column);
  for (int x = 0; x < end; ++x) {
    const auto first = std::min(static_cast<std::size_t>(x / a_column), columns.size() - 1);
    const auto last = std::clamp(static_cast<std::size_t>((x + 1) / a_column), first + 1, columns.size());
    const int loudest = *std::max_element(columns.begin() + static_cast<std::ptrdiff_t>(first),
                                          columns.begin() + static_cast<std::ptrdiff_t>(last));
    const int half = loudest * (middle - 1) / 255;
    painter.fillRect(x, middle - half, 1, 2 * half + 1, skin_.danger);
  }
  for (const auto mark : marks_) {
    const double column = static_cast<double>(mark.count()) / static_cast<double>(wave_->step.count());
    painter.fillRect(static_cast<int>(column * a_column), 0, Line(*this), height(), skin_.text);
  }
}

}  // namespace ui
