// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/TrackGrid.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <algorithm>
#include <memory>

#include "ui/models/DroppedFiles.h"
#include "ui/models/TrackModel.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/TrackDelegate.h"

namespace ui {
namespace {

/// Ascending. Many of a sorted grid are noted by their numbers, because comparing a million takes too long.
void SortRows(std::vector<int>& rows) {
  if (std::is_sorted(rows.begin(), rows.end())) return;
  constexpr std::size_t kFew = 4096;
  if (rows.size() < kFew) return std::sort(rows.begin(), rows.end());
  std::vector<bool> chosen(static_cast<std::size_t>(*std::max_element(rows.begin(), rows.end())) + 1);
  for (const int row : rows) chosen[static_cast<std::size_t>(row)] = true;
  rows.clear();
  for (std::size_t row = 0; row < chosen.size(); ++row) {
    if (chosen[row]) rows.push_back(static_cast<int>(row));
  }
}

/// Heads that stand exactly over their cells.
class GridHead final : public QHeaderView {
 public:
  explicit GridHead(const Skin& skin) : QHeaderView(Qt::Horizontal), skin_(skin) {}

 protected:
  void paintSection(QPainter* painter, const QRect& place, int section) const override {
    painter->fillRect(place, skin_.panel);
    painter->fillRect(place.adjusted(0, place.height() - Line(*this), 0, 0), skin_.line);
    const int alignment = model()->headerData(section, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
    const bool centred = (alignment & Qt::AlignHCenter) != 0;
    const QRect room = centred ? place : TextRoom(place, alignment, font());
    painter->setPen(skin_.dim);
    painter->setFont(font());
    QString text = model()->headerData(section, Qt::Horizontal).toString();
    const int sorted = model()->headerData(section, Qt::Horizontal, TrackModel::kSortRole).toInt();
    if (sorted != 0) {
      text += sorted > 0 ? QStringLiteral(" ▲") : QStringLiteral(" ▼");
      painter->setPen(skin_.text);
    }
    painter->drawText(room, alignment | Qt::AlignVCenter | Qt::TextSingleLine, text);
  }

 private:
  const Skin& skin_;
};

}  // namespace

TrackGrid::TrackGrid(TrackModel& model, const Skin& skin, QWidget* parent)
    : QTableView(parent), rows_(model), skin_(skin) {
  setHorizontalHeader(new GridHead(skin));
  setModel(&model);
  setItemDelegate(new TrackDelegate(skin, *this));
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setShowGrid(false);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setTabKeyNavigation(false);
  setDragEnabled(model.Id().has_value());
  setVerticalScrollMode(ScrollPerItem);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setMinimumSectionSize(1);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setHighlightSections(false);
  connect(this, &QTableView::doubleClicked, this,
          [this](const QModelIndex& index) { Q_EMIT Chosen(rows_.TableRow(index)); });
  SizeRows();
}

void TrackGrid::TakeDrops() {
  takes_drops_ = true;
  setAcceptDrops(true);
}

void TrackGrid::SetHint(const QString& hint) {
  hint_ = hint;
}

void TrackGrid::SetActive(bool active) {
  if (active == active_) return;
  active_ = active;
  viewport()->update();
}

int TrackGrid::ChosenRow() const {
  return currentIndex().isValid() ? rows_.TableRow(currentIndex()) : 0;
}

std::vector<int> TrackGrid::ChosenRows() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    for (int place = range.top(); place <= range.bottom(); ++place) rows.push_back(rows_.TableRowAt(place));
  }
  SortRows(rows);
  return rows;
}

std::vector<int> TrackGrid::RowsInSight() const {
  std::vector<int> rows;
  const int first = rowAt(0), below = rowAt(viewport()->height() - 1);
  const int last = below < 0 ? rows_.rowCount() - 1 : below;
  for (int place = first; first >= 0 && place <= last; ++place) {
    rows.push_back(rows_.TableRow(rows_.index(place, 0)));
  }
  return rows;
}

void TrackGrid::ChooseRow(int row) {
  if (rows_.ShowsAll()) row = std::min(row, rows_.rowCount());
  const int place = row < 1 ? -1 : rows_.PlaceOf(row);
  if (place < 0) return;
  selectRow(place);
  scrollTo(currentIndex());
}

void TrackGrid::BringIntoSight(int row) {
  const int place = row < 1 ? -1 : rows_.PlaceOf(row);
  if (place < 0 || underMouse() || hasFocus()) return;
  scrollTo(rows_.index(place, 0));
}

void TrackGrid::ChooseFirst() {
  if (rows_.rowCount() > 0 && !selectionModel()->hasSelection()) selectRow(0);
}

void TrackGrid::LetSort() {
  horizontalHeader()->setSectionsClickable(true);
  connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) {
    const GridColumn& column = rows_.Shape().columns[static_cast<std::size_t>(section)];
    if (column.record != 0) Q_EMIT SortWanted(column.record);
  });
}

void TrackGrid::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  // The base puts its cursor on the first row without showing it; what the keys load must be seen.
  if (currentIndex().isValid() && !selectionModel()->hasSelection()) selectRow(currentIndex().row());
  Q_EMIT Entered();
}

void TrackGrid::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && currentIndex().isValid()) {
    Q_EMIT Chosen(ChosenRow());
  } else if (event->key() == Qt::Key_Delete && selectionModel()->hasSelection()) {
    Q_EMIT RemoveWanted();
  } else {
    QTableView::keyPressEvent(event);
  }
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
  verticalHeader()->setDefaultSectionSize(Em(*this, skin_.RowEms()));
}

int TrackGrid::FitColumns() {
  const auto columns = rows_.Shape().columns;
  int room = viewport()->width();
  for (const GridColumn& column : columns) room -= Em(*this, column.width);
  for (std::size_t i = 0; i < columns.size(); ++i) setColumnHidden(static_cast<int>(i), false);
  for (int leaving = static_cast<int>(columns.size()); leaving > 0 && room < 0; --leaving) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (columns[i].leaves != leaving) continue;
      setColumnHidden(static_cast<int>(i), true);
      room += Em(*this, columns[i].width);
    }
  }
  return std::max(0, room);
}

void TrackGrid::SizeColumns() {
  const auto columns = rows_.Shape().columns;
  const int room = FitColumns();
  double shares = 0;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!isColumnHidden(static_cast<int>(i))) shares += columns[i].share;
  }
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const int more = shares > 0 ? static_cast<int>(room * columns[i].share / shares) : 0;
    horizontalHeader()->resizeSection(static_cast<int>(i), Em(*this, columns[i].width) + more);
  }
}

int TrackGrid::GivenWidth() const {
  int width = verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
  for (const GridColumn& column : rows_.Shape().columns) width += Em(*this, column.width);
  return width;
}

QPixmap TrackGrid::DragPicture() const {
  QPixmap picture(Em(*this, 20), Em(*this, 2.2));
  picture.fill(skin_.raised);
  QPainter painter(&picture);
  painter.setFont(font());
  painter.setPen(skin_.text);
  const int rows = static_cast<int>(ChosenRows().size());
  QString text = rows_.TitleOf(ChosenRow());
  if (rows > 1) text = QString::number(rows) + QStringLiteral(" × ") + text;
  painter.drawText(picture.rect().adjusted(Em(*this, 0.6), 0, 0, 0), Qt::AlignVCenter,
                   fontMetrics().elidedText(text, Qt::ElideRight, Em(*this, 19)));
  return picture;
}

void TrackGrid::startDrag(Qt::DropActions) {
  if (!currentIndex().isValid() || !rows_.Id()) return;
  auto* drag = new QDrag(this);
  drag->setMimeData(rows_.DataOf(ChosenRows()));
  drag->setPixmap(DragPicture());
  drag->exec(Qt::CopyAction | Qt::MoveAction, takes_drops_ ? Qt::MoveAction : Qt::CopyAction);
}

bool TrackGrid::Takes(const QDropEvent& event) const {
  const QMimeData& dropped = *event.mimeData();
  return takes_drops_ && (TrackRowsIn(dropped) || (dropped.hasUrls() && !DroppedFiles(dropped).empty()));
}

int TrackGrid::GapAt(int height) const {
  const int row = rowAt(height);
  if (row < 0) return rows_.rowCount() + 1;
  const bool lower_half = height > rowViewportPosition(row) + rowHeight(row) / 2;
  return row + 1 + (lower_half ? 1 : 0);
}

void TrackGrid::ShowGap(int gap) {
  if (gap == gap_) return;
  gap_ = gap;
  viewport()->update();
}

void TrackGrid::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  QPainter painter(viewport());
  if (rows_.rowCount() == 0 && !hint_.isEmpty()) {
    painter.setPen(skin_.dim);
    painter.drawText(viewport()->rect().adjusted(Em(*this, 1), 0, -Em(*this, 1), 0),
                     int(Qt::AlignCenter) | Qt::TextWordWrap, hint_);
  }
  if (gap_ > 0) PaintGap(painter);
}

void TrackGrid::PaintGap(QPainter& painter) const {
  const int last = rows_.rowCount();
  int line = 0;
  if (last > 0)
    line = gap_ <= last ? rowViewportPosition(gap_ - 1) : rowViewportPosition(last - 1) + rowHeight(0);
  painter.fillRect(0, std::max(0, line - 1), viewport()->width(), 3 * Line(*this), skin_.text);
}

void TrackGrid::dragEnterEvent(QDragEnterEvent* event) {
  if (!Takes(*event)) return event->ignore();
  event->accept();
}

void TrackGrid::dragMoveEvent(QDragMoveEvent* event) {
  if (!Takes(*event)) return event->ignore();
  const int height = event->position().toPoint().y();
  const int edge = Em(*this, 1.5);
  // Near its edges the grid rolls on, so that a long list can be dropped into anywhere.
  if (height < edge) verticalScrollBar()->triggerAction(QScrollBar::SliderSingleStepSub);
  if (height > viewport()->height() - edge)
    verticalScrollBar()->triggerAction(QScrollBar::SliderSingleStepAdd);
  ShowGap(GapAt(height));
  event->accept();
}

void TrackGrid::dragLeaveEvent(QDragLeaveEvent*) {
  ShowGap(0);
}

void TrackGrid::dropEvent(QDropEvent* event) {
  const int before = GapAt(event->position().toPoint().y());
  ShowGap(0);
  if (!Takes(*event)) return event->ignore();
  const bool move = event->dropAction() == Qt::MoveAction;
  const auto rows = TrackRowsIn(*event->mimeData());
  // The source must not remove rows by itself: that is done where the tables are.
  event->setDropAction(Qt::CopyAction);
  event->accept();
  if (rows) {
    Q_EMIT RowsDropped(*rows, before, move ? Leaving::Go : Leaving::Stay);
  } else {
    Q_EMIT FilesDropped(DroppedFiles(*event->mimeData()), before);
  }
}

}  // namespace ui
