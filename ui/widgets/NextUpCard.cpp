// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/NextUpCard.h"

#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace ui {
namespace {

constexpr QColor kTop(0x3A, 0x1A, 0x26), kBottom(0x12, 0x08, 0x0E), kStrip(0x0B, 0x05, 0x08, 225);
constexpr QColor kLight(0xFF, 0xF4, 0xE0), kWarm(0xFF, 0x8A, 0x3D), kDim(0xC9, 0xB4, 0xA4);

// Shares of the height.
constexpr double kMargin = 0.09;
constexpr double kHead = 0.055, kFirst = 0.15, kSong = 0.06, kLater = 0.062, kThanks = 0.045;

/// One line in letters of a height, shortened where it is too long; gives the place below it.
double PaintLine(QPainter& painter, const QString& text, double top, double height, const QColor& colour,
                 QFont::Weight weight) {
  const QRect window = painter.window();
  QFont font = painter.font();
  font.setPixelSize(std::max(1, static_cast<int>(height)));
  font.setWeight(weight);
  painter.setFont(font);
  const double room = window.width() - 2 * kMargin * window.height();
  // A long name gets smaller before it is cut.
  const double width = painter.fontMetrics().horizontalAdvance(text);
  if (width > room) {
    font.setPixelSize(std::max(static_cast<int>(height * 0.55), static_cast<int>(height * room / width)));
    painter.setFont(font);
  }
  const QString shown = painter.fontMetrics().elidedText(text, Qt::ElideRight, static_cast<int>(room));
  painter.setPen(colour);
  const QRectF place(kMargin * window.height(), top, room, height * 1.4);
  painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine, shown);
  return top + height * 1.4;
}

}  // namespace

NextUpCard::NextUpCard(QWidget& screen) : QWidget(&screen), screen_(screen) {
  setObjectName(QStringLiteral("NextUp"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  screen.installEventFilter(this);
  hide();
}

bool NextUpCard::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) Fit();
  return QWidget::eventFilter(watched, event);
}

void NextUpCard::Fit() {
  const int top = form_ == Form::Strip ? static_cast<int>(screen_.height() * kStripBegins) : 0;
  setGeometry(0, top, screen_.width(), screen_.height() - top);
}

void NextUpCard::Show(Form form, const Said& said) {
  if (form == form_ && said == said_) return;
  said_ = said;
  const bool other = form != form_;
  form_ = form;
  if (other) {
    Fit();
    setVisible(form != Form::Hidden);
    raise();
  }
  update();
}

void NextUpCard::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (form_ == Form::Card) PaintCard(painter);
  if (form_ == Form::Strip) PaintStrip(painter);
}

void NextUpCard::PaintCard(QPainter& painter) const {
  QLinearGradient ground(0, 0, 0, height());
  ground.setColorAt(0, kTop);
  ground.setColorAt(1, kBottom);
  painter.fillRect(rect(), ground);
  const double whole = height();
  double top = kMargin * whole;
  if (!said_.thanks.isEmpty())
    top = PaintLine(painter, said_.thanks, top, kThanks * whole, kDim, QFont::Normal);
  if (said_.next.empty()) return;
  top = std::max(top, 0.2 * whole);
  top = PaintLine(painter, said_.head, top, kHead * whole, kWarm, QFont::Medium);
  top = PaintLine(painter, said_.next.front().name, top, kFirst * whole, kLight, QFont::Bold);
  top = PaintLine(painter, said_.next.front().song, top, kSong * whole, kDim, QFont::Normal) + 0.04 * whole;
  for (std::size_t i = 1; i < said_.next.size(); ++i) {
    const QString line = QStringLiteral("%1.  %2").arg(i + 1).arg(said_.next[i].name);
    top = PaintLine(painter, line, top, kLater * whole, kLight, QFont::Medium);
  }
}

void NextUpCard::PaintStrip(QPainter& painter) const {
  painter.fillRect(rect(), kStrip);
  if (said_.next.empty()) return;
  QStringList names;
  for (const Guest& guest : said_.next) names << guest.name;
  const double letters = height() * 0.5;
  PaintLine(painter, said_.head + QStringLiteral("  ") + names.join(QStringLiteral("  ·  ")),
            (height() - letters * 1.4) / 2, letters, kLight, QFont::Medium);
}

}  // namespace ui
