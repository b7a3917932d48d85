// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/PatchPanel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <set>

#include "ui/forms/FixtureFaders.h"
#include "ui/forms/Menus.h"
#include "ui/strings/Decode.h"
#include "ui/strings/EditorWords.h"
#include "ui/strings/FixtureLibraryWords.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

constexpr double kPatchRowEms = 2;

void Warn(QListWidgetItem& item, const Look& look) {
  item.setForeground(look.skin.warning);
  item.setToolTip(look.say(EditorWord::CutShortTip));
}

}  // namespace

PatchPanel::PatchPanel(dmx::ShowEdit& edit, app::EditorFiles& files, const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent), edit_(edit), files_(files), look_(look) {
  setObjectName(QStringLiteral("Patch"));
  MakeLibrary();
  MakeList();
  setFocusProxy(library_);
  FillColumn(*this, 0.6, 0.4,
             {Row(0.4, {{Heading(look.say(EditorWord::Fixtures), 1.1), 1}, browse_}),
              {library_, 3},
              Row(0.4, {{Caption(look.say(EditorWord::FromChannel), look.skin.dim), 1}, start_, patch_}),
              {list_, 4},
              Row(0.4, {{move_, 1}, {remove_, 1}}),
              locate_,
              repair_});
}

void PatchPanel::MakeLibrary() {
  library_ = new QListWidget;
  Name(*library_, "LibraryList", look_.say.Of(EditorWord::LibraryList));
  connect(library_, &QListWidget::currentRowChanged, this, &PatchPanel::SuggestStart);
  connect(library_, &QListWidget::itemDoubleClicked, this, &PatchPanel::PatchChosen);
  browse_ = PlainButton("BrowseFixtures", look_.say.Of(FixtureLibraryWord::FromLibrary),
                        [this] { Q_EMIT BrowseWanted(); });
  start_ = new QLineEdit;
  start_->setValidator(new QIntValidator(0, 9999, start_));  // what does not fit is refused in words
  start_->setFixedWidth(Em(*this, 4));
  Name(*start_, "PatchStart", look_.say.Of(EditorWord::FromChannel));
  patch_ = PlainButton("PatchFixture", look_.say.ByTip(EditorWord::Patch, EditorWord::PatchTip),
                       [this] { PatchChosen(); });
  connect(start_, &QLineEdit::returnPressed, this, &PatchPanel::PatchChosen);
}

void PatchPanel::MakeList() {
  list_ = MakeTable("PatchList", {{}, look_.say(EditorWord::Fixtures), look_.say(EditorWord::PatchListTip)},
                    {{}, {}, {}}, 2);
  list_->horizontalHeader()->hide();
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  connect(list_, &QTableWidget::itemSelectionChanged, this, [this] {
    ShowButtons();
    Q_EMIT ChoiceChanged();
  });
  move_ = PlainButton("MoveFixture", look_.say.ByTip(EditorWord::Move, EditorWord::MoveFixtureTip),
                      [this] { MoveChosen(); });
  remove_ = PlainButton("RemoveFixture", look_.say.ByTip(EditorWord::Remove, EditorWord::RemoveFixtureTip),
                        [this] { RemoveChosen(); });
  locate_ = PlainButton("LocateFixture", look_.say.ByTip(EditorWord::Locate, EditorWord::LocateTip),
                        [this] { Locate(); });
  repair_ = PlainButton("RepairFixture", look_.say.ByTip(EditorWord::Repair, EditorWord::RepairTip),
                        [this] { Repair(); });
  GiveButtonMenu(*list_, QStringLiteral("FixtureMenu"), {move_, remove_, locate_, repair_});
  GiveButtonMenu(*library_, QStringLiteral("LibraryMenu"), {patch_});
}

void PatchPanel::ShowLibrary(std::vector<app::LibraryFixture> fixtures) {
  if (fixtures == fixtures_ && library_->count() > 0) return;  // a start that was typed stays
  const QListWidgetItem* current = library_->currentItem();
  const QString chosen = current == nullptr ? QString() : current->text();
  fixtures_ = std::move(fixtures);
  const QSignalBlocker quiet(library_);
  library_->clear();
  for (const app::LibraryFixture& fixture : fixtures_) {
    QString name = Decode(fixture.file);
    name.chop(4);
    library_->addItem(name);
    if (fixture.cut_short) Warn(*library_->item(library_->count() - 1), look_);
  }
  const auto known = library_->findItems(chosen, Qt::MatchExactly);
  library_->setCurrentRow(known.isEmpty() ? 0 : library_->row(known.front()));
  if (fixtures_.empty()) library_->addItem(look_.say(EditorWord::LibraryEmpty));
  patch_->setEnabled(!fixtures_.empty());
  SuggestStart();
}

void PatchPanel::SuggestStart() {
  const int row = library_->currentRow();
  if (row < 0 || fixtures_.empty()) return;
  const int count = fixtures_[static_cast<std::size_t>(row)].channels.count();
  const int start = edit_.Patched().SuggestStart(count);
  start_->setText(QString::number(std::max(start, 1)));
}

QString PatchPanel::TroubleOf(int position) const {
  const dmx::DMXfilename& fixture = *edit_.Now().fixtures.Item(position);
  if (fixture.Channels.count() == 0) return look_.say(EditorWord::MissingFile);
  QStringList troubles;
  if (fixture.cut_short) troubles += look_.say(EditorWord::CutShortTip);
  if (edit_.NeedsRepair(position))
    troubles += look_.say(EditorWord::DiffersTip).arg(fixture.NumberOf).arg(fixture.Channels.count());
  return troubles.join(QLatin1Char(' '));
}

void PatchPanel::ShowDocument() {
  const dmx::Show& show = edit_.Now();
  const std::vector<int> chosen = ChosenRows();
  const QSignalBlocker quiet(list_);
  list_->clearSelection();
  list_->setRowCount(show.fixtures.count() + static_cast<int>(show.aside.size()));
  int row = 0;
  for (const dmx::DMXfilename& fixture : show.fixtures) {
    const QString trouble = TroubleOf(row + 1);
    ShowRow(row++, fixture, trouble);
  }
  for (const dmx::SetAside& aside : show.aside)
    ShowRow(row++, aside.fixture, look_.say(EditorWord::AsideTip));
  for (const int still : chosen) {
    for (int column = 0; column < list_->columnCount() && still < row; ++column)
      list_->item(still, column)->setSelected(true);
  }
  SuggestStart();
  ShowButtons();
}

// One that is out of the show has no number.
void PatchPanel::ShowRow(int row, const dmx::DMXfilename& fixture, const QString& trouble) {
  const QString title = FixtureTitle(fixture) + (trouble.isEmpty() ? QString() : QStringLiteral("  ⚠"));
  const bool shown = row < edit_.Now().fixtures.count();
  const QString texts[] = {shown ? QString::number(row + 1) : QStringLiteral("–"), FixtureChannels(fixture),
                           title};
  for (int column = 0; column < 3; ++column) {
    auto* cell = new QTableWidgetItem(texts[column]);
    if (!trouble.isEmpty()) cell->setForeground(look_.skin.warning);
    cell->setToolTip(trouble.isEmpty() ? title : trouble);
    list_->setItem(row, column, cell);
  }
  list_->setRowHeight(row, Em(*this, kPatchRowEms));
}

std::vector<int> PatchPanel::ChosenRows() const {
  std::set<int> rows;
  for (const QTableWidgetItem* item : list_->selectedItems()) rows.insert(item->row());
  return {rows.begin(), rows.end()};
}

std::vector<int> PatchPanel::Chosen() const {
  std::vector<int> positions;
  for (const int row : ChosenRows()) {
    if (row < edit_.Now().fixtures.count()) positions.push_back(row + 1);
  }
  return positions;
}

std::vector<int> PatchPanel::ChosenAside() const {
  const dmx::Show& show = edit_.Now();
  std::vector<int> numbers;
  for (const int row : ChosenRows()) {
    const int number = row - show.fixtures.count() + 1;
    if (number >= 1 && number <= static_cast<int>(show.aside.size())) numbers.push_back(number);
  }
  return numbers;
}

void PatchPanel::Choose(int position) {
  list_->clearSelection();
  list_->setCurrentCell(position - 1, 0);  // selectRow() needs the head that is hidden
}

void PatchPanel::ShowButtons() {
  const std::vector<int> chosen = Chosen();
  const std::size_t aside = ChosenAside().size();
  move_->setEnabled(chosen.size() + aside == 1);
  remove_->setEnabled(!chosen.empty() || aside == 1);
  const dmx::DMXfilename* one = chosen.size() == 1 ? edit_.Now().fixtures.Item(chosen.front()) : nullptr;
  locate_->setVisible(one != nullptr && one->Channels.count() == 0);
  repair_->setVisible(one != nullptr && edit_.NeedsRepair(chosen.front()));
}

void PatchPanel::Finish(const support::Result<void>& result) {
  if (!result) Q_EMIT Refused(Decode(result.Failure().text));
  Q_EMIT Changed();
}

void PatchPanel::PatchChosen() {
  const int row = library_->currentRow();
  if (row < 0 || fixtures_.empty()) return;
  const app::LibraryFixture& fixture = fixtures_[static_cast<std::size_t>(row)];
  PatchAt(fixture, start_->text().toInt());
}

void PatchPanel::PatchAt(const app::LibraryFixture& fixture, int start) {
  const auto added = edit_.AddFixture({files_.FilenameOf(fixture.file), static_cast<std::int16_t>(start), 0,
                                       fixture.channels, fixture.cut_short});
  Finish(added);
  if (added) Choose(edit_.Now().fixtures.count());
}

void PatchPanel::PatchNext(const app::LibraryFixture& fixture) {
  PatchAt(fixture, std::max(1, edit_.Patched().SuggestStart(fixture.channels.count())));
}

void PatchPanel::MoveChosen() {
  const std::vector<int> chosen = Chosen();
  const std::vector<int> aside = ChosenAside();
  const int start = start_->text().toInt();
  if (chosen.size() == 1) Finish(edit_.MoveFixture(chosen.front(), start));
  if (chosen.empty() && aside.size() == 1) Finish(edit_.BringBack(aside.front(), start));
}

void PatchPanel::RemoveChosen() {
  const std::vector<int> chosen = Chosen();
  const std::vector<int> aside = ChosenAside();
  if (chosen.empty() && aside.size() == 1) return Q_EMIT DropWanted(aside.front());
  list_->clearSelection();
  for (auto position = chosen.rbegin(); position != chosen.rend(); ++position) edit_.RemoveFixture(*position);
  Q_EMIT Changed();
}

void PatchPanel::Locate() {
  const std::vector<int> chosen = Chosen();
  if (chosen.size() == 1) Q_EMIT LocateWanted(chosen.front());
}

void PatchPanel::Repair() {
  const std::vector<int> chosen = Chosen();
  if (chosen.size() == 1) Q_EMIT RepairWanted(chosen.front());
}

}  // namespace ui
