// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "dmx/ShowEdit.h"
#include "ui/models/LevelMirror.h"
#include "ui/strings/EditorWords.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QHBoxLayout;
class QLabel;
class QPushButton;
class QTableWidget;

namespace ui {

/// The scenes of a show and the steps of the chosen one.
class ScenePanel final : public Surface {
  Q_OBJECT

 public:
  /// levels: of the faders; what is recorded.
  ScenePanel(dmx::ShowEdit& edit, const LevelMirror& levels, const Look& look, QWidget* parent = nullptr);

  void ShowDocument();
  /// From 1; 0: there is none.
  [[nodiscard]] int ChosenScene() const { return scene_; }
  [[nodiscard]] int ChosenStep() const { return step_; }
  /// What a show does just now, or nothing.
  void ShowPlaying(const QString& text);

 Q_SIGNALS:
  void Changed();
  /// A hand chose a step: its look is wanted on the faders.
  void StepChosen();
  void PlayWanted();
  void StopWanted();

 private:
  using Act = void (ScenePanel::*)();
  struct Button {
    const char* name;
    EditorWord caption;
    EditorWord tip;
    Act act;
    QPushButton** made;
  };

  QHBoxLayout* MakeButtons(std::initializer_list<Button> buttons);
  QTableWidget* MakeTable(const char* name, EditorWord caption, std::initializer_list<EditorWord> heads);
  QHBoxLayout* MakePlayer();
  void ShowScenes();
  void ShowSteps();
  void ShowButtons();
  void TakeChoice();
  void SceneEdited(int row, int column);
  void StepEdited(int row, int column);
  void Finish(int scene, int step);
  void AddScene();
  void CopyScene();
  void RemoveScene();
  void SceneUp() { MoveScene(-1); }
  void SceneDown() { MoveScene(1); }
  void MoveScene(int by);
  void AddStep();
  void RecordStep();
  void CopyStep();
  void RemoveStep();
  void StepUp() { MoveStep(-1); }
  void StepDown() { MoveStep(1); }
  void MoveStep(int by);
  [[nodiscard]] int StepCount() const;

  dmx::ShowEdit& edit_;
  const LevelMirror& levels_;
  const Look& look_;
  int scene_ = 0;
  int step_ = 0;
  QTableWidget* scenes_;
  QTableWidget* steps_;
  QLabel* step_head_;
  QLabel* playing_ = nullptr;
  QPushButton* copy_scene_ = nullptr;
  QPushButton* remove_scene_ = nullptr;
  QPushButton* scene_up_ = nullptr;
  QPushButton* scene_down_ = nullptr;
  QPushButton* add_step_ = nullptr;
  QPushButton* record_step_ = nullptr;
  QPushButton* copy_step_ = nullptr;
  QPushButton* remove_step_ = nullptr;
  QPushButton* step_up_ = nullptr;
  QPushButton* step_down_ = nullptr;
  QPushButton* play_ = nullptr;
  QPushButton* stop_ = nullptr;
};

}  // namespace ui
