// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/LyricSurface.h"

#include <QPaintEvent>
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
  const bool was_disc = disc_.HasImage();
  disc_.SetImage(view.disc.image);
  if (disc_.HasImage()) return ShowDisc(view.disc.place.HeardAt(now));
  if (was_disc) update();
  ShowWords(view, now);
}

void LyricSurface::ShowDisc(std::chrono::microseconds time) {
  time_ = time;
  if (!isVisible()) return;
  FitScene();
  UpdatePixels(disc_.MoveTo(time));
}

void LyricSurface::UpdatePixels(const QRect& changed) {
  if (changed.isEmpty()) return;
  const double ratio = devicePixelRatioF();
  update(QRectF(QPointF(changed.topLeft()) / ratio, QSizeF(changed.size()) / ratio).toAlignedRect());
}

void LyricSurface::ShowWords(const app::SongView& view, support::TimePoint now) {
  const auto& words = view.words != nullptr ? view.words : sample_;
  const auto time = view.words != nullptr ? view.HeardAt(now) : sample_time_;
  if (words != scene_.Words()) {
    scene_.SetWords(words);
    update();
  } else if (time != time_ && isVisible()) {
    FitScene();
    UpdatePixels(scene_.Difference(time_, time));
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
  disc_.SetSize(size() * devicePixelRatioF());
}

void LyricSurface::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitScene();
}

void LyricSurface::paintEvent(QPaintEvent* event) {
  FitScene();
  QPainter painter(this);
  const double ratio = devicePixelRatioF();
  painter.scale(1 / ratio, 1 / ratio);
  if (disc_.HasImage()) {
    const QRectF part(QPointF(event->rect().topLeft()) * ratio, QSizeF(event->rect().size()) * ratio);
    return disc_.Paint(painter, part.toAlignedRect());
  }
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
