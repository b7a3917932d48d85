// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/PlaylistPanel.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "catalogue/RowMoves.h"
#include "ui/models/TrackModel.h"
#include "ui/widgets/TrackGrid.h"

namespace ui {

PlaylistPanel::PlaylistPanel(int number, app::Workstation& workstation, Width width, const Look& look,
                             QWidget* parent)
    : Surface(look.skin.panel, parent),
      number_(number),
      id_(PlaylistId(number)),
      table_(workstation.Playlist(number)),
      look_(look) {
  Name(*this, QStringLiteral("Playlist%1").arg(number), look.say(Say::Playlist).arg(number));
  if (number <= 2) SetStripe(look.skin.Deck(number));
  model_ = new TrackModel(table_, id_, PlaylistShape(), look, this);
  grid_ = new TrackGrid(*model_, look.skin);
  grid_->TakeDrops();
  grid_->SetHint(look.say(Say::EmptyPlaylist));
  Name(*grid_, QStringLiteral("PlayListView%1").arg(number), look.say(Say::Playlist).arg(number),
       look.say(Say::PlaylistTip));
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0.4, 0.3);
  rows->addLayout(MakeHead());
  rows->addWidget(grid_, 1);
  if (width == Width::Given) setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  Listen();
  ShowCount();
}

QHBoxLayout* PlaylistPanel::MakeHead() {
  auto* row = new QHBoxLayout;
  SetSpacingEm(*row, 0, 0.8);
  auto* head = new QLabel(look_.say(Say::Playlist).arg(number_));
  Name(*head, QStringLiteral("Playlist%1Head").arg(number_), {});
  SetFontEm(*head, 1.1, Weight::Bold);
  SetHeightEm(*head, kListHeadEms);
  count_ = new QLabel;
  Name(*count_, QStringLiteral("Playlist%1Count").arg(number_), {});
  SetTextColour(*count_, look_.skin.dim);
  remove_ = new QPushButton(look_.say(Say::RemoveRows));
  SetKind(*remove_, "plain");
  Name(*remove_, QStringLiteral("Playlist%1Remove").arg(number_), look_.say(Say::RemoveRowsName).arg(number_),
       look_.say(Say::RemoveRowsTip));
  connect(remove_, &QPushButton::clicked, this, &PlaylistPanel::RemoveChosen);
  row->addWidget(head);
  row->addWidget(count_, 1);
  row->addWidget(remove_);
  return row;
}

void PlaylistPanel::Listen() {
  connect(grid_, &TrackGrid::Entered, this, [this] { Q_EMIT Entered(id_); });
  connect(grid_, &TrackGrid::Chosen, this, [this](int row) { Q_EMIT RowChosen({id_, {row}}); });
  connect(grid_, &TrackGrid::DeleteWanted, this, &PlaylistPanel::RemoveChosen);
  connect(grid_, &TrackGrid::RowsDropped, this, [this](const TrackRows& rows, int before, Leaving leaving) {
    Q_EMIT RowsDropped(rows, id_, before, leaving);
  });
  connect(grid_, &TrackGrid::FilesDropped, this,
          [this](const std::vector<std::string>& paths) { Q_EMIT FilesDropped(id_, paths); });
}

void PlaylistPanel::Show(const app::WorkstationView& view) {
  model_->Sync();
  model_->ShowDecks(view);
  ShowCount();
}

void PlaylistPanel::ShowCount() {
  remove_->setEnabled(grid_->selectionModel()->hasSelection());
  const int rows = model_->rowCount();
  if (rows == shown_rows_) return;
  shown_rows_ = rows;
  count_->setText(rows == 1 ? look_.say(Say::OneTrack) : look_.say(Say::Tracks).arg(rows));
}

void PlaylistPanel::Reload(int row_to_choose) {
  model_->Reload();
  grid_->ChooseRow(row_to_choose);
  ShowCount();
}

void PlaylistPanel::TakeFocus() {
  grid_->setFocus();
}

void PlaylistPanel::SetActive(bool active) {
  grid_->SetActive(active);
}

TrackRows PlaylistPanel::ChosenRows() const {
  return {id_, grid_->ChosenRows()};
}

void PlaylistPanel::RemoveChosen() {
  const std::vector<int> rows = grid_->ChosenRows();
  if (rows.empty()) return;
  catalogue::RemoveRows(table_, rows);
  Reload(rows.front());
}

// After its children have their sizes of type: the grid's width hangs on them.
QSize PlaylistPanel::sizeHint() const {
  const QSize hint = Surface::sizeHint();
  const QMargins margins = layout()->contentsMargins();
  return {grid_->GivenWidth() + margins.left() + margins.right(), hint.height()};
}

}  // namespace ui
