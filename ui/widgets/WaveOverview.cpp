// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/WaveOverview.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <limits>

#include "ui/models/TimeText.h"
#include "ui/widgets/Look.h"

namespace ui {
namespace {

using std::chrono::microseconds;
using std::chrono::seconds;

constexpr seconds kKeyStep{5};
/// Distances between ticks, of which the smallest is taken that leaves room for the text.
constexpr seconds kTickSteps[] = {seconds(5),   seconds(10),  seconds(15),  seconds(30),   seconds(60),
                                  seconds(120), seconds(300), seconds(600), seconds(1800), seconds(3600)};

}  // namespace

WaveOverview::WaveOverview(const Skin& skin, const QColor& accent, QWidget* parent, Form form)
    : QSlider(Qt::Horizontal, parent), skin_(skin), accent_(accent), form_(form) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setRange(0, 0);
  MakeHandle(app::MixPoint::Start);
  MakeHandle(app::MixPoint::End);
}

void WaveOverview::MakeHandle(app::MixPoint which) {
  auto* handle = new MixHandle(which, skin_, this);
  handles_.Of(which) = handle;
  connect(handle, &MixHandle::Dragged, this, [this, which](int column) {
    points_.Of(which) = Allowed(which, PlaceAt(column));
    PlaceHandles();
  });
  connect(handle, &MixHandle::Dropped, this,
          [this, which] { Q_EMIT MixPointMoved(which, points_.Of(which)); });
  connect(handle, &MixHandle::StepWanted, this, [this, which](microseconds step) {
    Q_EMIT MixPointMoved(which, Allowed(which, points_.Of(which) + step));
  });
  connect(handle, &MixHandle::ResetWanted, this, [this, which] { Q_EMIT MixPointReset(which); });
}

microseconds WaveOverview::Allowed(app::MixPoint which, microseconds place) const {
  const bool start = which == app::MixPoint::Start;
  return start ? std::clamp(place, microseconds(0), std::max(points_.end, microseconds(0)))
               : std::clamp(place, std::min(points_.start, length_), length_);
}

void WaveOverview::ShowMixPoints(const app::DeckView& view) {
  if (view.scan_busy != busy_) {
    busy_ = view.scan_busy;
    update(0, 0, width(), 4);
  }
  for (const app::MixPoint which : {app::MixPoint::Start, app::MixPoint::End}) {
    if (handles_.Of(which)->Held()) return;
  }
  const bool changed = view.has_mix_points != has_points_ || view.start_mix_point != points_.start ||
                       view.end_mix_point != points_.end;
  has_points_ = view.has_mix_points;
  points_ = {view.start_mix_point, view.end_mix_point};
  for (const app::MixPoint which : {app::MixPoint::Start, app::MixPoint::End}) {
    handles_.Of(which)->Show(points_.Of(which), view.moved.Of(which));
  }
  if (changed) PlaceHandles();
}

void WaveOverview::PlaceHandles() {
  for (const app::MixPoint which : {app::MixPoint::Start, app::MixPoint::End}) {
    MixHandle& handle = *handles_.Of(which);
    handle.setVisible(form_ == Form::Whole && has_points_ && length_.count() > 0);
    handle.PlaceAt(ColumnOf(points_.Of(which)));
  }
  update();
}

void WaveOverview::ShowCues(const CueMarks& marks) {
  if (marks == cues_) return;
  cues_ = marks;
  update();
}

void WaveOverview::ShowSections(const std::vector<SectionMark>& sections) {
  if (sections == sections_) return;
  sections_ = sections;
  update();
}

void WaveOverview::PaintSections(QPainter& painter) const {
  QFont small = font();
  small.setPixelSize(std::max(8, Em(*this, 0.75)));
  const QFontMetrics metrics(small);
  painter.setFont(small);
  painter.setPen(skin_.dim);
  for (std::size_t i = 0; i < sections_.size(); ++i) {
    const int column = ColumnOf(sections_[i].start);
    const int end = i + 1 < sections_.size() ? ColumnOf(sections_[i + 1].start) : width();
    if (i > 0) painter.fillRect(column, 0, Line(*this), WaveBox().height(), skin_.dim);
    const int gap = 2 * Line(*this);
    if (metrics.horizontalAdvance(sections_[i].name) + 2 * gap > end - column) continue;
    painter.drawText(column + gap, WaveBox().height() - metrics.descent() - 1, sections_[i].name);
  }
}

void WaveOverview::PaintMixPoints(QPainter& painter) const {
  if (busy_ > 0) painter.fillRect(0, 0, static_cast<int>(busy_ * width()), 3, skin_.good);
  if (!has_points_) return;
  const int tall = WaveBox().height();
  const int start = ColumnOf(points_.start);
  const int end = ColumnOf(points_.end);
  QColor shade = skin_.ground;
  shade.setAlphaF(0.6F);
  painter.fillRect(0, 0, start, tall, shade);
  painter.fillRect(end + 1, 0, width() - end, tall, shade);
  const int thick = std::max(2, Em(*this, 0.12));
  painter.fillRect(start, 0, thick, tall, skin_.good);
  painter.fillRect(end - thick + 1, 0, thick, tall, skin_.good);
}

QSize WaveOverview::sizeHint() const {
  return form_ == Form::Whole ? QSize(Em(*this, 30), Em(*this, 5)) : QSize(Em(*this, 16), Em(*this, 2.6));
}

QSize WaveOverview::minimumSizeHint() const {
  return form_ == Form::Whole ? QSize(Em(*this, 12), Em(*this, 2.9)) : QSize(Em(*this, 8), Em(*this, 2));
}

QVariant WaveOverview::inputMethodQuery(Qt::InputMethodQuery query) const {
  if (query == Qt::ImCursorRectangle) return QRect(shown_column_, 0, 1, height());
  return QSlider::inputMethodQuery(query);
}

void WaveOverview::Show(microseconds position, microseconds length,
                        const std::shared_ptr<const music::Wave>& wave) {
  if (wave != wave_) {
    wave_ = wave;
    heard_ = QPixmap();
    update();
  }
  if (length != length_) {
    length_ = length;
    heard_ = QPixmap();
    const auto whole = std::chrono::duration_cast<std::chrono::milliseconds>(length).count();
    setRange(0, static_cast<int>(std::clamp<std::int64_t>(whole, 0, std::numeric_limits<int>::max())));
    PlaceHandles();
  }
  position_ = std::clamp(position, microseconds(0), length_);
  setValue(static_cast<int>(position_ / std::chrono::milliseconds(1)));
  const int column = ColumnOf(position_);
  if (column == shown_column_) return;
  const int half = Line(*this);
  const int left = std::min(column, shown_column_) - half - 1;
  update(left, 0, std::abs(column - shown_column_) + 2 * half + 3, height());
  shown_column_ = column;
}

int WaveOverview::ColumnOf(microseconds position) const {
  if (length_.count() <= 0) return 0;
  return static_cast<int>(double(position.count()) / double(length_.count()) * (width() - 1));
}

microseconds WaveOverview::PlaceAt(int column) const {
  const double share = std::clamp(double(column) / std::max(1, width() - 1), 0.0, 1.0);
  return microseconds(static_cast<std::int64_t>(share * double(length_.count())));
}

QRect WaveOverview::WaveBox() const {
  return form_ == Form::Whole ? rect().adjusted(0, 0, 0, -Em(*this, 1.2)) : rect();
}

QPixmap WaveOverview::PaintTrack(WaveTone tone) const {
  QPixmap picture(size() * devicePixelRatio());
  picture.setDevicePixelRatio(devicePixelRatio());
  QPainter painter(&picture);
  const QRect box = WaveBox();
  painter.fillRect(rect(), skin_.panel);
  painter.fillRect(box, skin_.well);
  if (length_.count() > 0 && wave_) {
    const double step = double(wave_->overview.size()) / std::max(1, box.width());
    PaintWave(painter, box, wave_->overview, 0, step, InkOf(skin_, accent_, tone));
  } else if (length_.count() > 0 && tone == WaveTone::Heard) {
    QColor tint = accent_;
    tint.setAlphaF(0.35F);
    painter.fillRect(box, tint);
  }
  if (length_.count() > 0 && form_ == Form::Whole) PaintTimes(painter);
  painter.setPen(skin_.line);
  painter.drawRect(box.adjusted(0, 0, -1, -1));
  return picture;
}

void WaveOverview::PaintTimes(QPainter& painter) const {
  QFont small = font();
  small.setPointSizeF(font().pointSizeF() * 0.75);
  painter.setFont(small);
  painter.setPen(skin_.dim);
  const int room = QFontMetrics(small).horizontalAdvance(QStringLiteral("000:00"));
  seconds step = kTickSteps[std::size(kTickSteps) - 1];
  for (const seconds candidate : kTickSteps) {
    if (ColumnOf(candidate) < room * 3 / 2) continue;
    step = candidate;
    break;
  }
  const int top = WaveBox().bottom() + 1;
  for (seconds at = step; at < length_; at += step) {
    const int column = ColumnOf(at);
    if (column + room / 2 > width()) break;
    painter.fillRect(column, top, Line(*this), 3 * Line(*this), skin_.dim);
    painter.drawText(QRect(column - room / 2, top + 2, room, height() - top - 2), Qt::AlignCenter,
                     MinutesText(at));
  }
}

void WaveOverview::paintEvent(QPaintEvent* event) {
  if (heard_.isNull()) {
    heard_ = PaintTrack(WaveTone::Heard);
    to_come_ = PaintTrack(WaveTone::ToCome);
    shown_column_ = ColumnOf(position_);
  }
  QPainter painter(this);
  const QRect part = event->rect();
  painter.drawPixmap(QPoint(0, 0), to_come_);
  if (length_.count() > 0) {
    painter.save();
    painter.setClipRect(part & QRect(0, 0, shown_column_, WaveBox().height()));
    painter.drawPixmap(QPoint(0, 0), heard_);
    painter.restore();
    const int tall = WaveBox().height();
    PaintSections(painter);
    PaintMixPoints(painter);
    PaintCues(painter, *this, tall, cues_, skin_, [this](microseconds place) { return ColumnOf(place); });
    const int half = Line(*this);
    painter.fillRect(shown_column_ - half, 0, 2 * half + 1, tall, isEnabled() ? skin_.text : skin_.line);
    if (aim_ >= 0) painter.fillRect(aim_, 0, 2 * half, tall, skin_.warning);
  }
  if (hasFocus()) {
    painter.setPen(QPen(skin_.text, 2 * Line(*this)));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

void WaveOverview::resizeEvent(QResizeEvent*) {
  heard_ = QPixmap();
  PlaceHandles();
}

void WaveOverview::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) heard_ = QPixmap();
  QSlider::changeEvent(event);
}

void WaveOverview::RepaintColumn(int column) {
  if (column >= 0) update(column - 2, 0, 6, height());
}

void WaveOverview::AimAt(int column) {
  RepaintColumn(aim_);
  aim_ = std::clamp(column, 0, width() - 1);
  RepaintColumn(aim_);
}

void WaveOverview::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || length_.count() <= 0) return;
  if (guard_.Holds(event->modifiers())) return Q_EMIT Guarded();
  AimAt(event->position().toPoint().x());
}

void WaveOverview::mouseMoveEvent(QMouseEvent* event) {
  if (aim_ >= 0) AimAt(event->position().toPoint().x());
}

void WaveOverview::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || aim_ < 0) return;
  const microseconds place = PlaceAt(aim_);
  RepaintColumn(aim_);
  aim_ = -1;
  Q_EMIT SeekWanted(place);
}

void WaveOverview::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && length_.count() > 0) AimAt(event->position().toPoint().x());
}

void WaveOverview::keyPressEvent(QKeyEvent* event) {
  const bool back = event->key() == Qt::Key_Left;
  if ((!back && event->key() != Qt::Key_Right) || length_.count() <= 0) return event->ignore();
  if (guard_.Holds(event->modifiers())) return Q_EMIT Guarded();
  const microseconds there = position_ + (back ? -kKeyStep : kKeyStep);
  Q_EMIT SeekWanted(std::clamp(there, microseconds(0), length_));
}

void WaveOverview::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

// Show() repaints what changed; the slider's own way would repaint everything at every step.
void WaveOverview::sliderChange(SliderChange) {}

}  // namespace ui
