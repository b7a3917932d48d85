// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/ScenePanel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <set>

#include "ui/forms/Menus.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

constexpr double kRowEms = 2;

enum class Editing { No, Yes };

/// A cell that is there stays: it may be the one that was just typed into.
void Put(QTableWidget& table, int row, int column, const QString& text, Editing editing) {
  QTableWidgetItem* cell = table.item(row, column);
  if (cell == nullptr) {
    cell = new QTableWidgetItem;
    if (editing == Editing::No) cell->setFlags(cell->flags() & ~Qt::ItemIsEditable);
    table.setItem(row, column, cell);
  }
  if (cell->text() != text) cell->setText(text);
}

std::set<int> ChosenRowsOf(const QTableWidget& table) {
  std::set<int> rows;
  for (const QTableWidgetItem* item : table.selectedItems()) rows.insert(item->row());
  return rows;
}

}  // namespace

ScenePanel::ScenePanel(dmx::ShowEdit& edit, const LevelMirror& levels, const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent), edit_(edit), levels_(levels), look_(look) {
  setObjectName(QStringLiteral("ScenePanel"));
  scenes_ =
      MakeTable("Scenes", EditorWord::ScenesTip, {EditorWord::Scene, EditorWord::Loops, EditorWord::Length});
  steps_ = MakeTable("Steps", EditorWord::StepsTip, {EditorWord::Step, EditorWord::Fade, EditorWord::Wait});
  steps_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  connect(scenes_, &QTableWidget::itemSelectionChanged, this, [this] {
    if (ChosenRowsOf(*scenes_).empty()) return;
    scene_ = scenes_->currentRow() + 1;
    step_ = std::min(1, StepCount());
    ShowSteps();
    ShowButtons();
    Q_EMIT StepChosen();
  });
  connect(steps_, &QTableWidget::itemSelectionChanged, this, &ScenePanel::TakeChoice);
  connect(scenes_, &QTableWidget::cellChanged, this, &ScenePanel::SceneEdited);
  connect(steps_, &QTableWidget::cellChanged, this, &ScenePanel::StepEdited);
  step_head_ = new ElidedLabel;
  SetFontEm(*step_head_, 1.1, Weight::Bold);
  FillColumn(
      *this, 0.6, 0.4,
      {Heading(look.say(EditorWord::Scenes), 1.1),
       {scenes_, 3},
       MakeButtons(
           {{"AddScene", EditorWord::AddScene, EditorWord::AddSceneTip, &ScenePanel::AddScene, nullptr},
            {"CopyScene", EditorWord::Copy, EditorWord::CopySceneTip, &ScenePanel::CopyScene, &copy_scene_},
            {"RemoveScene", EditorWord::Remove, EditorWord::RemoveSceneTip, &ScenePanel::RemoveScene,
             &remove_scene_},
            {"SceneUp", EditorWord::UpSign, EditorWord::SceneUpTip, &ScenePanel::SceneUp, &scene_up_},
            {"SceneDown", EditorWord::DownSign, EditorWord::SceneDownTip, &ScenePanel::SceneDown,
             &scene_down_}}),
       step_head_,
       {steps_, 4},
       MakeButtons(
           {{"AddStep", EditorWord::AddStep, EditorWord::AddStepTip, &ScenePanel::AddStep, &add_step_},
            {"RecordStep", EditorWord::RecordStep, EditorWord::RecordStepTip, &ScenePanel::RecordStep,
             &record_step_}}),
       MakeButtons(
           {{"CopyStep", EditorWord::Copy, EditorWord::CopyStepTip, &ScenePanel::CopyStep, &copy_step_},
            {"RemoveStep", EditorWord::Remove, EditorWord::RemoveStepTip, &ScenePanel::RemoveStep,
             &remove_step_},
            {"StepUp", EditorWord::UpSign, EditorWord::StepUpTip, &ScenePanel::StepUp, &step_up_},
            {"StepDown", EditorWord::DownSign, EditorWord::StepDownTip, &ScenePanel::StepDown, &step_down_}}),
       MakePlayer()});
}

QHBoxLayout* ScenePanel::MakePlayer() {
  auto* row = MakeButtons(
      {{"PlayFrom", EditorWord::PlayFrom, EditorWord::PlayFromTip, &ScenePanel::PlayWanted, &play_},
       {"StopPlay", EditorWord::StopShow, EditorWord::StopShowTip, &ScenePanel::StopWanted, &stop_}});
  auto* playing = Sentence("Playing", look_.skin.dim);
  playing_ = playing;
  row->addWidget(playing, 2);
  return row;
  GiveButtonMenu(*scenes_, QStringLiteral("SceneMenu"), {copy_scene_, remove_scene_, scene_up_, scene_down_});
  GiveButtonMenu(*steps_, QStringLiteral("StepMenu"),
                 {add_step_, record_step_, copy_step_, remove_step_, step_up_, step_down_, play_, stop_});
}

QHBoxLayout* ScenePanel::MakeButtons(std::initializer_list<Button> buttons) {
  auto* row = new QHBoxLayout;
  SetSpacingEm(*row, 0, 0.3);
  for (const Button& button : buttons) {
    auto* made = new QPushButton(look_.say(button.caption));
    const bool sign = button.caption == EditorWord::UpSign || button.caption == EditorWord::DownSign;
    SetKind(*made, sign ? "tool" : "plain");
    Name(*made, button.name, look_.say(button.tip), look_.say(button.tip));
    connect(made, &QPushButton::clicked, this, button.act);
    row->addWidget(made, sign ? 0 : 1);
    if (button.made != nullptr) *button.made = made;
  }
  return row;
}

QTableWidget* ScenePanel::MakeTable(const char* name, EditorWord caption,
                                    std::initializer_list<EditorWord> heads) {
  QStringList words;
  for (const EditorWord head : heads) words += look_.say(head);
  QTableWidget* table = ui::MakeTable(name, {{}, look_.say(caption), look_.say(caption)}, words, 0);
  table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                         QAbstractItemView::AnyKeyPressed);
  return table;
}

int ScenePanel::StepCount() const {
  const dmx::Scene* scene = edit_.Now().scenes.Item(scene_);
  return scene == nullptr ? 0 : scene->Steps.count();
}

void ScenePanel::ShowDocument() {
  scene_ = std::clamp(scene_, std::min(1, edit_.Now().scenes.count()), edit_.Now().scenes.count());
  step_ = std::clamp(step_, std::min(1, StepCount()), StepCount());
  ShowScenes();
  ShowSteps();
  ShowButtons();
}

void ScenePanel::ShowScenes() {
  const QSignalBlocker quiet(scenes_);
  scenes_->setRowCount(edit_.Now().scenes.count());
  int row = 0;
  for (const dmx::Scene& scene : edit_.Now().scenes) {
    Put(*scenes_, row, 0, Decode(scene.SceneName), Editing::Yes);
    Put(*scenes_, row, 1, QString::number(scene.Loops), Editing::Yes);
    Put(*scenes_, row, 2, Decode(dmx::ShowTimeText(dmx::LengthOf(scene))), Editing::No);
    scenes_->setRowHeight(row, Em(*this, kRowEms));
    ++row;
  }
  scenes_->clearSelection();
  if (scene_ > 0) scenes_->selectRow(scene_ - 1);
}

void ScenePanel::ShowSteps() {
  const dmx::Scene* scene = edit_.Now().scenes.Item(scene_);
  SetText(*step_head_, scene == nullptr ? look_.say(EditorWord::Steps)
                                        : look_.say(EditorWord::StepsOf).arg(Decode(scene->SceneName)));
  const QSignalBlocker quiet(steps_);
  std::set<int> chosen = ChosenRowsOf(*steps_);
  if (!chosen.contains(step_ - 1)) chosen = {step_ - 1};
  steps_->setRowCount(StepCount());
  for (int row = 0; row < StepCount(); ++row) {
    const dmx::SceneStep& step = *scene->Steps.Item(row + 1);
    Put(*steps_, row, 0, QString::number(row + 1), Editing::No);
    Put(*steps_, row, 1, Decode(step.FadeTime), Editing::Yes);
    Put(*steps_, row, 2, Decode(step.WaitTime), Editing::Yes);
    steps_->setRowHeight(row, Em(*this, kRowEms));
  }
  steps_->clearSelection();
  if (step_ > 0) steps_->setCurrentCell(step_ - 1, std::max(0, steps_->currentColumn()));
  for (const int row : chosen) {
    for (int column = 0; row >= 0 && row < StepCount() && column < 3; ++column)
      steps_->item(row, column)->setSelected(true);
  }
}

void ScenePanel::ShowButtons() {
  const int scenes = edit_.Now().scenes.count();
  for (QPushButton* button : {copy_scene_, remove_scene_, add_step_, play_}) button->setEnabled(scene_ > 0);
  scene_up_->setEnabled(scene_ > 1);
  scene_down_->setEnabled(scene_ > 0 && scene_ < scenes);
  for (QPushButton* button : {record_step_, copy_step_, remove_step_}) button->setEnabled(step_ > 0);
  step_up_->setEnabled(step_ > 1);
  step_down_->setEnabled(step_ > 0 && step_ < StepCount());
}

void ScenePanel::TakeChoice() {
  if (ChosenRowsOf(*steps_).empty()) return;
  step_ = steps_->currentRow() + 1;
  ShowButtons();
  Q_EMIT StepChosen();
}

void ScenePanel::Finish(int scene, int step) {
  scene_ = scene;
  step_ = step;
  const QSignalBlocker quiet(steps_);
  steps_->clearSelection();
  edit_.Settle();
  Q_EMIT Changed();
}

void ScenePanel::SceneEdited(int row, int column) {
  const QString text = scenes_->item(row, column)->text();
  if (column == 0) edit_.RenameScene(row + 1, text.toStdString());
  bool number = false;
  const int loops = text.toInt(&number);
  if (column == 1 && number) edit_.SetLoops(row + 1, loops);
  edit_.Settle();
  Q_EMIT Changed();
}

// A time that is typed holds for all steps that are chosen.
void ScenePanel::StepEdited(int row, int column) {
  const auto time = dmx::ReadTypedTime(steps_->item(row, column)->text().toStdString());
  std::set<int> rows = ChosenRowsOf(*steps_);
  if (!rows.contains(row)) rows = {row};
  std::vector<int> steps;
  for (const int chosen : rows) steps.push_back(chosen + 1);
  if (time && column == 1) edit_.SetFade(scene_, steps, *time);
  if (time && column == 2) edit_.SetWait(scene_, steps, *time);
  edit_.Settle();
  Q_EMIT Changed();
}

void ScenePanel::AddScene() {
  const QString name = look_.say(EditorWord::NewScene).arg(edit_.Now().scenes.count() + 1);
  Finish(edit_.AddScene(scene_, name.toStdString(), levels_.Now()), 1);
}

void ScenePanel::CopyScene() {
  const dmx::Scene* scene = edit_.Now().scenes.Item(scene_);
  if (scene == nullptr) return;
  const QString name = look_.say(EditorWord::CopyOf).arg(Decode(scene->SceneName));
  Finish(edit_.CopyScene(scene_, name.toStdString()), step_);
}

void ScenePanel::RemoveScene() {
  edit_.RemoveScene(scene_);
  Finish(scene_, 1);
}

void ScenePanel::MoveScene(int by) {
  edit_.MoveScene(scene_, scene_ + by);
  Finish(scene_ + by, step_);
}

void ScenePanel::AddStep() {
  Finish(scene_, edit_.AddStep(scene_, step_, levels_.Now()));
}

void ScenePanel::RecordStep() {
  edit_.RecordStep(scene_, step_, levels_.Now());
  Finish(scene_, step_);
}

void ScenePanel::CopyStep() {
  Finish(scene_, edit_.CopyStep(scene_, step_));
}

void ScenePanel::RemoveStep() {
  const std::set<int> rows = ChosenRowsOf(*steps_);
  std::vector<int> steps;
  for (const int row : rows) steps.push_back(row + 1);
  edit_.RemoveSteps(scene_, steps);
  Finish(scene_, rows.empty() ? step_ : *rows.begin() + 1);
}

void ScenePanel::MoveStep(int by) {
  edit_.MoveStep(scene_, step_, step_ + by);
  Finish(scene_, step_ + by);
}

void ScenePanel::ShowPlaying(const QString& text) {
  SetText(*playing_, text);
  stop_->setEnabled(!text.isEmpty());
}

}  // namespace ui
