// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QScreen>
#include <QStackedWidget>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <utility>

#include "app/Collections.h"
#include "app/Decks.h"
#include "app/Language.h"
#include "app/OutputStation.h"
#include "app/lights/LightStation.h"
#include "app/lists/ListStation.h"
#include "dmx/ShowPlayer.h"
#include "support/Settings.h"
#include "support/Text.h"
#include "support/WordRow.h"
#include "ui/forms/BatchBar.h"
#include "ui/forms/ConsolePage.h"
#include "ui/forms/DeckArea.h"
#include "ui/forms/EffectsPage.h"
#include "ui/forms/EqualiserPage.h"
#include "ui/forms/KaraokePage.h"
#include "ui/forms/ListenBar.h"
#include "ui/forms/MicrophoneStrip.h"
#include "ui/forms/MixerPanel.h"
#include "ui/forms/MixingPanel.h"
#include "ui/forms/MusicPage.h"
#include "ui/forms/OrganPage.h"
#include "ui/forms/PlaylistPanel.h"
#include "ui/forms/StatusLine.h"
#include "ui/forms/VisualPanel.h"
#include "ui/forms/frmKaraoke.h"
#include "ui/models/KeyMap.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/PageButton.h"

namespace ui {
namespace {

constexpr auto kFrame = std::chrono::milliseconds(17);
constexpr double kBasePoints = 10;     ///< at the size below and under it
constexpr QSize kBaseSize(1600, 900);  ///< larger windows get larger type
constexpr QSize kFullSize(1366, 720);  ///< smaller windows get smaller type
constexpr int kFullEm = 13;            ///< pixels of an em there, and what 10 points have above that
constexpr double kRestOfEm = 1.0 / 3;
constexpr QSize kSmallest(1200, 640);
constexpr int kOrganPage = 4;
constexpr double kSteps = 10;  ///< of the growth from one size to its double

}  // namespace

frmMain::frmMain(app::Workstation& workstation, const support::Clock& clock)
    : workstation_(workstation),
      settings_(workstation.Settings()),
      clock_(clock),
      editors_(workstation, clock),
      drafts_(workstation, clock, editors_, bank_draft_, [this] {
        ShowPage(kOrganPage);
        organ_->ShowDraft();
      }) {
  setObjectName(QStringLiteral("frmMain"));
  QApplication::installTranslator(&words_);
  ReadChoices();
  view_ = workstation_.View();
  MakeKeys();
  qApp->installEventFilter(this);
  Build();
  workstation_.AttachWindow(&boxes_, &help_);
  deck_area_->Mixer().SendVolumes();
  setMinimumSize(kSmallest);
  resize(screen()->availableSize());
  singers_->Restore();
  frames_.setTimerType(Qt::PreciseTimer);
  connect(&frames_, &QTimer::timeout, this, &frmMain::ShowFrame);
  frames_.start(kFrame);
  drafts_.Begin(*this, [this]() -> const Strings& { return *say_; });
}

frmMain::~frmMain() {
  workstation_.AttachWindow(nullptr, nullptr);
  // Before the words and colours that its parts still ask for while they go.
  editors_.Close();
  delete takeCentralWidget();
}

void frmMain::ReadChoices() {
  choices_.language = support::LanguageOfBase(workstation_.Language().StringBase());
  if (const app::MixerHands* hands = workstation_.ResumedMixer()) {
    mixer_state_.faders = hands->faders;
    mixer_state_.crossfader = hands->crossfader;
  }
  mixer_state_.curve =
      static_cast<decks::CrossfaderCurve>(settings_.Number("Mixer", "CrossfaderCurve", 0, 2));
  // A level of 0 was never set by hand: nobody would hear that he listens.
  const int listen = settings_.Number("Mixer", "Preview", 0, 100);
  if (listen > 0) mixer_state_.listen.fill(listen);
  choices_.skin = settings_.Number("Skin", "Name") == 1 ? Skin::Name::Light : Skin::Name::Dark;
  choices_.density = static_cast<Skin::Density>(settings_.Number("Skin", "Density", 0, 1));
}

void frmMain::Change(SettingsPage::Choices choices) {
  const SettingsPage::Choices before = std::exchange(choices_, choices);
  if (choices.language != before.language) workstation_.Language().Choose(static_cast<int>(choices.language));
  if (choices.skin != before.skin) {
    settings_.SetNumber("Skin", "Name", static_cast<int>(choices.skin));
  }
  if (choices.density != before.density)
    settings_.SetNumber("Skin", "Density", static_cast<int>(choices.density));
  // Later: the list that sends this is one of the parts that are made anew.
  QMetaObject::invokeMethod(
      this, [this] { Build(); }, Qt::QueuedConnection);
}

void frmMain::Build() {
  const int chosen = music_ == nullptr ? 0 : music_->ChosenRow();
  if (listen_ != nullptr) listen_->End();
  delete takeCentralWidget();
  editors_.ClearSheet();
  page_buttons_.clear();
  say_ = std::make_unique<Strings>(choices_.language);
  words_.Speak(choices_.language);
  const Look look{SkinOf(choices_.skin, choices_.density), *say_};
  help_.Speak(*say_);
  boxes_.Speak(*say_);
  setWindowTitle(Decode(app::Caption((*say_)(Say::Caption).toStdString())));
  auto* body = new QWidget;
  microphone_ = new MicrophoneStrip(workstation_.Microphone(), look);
  status_ = new StatusLine(notices_read_, microphone_, look);
  connect(status_, &StatusLine::ReturnWanted, this,
          [this](int output) { workstation_.Outputs().Return(output); });
  FillColumn(*body, 0.4, 0.4, {status_, {MakeDecks(look), 10}, {MakePages(look), 9}});
  connect(status_, &StatusLine::RecordPressed, this, &frmMain::ToggleRecording);
  setCentralWidget(body);
  GiveRowMenus();
  active_ = TableId::Catalogue;
  ShowPage(page_);
  points_ = 0;
  if (isVisible()) ApplySize();
  if (chosen > 0) music_->ChooseRow(chosen);
  Activate(active_);
  ShowFrame();
}

QWidget* frmMain::MakePages(const Look& look) {
  pages_ = new QStackedWidget;
  // The share of the decks is what is given above, not what the tallest of the pages would like to have.
  pages_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
  auto* buttons = new QWidget;
  auto* row = new QHBoxLayout(buttons);
  SetSpacingEm(*row, 0, 0.2);
  settings_page_ = new SettingsPage(workstation_, choices_, look);
  connect(settings_page_, &SettingsPage::ChoicesChanged, this, &frmMain::Change);
  connect(settings_page_, &SettingsPage::Scanned, this, [this] {
    music_->Reload();
    karaoke_->Reload();
  });
  console_ = new ConsolePage(workstation_.Lights(), workstation_.LiveLights(), workstation_.Settings(),
                             boxes_, look);
  connect(console_, &ConsolePage::LibraryWanted, this, [this] { editors_.OpenLibrary(); });
  connect(console_, &ConsolePage::ShowEditorWanted, this, [this] { editors_.OpenShowEditor(); });
  organ_ = new OrganPage(workstation_.Organ(), boxes_, bank_draft_, look);
  AddPage(MakeMusic(look), Say::Music, Say::MusicTip, look, buttons);
  AddPage(MakePlaylist(3, look), Say::Playlist3, Say::Playlist3Tip, look, buttons);
  AddPage(MakeKaraoke(look), Say::Karaoke, Say::KaraokePageTip, look, buttons);
  AddPage(console_, Say::Console, Say::ConsoleTip, look, buttons);
  AddPage(organ_, Say::Organ, Say::OrganTip, look, buttons);
  AddPage(MakeEffects(look), Say::Effects, Say::EffectsTip, look, buttons);
  AddPage(MakeRecording(look), Say::Recording, Say::RecordingTip, look, buttons);
  AddPage(settings_page_, Say::Settings, Say::SettingsTip, look, buttons);
  row->addStretch(1);
  row->addWidget(MakeDeckButton(look));
  visual_ = new VisualPanel(workstation_.Visuals(), workstation_.Settings(), look);
  row->addWidget(visual_, 2);
  auto* box = new QWidget;
  FillColumn(*box, 0, 0, {{pages_, 1}, buttons});
  return box;
}

QWidget* frmMain::MakeMusic(const Look& look) {
  listen_ = new ListenBar(workstation_.Decks()[ListenBar::kDeck], mixer_state_, look);
  connect(listen_, &ListenBar::Pressed, this, &frmMain::ListenToChosen);
  connect(listen_, &ListenBar::Unheard, this, [this](const QString& why) { status_->Tell(why); });
  connect(listen_, &ListenBar::LevelMoved, this, &frmMain::KeepListenLevel);
  batch_ = new BatchBar({}, workstation_.Collections().Batch(), look);
  connect(batch_, &BatchBar::Pressed, this, &frmMain::AnalyseChosen);
  music_ = new MusicPage(workstation_.Collections(), workstation_.Lists(), *listen_, *batch_, look);
  connect(music_, &MusicPage::Entered, this, &frmMain::Activate);
  connect(music_, &MusicPage::RowChosen, this, &frmMain::LoadOnFreeDeck);
  connect(music_, &MusicPage::RowWanted, this, [this](int deck) { Load(deck, music_->ChosenRows()); });
  connect(music_, &MusicPage::FilesWanted, this, &frmMain::AddFiles);
  connect(music_, &MusicPage::DeleteWanted, this, &frmMain::DeleteTracks);
  connect(music_, &MusicPage::RemoveWanted, this, &frmMain::RemoveTracks);
  connect(music_, &MusicPage::BringBackWanted, this, &frmMain::BringRowsBack);
  auto* box = new QWidget;
  FillRow(*box, 0, 0.4, {MakePlaylist(1, look), {music_, 1}, MakePlaylist(2, look)});
  return box;
}

PlaylistPanel* frmMain::MakePlaylist(int number, const Look& look) {
  const auto width = number <= 2 ? PlaylistPanel::Width::Given : PlaylistPanel::Width::Stretches;
  auto* panel = new PlaylistPanel(number, workstation_.Collections(), workstation_.Lists(), width, look);
  playlists_[static_cast<std::size_t>(number - 1)] = panel;
  connect(panel, &PlaylistPanel::Entered, this, &frmMain::Activate);
  connect(panel, &PlaylistPanel::RowChosen, this, &frmMain::LoadOnFreeDeck);
  connect(panel, &PlaylistPanel::RowsDropped, this, &frmMain::PutIntoPlaylist);
  connect(panel, &PlaylistPanel::Told, this, [this](const QString& sentence) { status_->Tell(sentence); });
  return panel;
}

void frmMain::AddPage(QWidget* page, Say caption, Say tip, const Look& look, QWidget* buttons) {
  const int number = pages_->addWidget(page);
  const bool list = caption == Say::Playlist3;
  auto* button =
      new PageButton(look.say(caption), list ? PageButton::Drops::Taken : PageButton::Drops::Refused);
  Name(*button, QStringLiteral("Page%1").arg(number + 1), look.say(caption),
       look.say(Say::KeyHint).arg(look.say(tip), KeyText(KeyOfPage(number))));
  connect(button, &PageButton::clicked, this, [this, number] { ShowPage(number); });
  connect(button, &PageButton::RowsDropped, this, [this](const TrackRows& rows) {
    PutIntoPlaylist(rows, TableId::Playlist3, workstation_.Collections().Playlist(3).Rows() + 1,
                    Leaving::Stay);
  });
  buttons->layout()->addWidget(button);
  page_buttons_.push_back(button);
}

void frmMain::ShowPage(int page) {
  if (page >= pages_->count()) return;
  page_ = page;
  pages_->setCurrentIndex(page);
  for (std::size_t i = 0; i < page_buttons_.size(); ++i) {
    page_buttons_[i]->setChecked(static_cast<int>(i) == page);
  }
  FocusPage();
  TakeDeckForm();  // when no control of the decks has the keyboard any more
}

// Left to itself the keyboard would go to the page's first control: a button that removes rows, or the list
// of devices that the music plays on.
void frmMain::FocusPage() {
  QWidget* shown = pages_->currentWidget();
  if (shown == karaoke_->parentWidget()) return karaoke_->TakeFocus();
  if (shown == &PanelOf(TableId::Playlist3)) return PanelOf(TableId::Playlist3).TakeFocus();
  if (page_ > 0) return page_buttons_[static_cast<std::size_t>(page_)]->setFocus();
  const bool beside = active_ == TableId::Playlist1 || active_ == TableId::Playlist2;
  if (beside) return PanelOf(active_).TakeFocus();
  music_->TakeFocus();
}

void frmMain::paintEvent(QPaintEvent* event) {
  QMainWindow::paintEvent(event);
  painted_ = true;
}

/// In the size that it is to have, before its parts take on the looks of any: that takes a good part of a
/// start.
void frmMain::setVisible(bool visible) {
  if (visible) ApplySize();
  QMainWindow::setVisible(visible);
}

void frmMain::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  if (isVisible()) ApplySize();
}

void frmMain::ApplySize() {
  const double growth = std::min(double(width()) / kBaseSize.width(), double(height()) / kBaseSize.height());
  const double room =
      std::min({1.0, double(width()) / kFullSize.width(), double(height()) / kFullSize.height()});
  // In whole pixels, because the lengths in em are: half a pixel too much of each leaves text without room.
  const double shrink = (std::floor(room * kFullEm) + kRestOfEm) / (kFullEm + kRestOfEm);
  const double scale = std::max(shrink, std::floor(growth * kSteps + 1e-6) / kSteps);
  const double points = kBasePoints * scale * 96.0 / logicalDpiY();
  if (std::abs(points - points_) < 0.01) return;
  points_ = points;
  // The sheet before the sizes: setting it gives every widget the font of the program again.
  ApplySkin(*qApp, SkinOf(choices_.skin, choices_.density),
            static_cast<int>(std::lround(points * logicalDpiY() / 72)));
  ApplyBaseSize(*this, points);
  QToolTip::setFont(font());
  editors_.ApplySheet({SkinOf(choices_.skin, choices_.density), *say_}, points);
}

// Nobody is asked while the music would wait for it: the decks play on until the window is really closed.
void frmMain::closeEvent(QCloseEvent* event) {
  const bool asks = !leaving_ && !qApp->isSavingSession();
  const auto question = asks && !std::exchange(agreed_, false) ? AskBeforeLeaving() : std::nullopt;
  if (question) {
    event->ignore();
    return boxes_.Ask(QStringLiteral("LeaveBox"), (*say_)(*question), (*say_)(Say::Close), [this] {
      agreed_ = true;
      CloseSoon();
    });
  }
  if (!asks || !editors_.Changed()) {
    drafts_.KeepBanks();  // no frame comes any more
    editors_.Close();
    return QMainWindow::closeEvent(event);
  }
  event->ignore();
  editors_.LeaveThen([this] {
    leaving_ = true;
    CloseSoon();
  });
}

// Later: the box, or an editor, is still busy with its question.
void frmMain::CloseSoon() {
  QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
}

std::optional<EveningWord> frmMain::AskBeforeLeaving() {
  if (IsRecording()) return EveningWord::RecordingRuns;
  constexpr auto kHeard = 3;  // decks; the fourth is for the headphones alone
  const auto plays = [](const app::DeckView& deck) { return deck.state == app::DeckView::State::Playing; };
  if (view_.song.playing || std::any_of(view_.decks.begin(), view_.decks.begin() + kHeard, plays))
    return EveningWord::MusicPlays;
  if (workstation_.Lights().View().show.state == dmx::ShowPlayer::State::Playing)
    return EveningWord::ShowPlays;
  return std::nullopt;
}

void frmMain::ComeToFront() {
  setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
  show();
  raise();
  activateWindow();
  QApplication::alert(this);
}

void frmMain::ShowFrame() {
  workstation_.PumpWindow();
  // The first rows are painted before anything is made of all of them.
  if (frames_.isActive() && (painted_ || !isVisible())) workstation_.Lists().Follow();
  view_ = workstation_.View();
  const support::TimePoint now = clock_.Now();
  deck_area_->Show(view_, now);
  status_->Show(view_, workstation_.Outputs().DeviceNames(), now);
  microphone_->Show(now);
  status_->ShowLights(workstation_.Lights().View());
  music_->Show(view_);
  if (listen_->Listening() && ChosenFile() != listen_->File()) listen_->End();
  listen_->Show(view_);
  for (PlaylistPanel* playlist : playlists_) playlist->Show(view_);
  ShowSong(now);
  music_->ShowAdding(workstation_.Collections().Intake().Progress(app::ListId::Catalogue));
  batch_->Show(music_->ChosenCount(), music_->ChosenLacksAnalysis());
  effects_->Show(view_, now);
  equaliser_->Show(view_);
  mixing_->Show();
  settings_page_->Show(view_, now);
  visual_->Show(view_, now);
  console_->Show(now);
  organ_->Show(now);
  ShowRecording(now);
  const bool active = isActiveWindow();
  if (active && !was_active_)
    workstation_.Collections().Missing().LookAgain();  // a disk may have come or gone meanwhile
  was_active_ = active;
  editors_.ShowFrame();
  drafts_.KeepBanks();
}

const app::DeckView& frmMain::Deck(int deck) const {
  return view_.decks[static_cast<std::size_t>(deck - 1)];
}

void frmMain::Find() {
  if (pages_->currentWidget() == karaoke_->parentWidget()) return karaoke_->Find();
  ShowPage(0);
  music_->Find();
}

}  // namespace ui
