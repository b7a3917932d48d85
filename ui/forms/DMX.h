// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "app/lights/LightStation.h"
#include "dmx/FaderMoves.h"
#include "dmx/ShowEdit.h"
#include "ui/forms/EditorWindow.h"
#include "ui/models/LevelMirror.h"

class QLabel;
class QPushButton;
class QScrollArea;

namespace app {
struct BroughtFixture;
struct LibraryFixture;
struct OpenedShow;
}  // namespace app

namespace ui {

class FixtureBrowser;
class FixtureFaders;
class LightPreview;
class PatchPanel;
class ScenePanel;

/// The show editor: fixtures are patched, looks are made with their faders and recorded as steps of scenes.
class DMX final : public EditorWindow {
  Q_OBJECT

 public:
  DMX(app::Workstation& workstation, const support::Clock& clock);
  ~DMX() override;

  void ShowFrame() override;
  [[nodiscard]] bool Changed() const override { return edit_.History().Changed(); }
  [[nodiscard]] const dmx::Show& Show() const { return edit_.Now(); }

 protected:
  [[nodiscard]] Files FilesOf() const override;
  [[nodiscard]] QWidget* MakeBody() override;
  void ShowDocument() override;
  void Undo() override { edit_.Undo(); }
  void Redo() override { edit_.Redo(); }
  [[nodiscard]] bool CanUndo() const override { return edit_.History().CanUndo(); }
  [[nodiscard]] bool CanRedo() const override { return edit_.History().CanRedo(); }
  [[nodiscard]] app::Drafts::Kind DraftKind() const override { return app::Drafts::Kind::Show; }
  [[nodiscard]] std::uint64_t Stamp() const override { return edit_.History().Stamp(); }
  [[nodiscard]] std::function<std::string()> DraftText() const override;
  [[nodiscard]] std::string Refusal() const override;
  [[nodiscard]] std::string Question() const override { return {}; }
  void Write(const Path& path, std::function<void(bool)> done) override;
  void Read(const Path& path) override;
  void ReadDraft(const std::string& text, const Path& path) override;
  void Clear() override;
  void changeEvent(QEvent* event) override;

 private:
  void ReadLibrary();
  void ShowFaders();
  void ShowChoice();
  void ShowLevels();
  void BringIntoView(const QWidget& faders);
  void Opened(const app::OpenedShow& opened, const Path& path);
  void PatchBrought(const app::BroughtFixture& brought);
  void Locate(int position);
  void Replace(int position, const app::LibraryFixture& fixture);
  void AskToRepair(int position);
  void AskToDrop(int aside);
  void ShowStep();
  /// By hand from then on.
  void SwitchBlind(bool blind);
  /// Lamps that are live are not moved by what is only looked at, until somebody wants it so.
  void GuardLamps();
  void Play();
  void ShowPlayer();
  /// Those that move together with a fixture, itself included.
  [[nodiscard]] std::vector<int> Together(int position) const;
  void MoveLevel(int position, int channel, int level);
  void MoveColour(int position, const QColor& colour);
  void MoveDirection(int position, const QPointF& place);
  void Move(std::vector<dmx::FaderMove> moves);

  dmx::ShowEdit edit_;
  LevelMirror levels_;
  bool blind_ = false;         ///< looks of the show are shown here and not sent
  bool blind_chosen_ = false;  ///< by hand
  dmx::DMXname staged_;        ///< fixtures as the console names them

  QLabel* length_ = nullptr;
  QPushButton* blind_button_ = nullptr;
  PatchPanel* patch_ = nullptr;
  FixtureBrowser* browser_ = nullptr;
  ScenePanel* scenes_ = nullptr;
  LightPreview* preview_ = nullptr;
  QScrollArea* area_ = nullptr;
  QWidget* strip_ = nullptr;
  QLabel* hint_ = nullptr;
  std::vector<FixtureFaders*> faders_;
};

}  // namespace ui
