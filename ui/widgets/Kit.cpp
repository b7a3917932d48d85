// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/Kit.h"

#include <QCheckBox>
#include <QEvent>
#include <QHeaderView>
#include <QScreen>
#include <QTableWidget>
#include <algorithm>
#include <utility>

#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

template <class Layout>
Layout* Put(Layout* layout, double margin, double gap, Parts parts) {
  SetSpacingEm(*layout, margin, gap);
  for (const Part& part : parts) {
    if (part.widget != nullptr) {
      layout->addWidget(part.widget, part.stretch, part.place);
    } else if (part.layout != nullptr) {
      layout->addLayout(part.layout, part.stretch);
    } else {
      layout->addStretch(part.stretch);
    }
  }
  return layout;
}

QPushButton* MakeButton(const char* kind, QAnyStringView name, const Texts& texts) {
  auto* button = new QPushButton(texts.caption);
  SetKind(*button, kind);
  Name(*button, name, texts);
  return button;
}

QPushButton* MakeButton(const char* kind, QAnyStringView name, const Texts& texts, OnPress pressed) {
  QPushButton* button = MakeButton(kind, name, texts);
  if (pressed) QObject::connect(button, &QPushButton::clicked, button, std::move(pressed));
  return button;
}

}  // namespace

QHBoxLayout* Row(double gap, Parts parts) {
  return Put(new QHBoxLayout, 0, gap, parts);
}

QVBoxLayout* Column(double gap, Parts parts) {
  return Put(new QVBoxLayout, 0, gap, parts);
}

void FillRow(QWidget& widget, double margin, double gap, Parts parts) {
  Put(new QHBoxLayout(&widget), margin, gap, parts);
}

void FillColumn(QWidget& widget, double margin, double gap, Parts parts) {
  Put(new QVBoxLayout(&widget), margin, gap, parts);
}

QLabel* Heading(const QString& text, double ems) {
  auto* label = new QLabel(text);
  SetFontEm(*label, ems, Weight::Bold);
  return label;
}

QLabel* Caption(const QString& text, const QColor& colour) {
  auto* label = new QLabel(text);
  SetTextColour(*label, colour);
  return label;
}

QLabel* Reading(QAnyStringView name, Qt::Alignment place, QAnyStringView widest) {
  auto* label = new QLabel;
  Name(*label, name);
  label->setAlignment(place);
  if (!widest.isEmpty()) SetWidest(*label, widest);
  return label;
}

ElidedLabel* Sentence(QAnyStringView name, const QColor& colour) {
  auto* label = new ElidedLabel;
  Name(*label, name);
  if (colour.isValid()) SetTextColour(*label, colour);
  return label;
}

QPushButton* PlainButton(QAnyStringView name, const Texts& texts, OnPress pressed) {
  return MakeButton("plain", name, texts, std::move(pressed));
}

QPushButton* ToolButton(QAnyStringView name, const Texts& texts, OnPress pressed) {
  return MakeButton("tool", name, texts, std::move(pressed));
}

QPushButton* Lamp(QAnyStringView name, const Texts& texts, OnSwitch switched, const char* kind) {
  QPushButton* button = MakeButton(kind, name, texts);
  button->setCheckable(true);
  if (switched) QObject::connect(button, &QPushButton::clicked, button, std::move(switched));
  return button;
}

QuietCombo* Choice(const Skin& skin, QAnyStringView name, const Texts& texts, const QStringList& items,
                   int present, OnChoice chosen) {
  auto* list = new QuietCombo(skin);
  Name(*list, name, texts);
  list->addItems(items);
  if (!items.isEmpty()) list->setCurrentIndex(present);
  if (chosen) QObject::connect(list, &QComboBox::activated, list, std::move(chosen));
  return list;
}

QCheckBox* Check(QAnyStringView name, const Texts& texts, bool on, OnSwitch switched) {
  auto* box = new QCheckBox(texts.caption);
  Name(*box, name, texts);
  box->setChecked(on);
  QObject::connect(box, &QCheckBox::toggled, box, std::move(switched));
  return box;
}

void ShowBelow(QWidget& popup, const QWidget& button) {
  popup.adjustSize();
  const QRect room = button.screen()->availableGeometry();
  QPoint place = button.mapToGlobal(QPoint(0, button.height()));
  if (place.y() + popup.height() > room.bottom()) place = button.mapToGlobal(QPoint(0, -popup.height()));
  place.setX(std::clamp(place.x(), room.left(), std::max(room.left(), room.right() - popup.width())));
  popup.move(place);
  popup.show();
}

namespace {

/// Rows follow the size of the window's letters.
class GrowingTable final : public QTableWidget {
 public:
  using QTableWidget::QTableWidget;

 protected:
  void changeEvent(QEvent* event) override {
    QTableWidget::changeEvent(event);
    constexpr double kRow = 2.1;
    if (event->type() == QEvent::FontChange) verticalHeader()->setDefaultSectionSize(Em(*this, kRow));
  }
};

}  // namespace

QTableWidget* MakeTable(QAnyStringView name, const Texts& texts, const QStringList& heads, int stretches) {
  auto* table = new GrowingTable(0, static_cast<int>(heads.size()));
  Name(*table, name, texts);
  table->setHorizontalHeaderLabels(heads);
  table->verticalHeader()->hide();
  table->setShowGrid(false);
  table->setWordWrap(false);
  table->setTabKeyNavigation(false);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setSelectionMode(QAbstractItemView::SingleSelection);
  QHeaderView& head = *table->horizontalHeader();
  head.setHighlightSections(false);
  head.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  head.setSectionResizeMode(QHeaderView::ResizeToContents);
  head.setSectionResizeMode(stretches, QHeaderView::Stretch);
  return table;
}

}  // namespace ui
