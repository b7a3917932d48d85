// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMainWindow>
#include <QTimer>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/Workstation.h"
#include "support/ports/SettingsStore.h"
#include "ui/forms/SettingsPage.h"
#include "ui/models/MixerState.h"
#include "ui/widgets/Look.h"

class QPushButton;
class QStackedWidget;

namespace ui {

class DeckPanel;
class MixerPanel;
class MusicPage;
class StatusLine;

/// The main window: status line, decks around the mixer, and the pages below them.
///
/// One frame timer drives all that moves, at most 60 times a second, from one view of the workstation. A
/// change of language or colours makes the contents anew; nothing that is heard depends on them.
class frmMain final : public QMainWindow {
  Q_OBJECT

 public:
  /// Requires: the workstation has started up.
  frmMain(app::Workstation& workstation, support::SettingsStore& settings, const support::Clock& clock);
  ~frmMain() override;

  /// What the frame timer does; a test may do it by hand.
  void ShowFrame();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void ReadChoices();
  void Change(SettingsPage::Choices choices);
  void Build();
  QWidget* MakeDecks();
  QWidget* MakePages(const Look& look);
  void AddPage(QWidget* page, Say caption, Say tip, const Look& look, QWidget* buttons);
  void ShowPage(int page);
  void MakeKeys();
  /// Everywhere: also while a dialog has the keyboard. Window: only while the window has it.
  enum class Reach { Everywhere, Window };
  void Key(const QKeySequence& key, Reach reach, std::function<void()> action);
  void ApplySize();

  void LoadOnFreeDeck(int row);
  void Load(int deck, int row);
  void AddFiles(std::vector<std::string> paths);
  void AddAndLoad(int deck, std::vector<std::string> paths);
  void Add(std::vector<std::string> paths, std::function<void()> then);
  /// Row of the newest entry of a file; 0 is none.
  [[nodiscard]] int RowOf(const std::string& path) const;
  [[nodiscard]] const app::DeckView& Deck(int deck) const;

  app::Workstation& workstation_;
  support::SettingsStore& settings_;
  const support::Clock& clock_;
  SettingsPage::Choices choices_{};
  std::unique_ptr<Strings> say_;
  MixerState mixer_state_;
  app::WorkstationView view_;
  QTimer frames_;
  double points_ = 0;
  int page_ = 0;

  StatusLine* status_ = nullptr;
  std::array<DeckPanel*, 2> decks_{};
  MixerPanel* mixer_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  std::vector<QPushButton*> page_buttons_;
  MusicPage* music_ = nullptr;
  SettingsPage* settings_page_ = nullptr;
};

}  // namespace ui
