// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "app/lights/StagedShow.h"
#include "support/Clock.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QHBoxLayout;
class QLabel;
class QMenu;
class QPushButton;
class QVBoxLayout;

namespace app {
class LightStation;
class LiveLightStation;
struct LightView;
}  // namespace app

namespace support {
class Settings;
}  // namespace support

namespace ui {

class Fader;
class FaderBank;
class LightPreview;
class LiveConsole;
class MessageBoxes;
class OutputLine;
class QuietCombo;
class ShowLine;
class WireStrip;

/// The light console: output, show player and stage, and below them the faders of all channels with what is
/// on the wire, or the live console.
class ConsolePage final : public Surface {
  Q_OBJECT

 public:
  ConsolePage(app::LightStation& lights, app::LiveLightStation& live, support::Settings& settings,
              MessageBoxes& boxes, const Look& look, QWidget* parent = nullptr);

  void Show(support::TimePoint now);
  void ToggleBlackout();
  /// Between the faders and the live console.
  void ToggleView();

 Q_SIGNALS:
  void LibraryWanted();
  void ShowEditorWanted();

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  enum class View { Faders, Live };
  void ShowView(View view);
  QHBoxLayout* MakeHead(MessageBoxes& boxes);
  void MakeChoices(QHBoxLayout& row);
  QHBoxLayout* MakeShowRow(MessageBoxes& boxes);
  QHBoxLayout* MakeWire();
  QVBoxLayout* MakeMaster();
  void ReadColours();
  void ShowRange();
  void MakeStage();
  /// Position in the patch, from 1.
  void FillFixtureMenu(QMenu& menu, int position);
  void ShowStage(const app::LightView& view);
  void ListFixtures(const app::StagePatch* patch);

  app::LightStation& lights_;
  app::LiveLightStation& live_;
  support::Settings& settings_;
  Look look_;
  OutputLine* output_;
  QLabel* range_;
  QPushButton* back_;
  QPushButton* on_;
  QuietCombo* fixtures_;
  WireStrip* wire_;
  LightPreview* stage_;
  FaderBank* bank_;
  QWidget* faders_;  ///< all of their view
  LiveConsole* console_;
  QPushButton* to_live_;
  QPushButton* to_faders_;
  std::vector<QWidget*> of_faders_;  ///< in the head
  Fader* master_;
  QLabel* master_text_;
  ShowLine* show_;
  std::shared_ptr<const app::StagePatch> patch_;
  bool blackout_ = false;
};

}  // namespace ui
