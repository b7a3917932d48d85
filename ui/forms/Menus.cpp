// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/Menus.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QMenu>
#include <algorithm>

#include "app/Deck.h"
#include "app/sound/DeckStation.h"
#include "ui/models/DeckChoice.h"
#include "ui/models/KeyMap.h"
#include "ui/models/TimeText.h"

namespace ui {

QMenu* NewMenu(QWidget& over, const QString& name) {
  auto* menu = new QMenu(&over);
  menu->setObjectName(name);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setFont(over.font());
  return menu;
}

QAction* AddAct(QMenu& menu, const QString& name, const QString& text, const QKeySequence& key,
                std::function<void()> act) {
  QString shown = text;
  shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
  if (!key.isEmpty()) shown += QLatin1Char('\t') + KeyText(key);
  QAction* action = menu.addAction(shown, &menu, std::move(act));
  action->setObjectName(name);
  return action;
}

ContextMenu::ContextMenu(QWidget& widget, const QString& name)
    : QObject(&widget), widget_(widget), name_(name) {
  widget.setContextMenuPolicy(Qt::CustomContextMenu);
  connect(&widget, &QWidget::customContextMenuRequested, this, &ContextMenu::PopUp);
}

void ContextMenu::PopUp(const QPoint& place) {
  QMenu* menu = NewMenu(widget_, name_);
  for (const Fill& fill : parts_) {
    if (!menu->isEmpty()) menu->addSeparator();
    fill(*menu, place);
  }
  if (menu->isEmpty()) return delete menu;
  const auto* area = qobject_cast<const QAbstractScrollArea*>(&widget_);
  menu->popup(area == nullptr ? widget_.mapToGlobal(place) : area->viewport()->mapToGlobal(place));
}

void GiveButtonMenu(QWidget& rows, const QString& name, std::vector<QAbstractButton*> buttons) {
  auto* menu = new ContextMenu(rows, name);
  menu->AddLast([buttons = std::move(buttons)](QMenu& shown, const QPoint&) {
    for (QAbstractButton* button : buttons) {
      if (button == nullptr || button->isHidden()) continue;
      const QString text = button->text();
      const bool sign =
          std::none_of(text.begin(), text.end(), [](QChar letter) { return letter.isLetter(); });
      AddAct(shown, button->objectName() + QStringLiteral("Act"), sign ? button->accessibleName() : text, {},
             [button] { button->click(); })
          ->setEnabled(button->isEnabled());
    }
  });
}

void GiveWaveMenu(QWidget& wave, app::Deck& deck,
                  std::function<std::chrono::microseconds(const QPoint& place)> place_at, const Look& look) {
  const int number = deck.Number();
  const auto name = [number](const char* part) { return DeckName(number, part); };
  auto* menu = new ContextMenu(wave, name("WaveMenu"));
  menu->AddLast([&deck, &say = look.say, place_at, name, number](QMenu& shown, const QPoint& point) {
    const app::DeckView& view = deck.View();
    if (view.length.count() <= 0) return;
    const auto place = std::clamp(place_at(point), std::chrono::microseconds(0), view.length);
    const QString time = MinutesText(place);
    AddAct(shown, name("GoHere"), say(Say::GoHere).arg(time), {},
           [&deck, place] { deck.Do(&app::DeckStation::Seek, place); });
    const auto point_act = [&](const char* part, Say text, Command key, app::MixPoint which) {
      AddAct(shown, name(part), say(text).arg(time), {}, [&deck, place, which] {
        deck.SetMixPoint(which, place);
      })->setToolTip(KeyText(KeyOf(key, number)));
    };
    shown.addSeparator();
    point_act("StartHere", Say::StartHere, Command::SetStart, app::MixPoint::Start);
    point_act("EndHere", Say::EndHere, Command::SetEnd, app::MixPoint::End);
    AddAct(shown, name("PointsAsFound"), say(Say::PointsAsFound), {}, [&deck] {
      for (const auto which : {app::MixPoint::Start, app::MixPoint::End}) deck.ResetMixPoint(which);
    })->setEnabled(view.moved.start || view.moved.end);
  });
}

}  // namespace ui
