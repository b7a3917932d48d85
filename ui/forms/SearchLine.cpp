// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/SearchLine.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <utility>

#include "ui/models/TrackModel.h"
#include "ui/strings/Decode.h"
#include "ui/strings/ListWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/TrackGrid.h"

namespace ui {
namespace {

catalogue::SortAs OrderOf(GridColumn::Shows shows) {
  switch (shows) {
    case GridColumn::Shows::Number:
    case GridColumn::Shows::Tempo:
      return catalogue::SortAs::Number;
    case GridColumn::Shows::Time:
      return catalogue::SortAs::Time;
    case GridColumn::Shows::Text:
    case GridColumn::Shows::Deck:
      break;
  }
  return catalogue::SortAs::Text;
}

}  // namespace

SearchLine::SearchLine(const QString& name, app::TableSearch& search, TrackModel& model, TrackGrid& grid,
                       const Hints& hints, const Look& look, QWidget* parent)
    : QWidget(parent),
      search_(search),
      model_(model),
      grid_(grid),
      hint_(hints.grid),
      look_(look),
      shown_(search.Answers()) {
  field_ = new QLineEdit(Decode(search.Query()));
  field_->setPlaceholderText(hints.field);
  field_->setMaxLength(500);
  field_->installEventFilter(this);
  Name(*field_, name, look.say(ListWord::Find), hints.tip);
  connect(field_, &QLineEdit::textChanged, this,
          [this](const QString& text) { search_.Look(text.toUtf8().toStdString()); });
  found_ = Reading(name + QStringLiteral("Count"));
  SetTextColour(*found_, look.skin.dim);
  FillRow(*this, 0, 0.6, {{field_, 1}, found_});
  grid.LetSort();
  connect(&grid, &TrackGrid::SortWanted, this, &SearchLine::SortBy);
  model.ShowSort(search.Sorted());
  model.ShowRows(search.Shown());
  ShowCount();
}

void SearchLine::TakeFocus() {
  field_->setFocus();
  field_->selectAll();
}

void SearchLine::Show() {
  if (std::exchange(shown_, search_.Answers()) != search_.Answers()) ShowRows();
  ShowCount();
}

void SearchLine::ShowRows() {
  constexpr std::size_t kMostKept = 200;
  std::vector<int> chosen = grid_.ChosenRows();
  const int current = grid_.ChosenRow();
  model_.ShowRows(search_.Shown());
  if (chosen.empty() || chosen.size() > kMostKept) return;
  grid_.ChooseRow(current);
  QItemSelection places;
  for (const int place : model_.PlacesOf(chosen)) {
    places.select(model_.index(place, 0), model_.index(place, model_.columnCount() - 1));
  }
  grid_.selectionModel()->select(places, QItemSelectionModel::Select);
}

void SearchLine::ShowCount() {
  const bool looking = !field_->text().trimmed().isEmpty();
  SetText(*found_, look_.say(ListWord::Found).arg(model_.rowCount()));
  found_->setVisible(looking);
  grid_.SetHint(looking ? look_.say(ListWord::NothingFound) : hint_);
}

void SearchLine::SortBy(int column) {
  const auto columns = model_.Shape().columns;
  const auto clicked = std::find_if(columns.begin(), columns.end(),
                                    [column](const GridColumn& shown) { return shown.record == column; });
  if (clicked == columns.end()) return;
  catalogue::SortWish wish{column, OrderOf(clicked->shows), catalogue::SortDirection::Up};
  if (search_.Sorted() == wish) {
    wish.direction = catalogue::SortDirection::Down;
  } else if (search_.Sorted().column == column) {
    wish = {};
  }
  search_.Sort(wish);
  model_.ShowSort(wish);
}

bool SearchLine::Escape() {
  if (field_->text().isEmpty()) {
    grid_.setFocus();
  } else {
    field_->clear();
  }
  return true;
}

bool SearchLine::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
      return Escape();
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
      grid_.ChooseFirst();
      grid_.setFocus();
      return true;
    default:
      return QWidget::eventFilter(watched, event);
  }
}

}  // namespace ui
