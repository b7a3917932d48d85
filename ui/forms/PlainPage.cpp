// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/PlainPage.h"

#include <QLabel>
#include <QVBoxLayout>

#include "ui/widgets/Kit.h"

namespace ui {

PlainPage::PlainPage(const QString& name, Say head, Say sentence, const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent) {
  Name(*this, name, look.say(head));
  auto* title = new QLabel(look.say(head));
  Name(*title, name + QStringLiteral("Head"));
  SetFontEm(*title, 1.6, Weight::Bold);
  auto* text = new QLabel(look.say(sentence));
  Name(*text, name + QStringLiteral("Text"));
  SetFontEm(*text, 1.2);
  SetTextColour(*text, look.skin.dim);
  for (QLabel* label : {title, text}) label->setAlignment(Qt::AlignCenter);
  FillColumn(*this, 1, 0.6, {Part::Room(), title, text, Part::Room()});
}

}  // namespace ui
