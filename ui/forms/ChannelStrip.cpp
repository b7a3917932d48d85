// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/ChannelStrip.h"

#include <QEvent>
#include <QScrollBar>
#include <algorithm>
#include <set>

#include "ui/forms/ChannelColumn.h"
#include "ui/widgets/Surface.h"

namespace ui {
namespace {

constexpr double kMarginEms = 0.4;
constexpr double kGapEms = 0.3;

}  // namespace

ChannelStrip::ChannelStrip(const Look& look, Act made, Act show, QWidget* parent)
    : QScrollArea(parent), look_(look), made_(std::move(made)), show_(std::move(show)) {
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  ground_ = new Surface(look.skin.panel);
  ground_->installEventFilter(this);
  setWidget(ground_);
}

ChannelStrip::Measure ChannelStrip::Measured() const {
  const int width = Em(*this, ChannelColumn::kWidthEms);
  return {Em(*this, kMarginEms), width, width + Em(*this, kGapEms)};
}

void ChannelStrip::SetChannels(int count) {
  count_ = count;
  Place();
}

void ChannelStrip::Refresh() {
  for (ChannelColumn* column : columns_) show_(*column);
}

std::pair<int, int> ChannelStrip::Seen() const {
  const Measure measure = Measured();
  const int left = horizontalScrollBar()->value() - measure.margin;
  const int first = left / measure.step;  // the neighbour of the first that is seen
  const int last = (left + viewport()->width()) / measure.step + 2;
  return {std::clamp(first, 1, std::max(count_, 1)), std::min(last, count_)};
}

void ChannelStrip::Place() {
  const Measure measure = Measured();
  const bool other = GiveColumns();
  int height = 0;
  for (const ChannelColumn* column : columns_) height = std::max(height, column->minimumSizeHint().height());
  const int width = count_ * measure.step + 2 * measure.margin - (measure.step - measure.width);
  ground_->setMinimumSize(count_ == 0 ? 0 : width, height + 2 * measure.margin);
  PlaceColumns();
  if (other) OrderStops();
}

void ChannelStrip::PlaceColumns() {
  const Measure measure = Measured();
  for (ChannelColumn* column : columns_) {
    column->setGeometry(measure.margin + (column->Number() - 1) * measure.step, measure.margin, measure.width,
                        ground_->height() - 2 * measure.margin);
    column->show();
  }
}

// The one that has the keyboard keeps its column wherever the view goes.
bool ChannelStrip::GiveColumns() {
  const auto [first, last] = Seen();
  std::set<int> wanted;
  for (int number = first; number <= last; ++number) wanted.insert(number);
  for (const ChannelColumn* column : columns_) {
    if (!column->isAncestorOf(window()->focusWidget())) continue;
    for (int number = column->Number() - 1; number <= column->Number() + 1; ++number)
      if (number >= 1 && number <= count_) wanted.insert(number);
  }
  bool other = false;
  for (std::size_t i = 0; i < columns_.size();) {
    if (wanted.erase(columns_[i]->Number()) > 0) {
      ++i;
      continue;
    }
    spare_.push_back(columns_[i]);
    columns_[i] = columns_.back();
    columns_.pop_back();
    other = true;
  }
  for (const int number : wanted) {
    if (spare_.empty()) spare_.push_back(MakeColumn());
    columns_.push_back(spare_.back());
    spare_.pop_back();
    columns_.back()->SetNumber(number);
    show_(*columns_.back());
    other = true;
  }
  for (ChannelColumn* column : spare_) column->hide();
  return other;
}

ChannelColumn* ChannelStrip::MakeColumn() {
  auto* column = new ChannelColumn(look_, ground_);
  ApplyBaseSize(*column, font().pointSizeF());
  made_(*column);
  return column;
}

void ChannelStrip::OrderStops() {
  std::sort(columns_.begin(), columns_.end(),
            [](const auto* one, const auto* other) { return one->Number() < other->Number(); });
  QWidget* before = ground_;
  for (const ChannelColumn* column : columns_) {
    for (QWidget* stop : column->Stops()) {
      setTabOrder(before, stop);
      before = stop;
    }
  }
}

void ChannelStrip::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  Place();
}

void ChannelStrip::scrollContentsBy(int x, int y) {
  QScrollArea::scrollContentsBy(x, y);
  Place();
}

bool ChannelStrip::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ground_ && event->type() == QEvent::Resize) PlaceColumns();
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace ui
