// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "app/Language.h"
#include "app/singers/SingerStation.h"
#include "support/Sentences.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Look.h"

namespace ui::testing {
namespace {

/// The text that a widget shows, and how much room it has for it; no text where it shows none of its own.
struct Shown {
  QString text;
  int room = 0;
};

Shown ShownBy(const QWidget& widget) {
  if (const auto* list = qobject_cast<const QComboBox*>(&widget)) {
    const int icon =
        list->itemIcon(list->currentIndex()).isNull() ? 0 : list->iconSize().width() + Em(widget, 0.5);
    return {list->currentIndex() < 0 ? list->placeholderText() : list->currentText(),
            widget.width() - Em(widget, 2.7) - icon};
  }
  if (const auto* field = qobject_cast<const QLineEdit*>(&widget))
    return {field->text().isEmpty() ? field->placeholderText() : QString(), widget.width() - Em(widget, 1)};
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
    if (label->wordWrap()) return {};
    const bool elides = qobject_cast<const ElidedLabel*>(label) != nullptr;
    const bool two_lines = elides && widget.height() > 2 * widget.fontMetrics().ascent();
    return {label->text(), widget.contentsRect().width() * (two_lines ? 19 : 10) / 10};
  }
  return {};
}

/// What comes from outside the program may be cut: titles, names of files and devices.
bool IsFromOutside(const QString& name) {
  for (const char* part :
       {"Title", "Artist", "Message", "AutomixNext", "Directory", "Output1", "Output2", "Output3"}) {
    if (name.contains(QLatin1String(part))) return true;
  }
  return false;
}

class ClippedTextTest : public Booth, public ::testing::WithParamInterface<int> {
 protected:
  ClippedTextTest() {
    station->Language().Choose(GetParam());
    Open({1366, 768});
    workers.RunAll();
    Settle();
    LoadAndPlay(1, 1);
    DropRow(2, "PlayListView1");
    Click("Automix");
    station->Singers().Do(&app::SingerStation::Add, "Anna");
    Advance(500ms);
  }

  void Look(int page) {
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
      const QWidget* up = widget->parentWidget();
      while (up != nullptr && qobject_cast<const QAbstractItemView*>(up) == nullptr &&
             qobject_cast<const QComboBox*>(up) == nullptr)
        up = up->parentWidget();
      if (!widget->isVisible() || up != nullptr || IsFromOutside(widget->objectName())) continue;
      const std::string where = "page " + std::to_string(page) + ", " + widget->objectName().toStdString();
      const Shown shown = ShownBy(*widget);
      EXPECT_LE(widget->fontMetrics().horizontalAdvance(shown.text), shown.room)
          << where << ": " << shown.text.toStdString();
      if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        EXPECT_LE(button->sizeHint().width(), button->width())
            << where << ": " << button->text().toStdString();
        EXPECT_LE(button->sizeHint().height(), button->height()) << where;
      }
      const auto* label = qobject_cast<const QLabel*>(widget);
      if (label != nullptr && label->wordWrap()) {
        EXPECT_LE(label->heightForWidth(label->width()), label->height()) << where;
      }
    }
  }
};

TEST_P(ClippedTextTest, EveryWordOfThePagesHasItsRoom) {
  for (int page = 1; page <= 8; ++page) {
    Press(static_cast<Qt::Key>(Qt::Key_0 + page), Qt::ControlModifier);
    Look(page);
    Press(Qt::Key_F11, Qt::ControlModifier);
    Look(page);
  }
}

TEST_P(ClippedTextTest, AWarningThatStandsLeavesTheLineBesideItItsRoom) {
  support::Sentences say;
  say.Choose(station->Language().StringBase());
  engine.PostDeviceEvent({decks::DeviceEvent::Kind::Lost, 1, say(support::Sentence::NoOutputs)});
  Advance(6s);
  ASSERT_TRUE(Find<QWidget>("MessageSeen").isVisible());
  Look(1);
  const auto& message = Find<QLabel>("Message");
  EXPECT_LE(message.fontMetrics().horizontalAdvance(message.text()), message.width() * 19 / 10);
  int taken = 0;
  for (const QWidget* part : Find<QWidget>("StatusLine").findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (part->isVisible()) taken = std::max(taken, part->geometry().right());
  }
  EXPECT_LT(taken, Find<QWidget>("StatusLine").width());
  for (const char* output : {"Output1", "Output2", "Output3"}) {
    const auto& label = Find<QLabel>(output);
    if (label.isHidden()) continue;  // both decks play on one output
    const int seen = label.fontMetrics().averageCharWidth() * 14;
    EXPECT_GE(label.width(), std::min(seen, label.sizeHint().width())) << output;
  }
}

INSTANTIATE_TEST_SUITE_P(Languages, ClippedTextTest, ::testing::Values(0, 1, 2));

}  // namespace
}  // namespace ui::testing
