// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/TrackGrid.h"

#include <QDrag>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QPixmap>

#include "ui/models/CatalogueModel.h"
#include "ui/widgets/Look.h"

namespace ui {
namespace {

/// Widths in ems; a negative one is a share of the room that the fixed ones leave.
constexpr double kWidths[] = {4.2, -30, -34, 5, 5, -14, -22, 4.5};

}  // namespace

TrackGrid::TrackGrid(QWidget* parent) : QTableView(parent) {
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setShowGrid(false);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setTabKeyNavigation(false);
  setDragEnabled(true);
  setVerticalScrollMode(ScrollPerItem);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setHighlightSections(false);
  connect(this, &QTableView::doubleClicked, this,
          [this](const QModelIndex& index) { Q_EMIT Chosen(CatalogueModel::TableRow(index)); });
  SizeRows();
}

int TrackGrid::ChosenRow() const {
  return currentIndex().isValid() ? CatalogueModel::TableRow(currentIndex()) : 0;
}

void TrackGrid::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  // The base puts its cursor on the first row without showing it; what the keys load must be seen.
  if (currentIndex().isValid() && !selectionModel()->hasSelection()) selectRow(currentIndex().row());
}

void TrackGrid::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter || !currentIndex().isValid()) return QTableView::keyPressEvent(event);
  Q_EMIT Chosen(ChosenRow());
}

void TrackGrid::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() != QEvent::FontChange) return;
  SizeRows();
  SizeColumns();
}

void TrackGrid::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  SizeColumns();
}

void TrackGrid::SizeRows() {
  verticalHeader()->setMinimumSectionSize(1);
  verticalHeader()->setDefaultSectionSize(Em(*this, 2.1));
}

void TrackGrid::SizeColumns() {
  if (model() == nullptr) return;
  int room = viewport()->width();
  double shares = 0;
  for (const double width : kWidths) {
    if (width > 0)
      room -= Em(*this, width);
    else
      shares -= width;
  }
  for (int column = 0; column < model()->columnCount(); ++column) {
    const double width = kWidths[column];
    horizontalHeader()->resizeSection(
        column, width > 0 ? Em(*this, width) : static_cast<int>(room * -width / shares));
  }
}

void TrackGrid::startDrag(Qt::DropActions) {
  if (!currentIndex().isValid()) return;
  const QString title = currentIndex().siblingAtColumn(CatalogueModel::Title).data().toString();
  auto* drag = new QDrag(this);
  drag->setMimeData(model()->mimeData({currentIndex()}));
  QPixmap picture(Em(*this, 20), Em(*this, 2.2));
  picture.fill(palette().color(QPalette::Button));
  QPainter painter(&picture);
  painter.setFont(font());
  painter.setPen(palette().color(QPalette::ButtonText));
  painter.drawText(picture.rect().adjusted(Em(*this, 0.6), 0, 0, 0), Qt::AlignVCenter,
                   fontMetrics().elidedText(title, Qt::ElideRight, Em(*this, 19)));
  painter.end();
  drag->setPixmap(picture);
  drag->exec(Qt::CopyAction);
}

}  // namespace ui
