// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/LyricSurface.h"

#include <QPainter>
#include <utility>

#include "ui/widgets/Look.h"

namespace ui {

LyricSurface::LyricSurface(karaoke::LyricDisplay display, QWidget* parent)
    : QWidget(parent), scene_(display) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  pool_.setMaxThreadCount(1);
  pool_.setThreadPriority(QThread::LowPriority);
}

LyricSurface::~LyricSurface() {
  pool_.waitForDone();
}

void LyricSurface::SetLook(const SceneLook& look) {
  scene_.SetLook(look);
  update();
}

void LyricSurface::SetSample(std::shared_ptr<const app::SongWords> words, std::chrono::microseconds time) {
  sample_ = std::move(words);
  sample_time_ = time;
}

void LyricSurface::Show(const app::SongView& view, support::TimePoint now) {
  const auto& words = view.words != nullptr ? view.words : sample_;
  const auto time = view.words != nullptr ? view.HeardAt(now) : sample_time_;
  if (words != scene_.Words()) {
    scene_.SetWords(words);
    update();
  } else if (time != time_ && isVisible()) {
    FitScene();
    const QRect changed = scene_.Difference(time_, time);
    const double ratio = devicePixelRatioF();
    update(QRectF(QPointF(changed.topLeft()) / ratio, QSizeF(changed.size()) / ratio).toAlignedRect());
  }
  time_ = time;
  DrawAhead();
}

void LyricSurface::DrawAhead() {
  if (drawing_ || !isVisible()) return;
  FitScene();
  auto job = scene_.NextJob(time_);
  if (!job) return;
  drawing_ = true;
  pool_.start([this, job = std::move(*job)] {
    QMetaObject::invokeMethod(
        this,
        [this, generation = job.generation, key = job.key, drawn = job.draw()] {
          drawing_ = false;
          scene_.Keep(generation, key, drawn);
          DrawAhead();
        },
        Qt::QueuedConnection);
  });
}

void LyricSurface::FitScene() {
  scene_.SetSize(size() * devicePixelRatioF());
}

void LyricSurface::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitScene();
}

void LyricSurface::paintEvent(QPaintEvent*) {
  FitScene();
  QPainter painter(this);
  painter.scale(1 / devicePixelRatioF(), 1 / devicePixelRatioF());
  scene_.Paint(painter, time_);
  if (scene_.Words() != nullptr || hint_.isEmpty()) return;
  painter.resetTransform();
  painter.setPen(scene_.Ground().lightness() < 128 ? Qt::white : Qt::black);
  painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, hint_);
}

QSize LyricSurface::sizeHint() const {
  return {Em(*this, 32), Em(*this, 18)};
}

QSize LyricSurface::minimumSizeHint() const {
  return {Em(*this, 16), Em(*this, 9)};
}

}  // namespace ui
