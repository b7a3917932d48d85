// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/EffectRow.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPolygonF>

#include "ui/forms/EffectUnit.h"
#include "ui/strings/EffectWords.h"
#include "ui/widgets/Kit.h"

namespace ui {

EffectRow::EffectRow(int deck, app::EffectStation& effects, const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent), skin_(look.skin), accent_(look.skin.Deck(deck)) {
  SetStripe(accent_);
  Name(*this, DeckName(deck, "Effects"), look.say(EffectWord::RackOf).arg(deck));
  auto* badge = new QLabel(QString::number(deck));
  Name(*badge, DeckName(deck, "EffectsBadge"));
  SetFontEm(*badge, 1.8, Weight::Bold);
  SetTextColour(*badge, accent_);
  badge_ = badge;
  auto* row = new QHBoxLayout(this);
  SetSpacingEm(*row, 0.6, 0.9);
  row->addWidget(badge, 0, Qt::AlignTop);
  for (int kind = 0; kind < decks::kEffectKinds; ++kind) {
    auto* unit = new EffectUnit(deck, static_cast<decks::EffectKind>(kind), effects, look);
    units_.push_back(unit);
    row->addWidget(unit, unit->Share());
  }
}

void EffectRow::Show(const app::DeckView& view, support::TimePoint now) {
  for (EffectUnit* unit : units_) unit->Show(view, now);
}

void EffectRow::paintEvent(QPaintEvent* event) {
  Surface::paintEvent(event);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double line = 2 * Line(*this), tip = Em(*this, 0.28);
  int from = badge_->geometry().right();
  for (const EffectUnit* unit : units_) {
    const double y = unit->y() + unit->Middle();
    const QPointF end(unit->x(), y);
    painter.setPen(QPen(accent_, line));
    painter.drawLine(QPointF(from + line, y), end - QPointF(tip, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(accent_);
    painter.drawPolygon(QPolygonF({end, end + QPointF(-2 * tip, -tip), end + QPointF(-2 * tip, tip)}));
    from = unit->geometry().right();
  }
}

}  // namespace ui
