// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMainWindow>
#include <QTimer>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/Workstation.h"
#include "app/WorkstationView.h"
#include "app/files/IntakeOrder.h"
#include "ui/forms/DraftOffers.h"
#include "ui/forms/Editors.h"
#include "ui/forms/HelpWindow.h"
#include "ui/forms/MessageBoxes.h"
#include "ui/forms/SettingsPage.h"
#include "ui/forms/StatusLine.h"
#include "ui/models/BankModel.h"
#include "ui/models/MixerState.h"
#include "ui/models/TrackRows.h"
#include "ui/strings/EveningWords.h"
#include "ui/strings/QtWords.h"
#include "ui/widgets/Look.h"

class QMenu;
class QPushButton;
class QStackedWidget;

namespace app {
struct IntakeOutcome;
}  // namespace app

namespace ui {

class BatchBar;
class ConsolePage;
class DeckArea;
class EffectsPage;
class EqualiserPage;
class KaraokePage;
class ListenBar;
class MicrophoneStrip;
class MixingPanel;
class MusicPage;
class OrganPage;
class PageButton;
class PlaylistPanel;
class RecordingPage;
class SingersPanel;
class SongPanel;
class VisualPanel;
class frmKaraoke;
struct RecordedPlace;

/// The main window: status line, decks around the mixer, and the pages below them.
///
/// One frame timer drives all that moves, at most 60 times a second, from one view of the workstation. A
/// change of language or colours makes the contents anew; nothing that is heard depends on them.
class frmMain final : public QMainWindow {
  Q_OBJECT

 public:
  /// Requires: the workstation has started up.
  frmMain(app::Workstation& workstation, const support::Clock& clock);
  ~frmMain() override;

  void setVisible(bool visible) override;
  /// What the frame timer does; a test may do it by hand.
  void ShowFrame();
  /// Over all other windows, with the keyboard, as far as the system lets it.
  void ComeToFront();
  [[nodiscard]] const Editors& OpenEditors() const { return editors_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// The question before what plays is ended; nothing where nothing plays.
  [[nodiscard]] std::optional<EveningWord> AskBeforeLeaving();
  void CloseSoon();
  void ReadChoices();
  void Change(SettingsPage::Choices choices);
  void Build();
  QWidget* MakeDecks(const Look& look);
  QWidget* MakeDeckButton(const Look& look);
  /// Whole decks over the page that is shown, or one line each, as was chosen for it.
  void TakeDeckForm();
  void ToggleDeckForm();
  QWidget* MakePages(const Look& look);
  QWidget* MakeMusic(const Look& look);
  QWidget* MakeKaraoke(const Look& look);
  /// A row of the karaoke table, from 1.
  /// For the singer that is chosen, else at once.
  void PlaySong(int row);
  void FillSongMenu(QMenu& menu);
  void AddSongs(std::vector<std::string> paths);
  void ShowSong(support::TimePoint now);
  QWidget* MakeEffects(const Look& look);
  QWidget* MakeRecording(const Look& look);
  void ToggleRecording();
  [[nodiscard]] bool IsRecording();
  void ShowRecording(support::TimePoint now);
  void KeepListenLevel(int level);
  void ListenToChosen();
  /// Of the first row that is chosen in the list that had the keys last.
  [[nodiscard]] std::string ChosenFile() const;
  PlaylistPanel* MakePlaylist(int number, const Look& look);
  void AddPage(QWidget* page, Say caption, Say tip, const Look& look, QWidget* buttons);
  void ToggleLiveLights();
  void ShowPage(int page);
  void FocusPage();
  void GiveRowMenus();
  void FillRowMenu(QMenu& menu, TableId table);
  /// The keys go to the search field of the page, or of the catalogue.
  void Find();
  void MakeKeys();
  /// Everywhere: also while a dialog has the keyboard. Window: only while the window has it.
  enum class Reach { Everywhere, Window };
  void Key(const QKeySequence& key, Reach reach, std::function<void()> action);
  /// What a key does for as long as it is held; whether this event is such a key's.
  bool HoldKey(const QKeyEvent& key, bool pressed);
  void Talk(bool held);
  void Nudge(int deck, int direction);
  void ReleaseKeys();
  void ApplySize();

  void LoadOnFreeDeck(const TrackRows& rows);
  /// The first of the rows.
  void Load(int deck, const TrackRows& rows);
  /// False when the deck is heard, which is told.
  bool LoadRecorded(int deck, const RecordedPlace& place);
  void PlayRecorded(const RecordedPlace& place);
  /// From now on the keys that load take this list's rows.
  void Activate(TableId table);
  /// The rows that are chosen in the list that had the keys last.
  [[nodiscard]] TrackRows ChosenRows() const;
  void PutIntoPlaylist(const TrackRows& rows, TableId to, int before, Leaving leaving);
  void AddChosenTo(int playlist);
  [[nodiscard]] PlaylistPanel& PanelOf(TableId playlist) const;
  void AnalyseChosen();
  /// Of the rows chosen on the page that is shown.
  void EditTags();
  void DeleteTracks();
  void DeleteKaraoke();
  void AddFiles(std::vector<std::string> paths);
  void AddAndLoad(int deck, std::vector<std::string> paths);
  void Add(std::vector<std::string> paths, std::function<void(const app::IntakeOutcome&)> then);
  /// The chosen ones; their files stay.
  void RemoveTracks();
  void RemoveSongs();
  void TellRemoved(int rows);
  void BringRowsBack();
  [[nodiscard]] const app::DeckView& Deck(int deck) const;

  app::Workstation& workstation_;
  support::Settings& settings_;
  const support::Clock& clock_;
  SettingsPage::Choices choices_{};
  std::unique_ptr<Strings> say_;
  QtWords words_;
  MixerState mixer_state_;
  NoticesRead notices_read_;
  BankDraft bank_draft_;
  app::WorkstationView view_;
  QTimer frames_;
  double points_ = 0;
  int page_ = 0;
  bool painted_ = false;
  bool was_active_ = false;
  std::array<bool, 2> nudging_{};  ///< by a key that is held
  bool talking_ = false;           ///< the same
  TableId active_ = TableId::Catalogue;
  HelpWindow help_{*this};
  MessageBoxes boxes_{*this};
  Editors editors_;
  DraftOffers drafts_;
  bool agreed_ = false;   ///< to end what plays
  bool leaving_ = false;  ///< nothing is left to ask for

  StatusLine* status_ = nullptr;
  MicrophoneStrip* microphone_ = nullptr;
  DeckArea* deck_area_ = nullptr;
  QPushButton* deck_button_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  std::vector<PageButton*> page_buttons_;
  BatchBar* batch_ = nullptr;
  ListenBar* listen_ = nullptr;
  MusicPage* music_ = nullptr;
  std::array<PlaylistPanel*, app::kPlaylists> playlists_{};
  KaraokePage* karaoke_ = nullptr;
  SongPanel* song_ = nullptr;
  SingersPanel* turns_ = nullptr;
  std::unique_ptr<frmKaraoke> singers_;
  EffectsPage* effects_ = nullptr;
  EqualiserPage* equaliser_ = nullptr;
  RecordingPage* recording_ = nullptr;
  MixingPanel* mixing_ = nullptr;
  SettingsPage* settings_page_ = nullptr;
  VisualPanel* visual_ = nullptr;
  ConsolePage* console_ = nullptr;
  OrganPage* organ_ = nullptr;
};

}  // namespace ui
