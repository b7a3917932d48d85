// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/frmMain.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "support/Text.h"
#include "ui/forms/DeckPanel.h"
#include "ui/forms/MixerPanel.h"
#include "ui/forms/MusicPage.h"
#include "ui/forms/StatusLine.h"
#include "ui/models/DeckChoice.h"
#include "ui/models/KeyMap.h"

namespace ui {
namespace {

constexpr auto kFrame = std::chrono::milliseconds(17);
constexpr double kBasePoints = 10;     ///< at the size below and under it
constexpr QSize kBaseSize(1600, 900);  ///< larger windows get larger type
constexpr QSize kSmallest(1200, 640);
constexpr double kSteps = 10;  ///< of the growth from one size to its double
constexpr int kCrossfaderStep = 5;

}  // namespace

frmMain::frmMain(app::Workstation& workstation, support::SettingsStore& settings, const support::Clock& clock)
    : workstation_(workstation), settings_(settings), clock_(clock) {
  setObjectName(QStringLiteral("frmMain"));
  ReadChoices();
  view_ = workstation_.View();
  MakeKeys();
  Build();
  mixer_->SendVolumes();
  setMinimumSize(kSmallest);
  resize(screen()->availableSize());
  frames_.setTimerType(Qt::PreciseTimer);
  connect(&frames_, &QTimer::timeout, this, &frmMain::ShowFrame);
  frames_.start(kFrame);
}

frmMain::~frmMain() = default;

void frmMain::ReadChoices() {
  const auto number = [this](std::string_view section, std::string_view key) {
    return support::LeadingInteger(settings_.Get(support::kApplication, section, key, "0"));
  };
  choices_.language =
      number("Language", "Current") == 1 ? Strings::Language::Dutch : Strings::Language::English;
  const auto curve = std::clamp<std::int64_t>(number("Mixer", "CrossfaderCurve"), 0, 2);
  mixer_state_.curve = static_cast<decks::CrossfaderCurve>(curve);
  choices_.skin = number("Skin", "Name") == 1 ? Skin::Name::Light : Skin::Name::Dark;
}

void frmMain::Change(SettingsPage::Choices choices) {
  choices_ = choices;
  const auto text = [](auto value) { return std::to_string(static_cast<int>(value)); };
  settings_.Set(support::kApplication, "Language", "Current", text(choices.language));
  settings_.Set(support::kApplication, "Skin", "Name", text(choices.skin));
  // Later: the list that sends this is one of the parts that are made anew.
  QMetaObject::invokeMethod(
      this, [this] { Build(); }, Qt::QueuedConnection);
}

void frmMain::Build() {
  const int chosen = music_ == nullptr ? 0 : music_->ChosenRow();
  delete takeCentralWidget();
  page_buttons_.clear();
  say_ = std::make_unique<Strings>(choices_.language);
  const Look look{SkinOf(choices_.skin), *say_};
  setWindowTitle((*say_)(Say::Caption));
  auto* body = new QWidget;
  auto* rows = new QVBoxLayout(body);
  SetSpacingEm(*rows, 0.4, 0.4);
  status_ = new StatusLine(look);
  rows->addWidget(status_);
  rows->addWidget(MakeDecks(), 9);
  rows->addWidget(MakePages(look), 10);
  setCentralWidget(body);
  ShowPage(page_);
  points_ = 0;
  ApplySize();
  if (chosen > 0) music_->ChooseRow(chosen);
  if (page_ == 0) music_->TakeFocus();
  ShowFrame();
}

QWidget* frmMain::MakeDecks() {
  const Look look{SkinOf(choices_.skin), *say_};
  for (const int deck : {1, 2}) {
    auto* panel = new DeckPanel(deck, workstation_, look);
    decks_[deck == 1 ? 0 : 1] = panel;
    connect(panel, &DeckPanel::RowDropped, this, &frmMain::Load);
    connect(panel, &DeckPanel::FilesDropped, this, &frmMain::AddAndLoad);
  }
  mixer_ = new MixerPanel(workstation_, mixer_state_, look);
  connect(mixer_, &MixerPanel::CurveChosen, this, [this](decks::CrossfaderCurve curve) {
    settings_.Set(support::kApplication, "Mixer", "CrossfaderCurve", std::to_string(static_cast<int>(curve)));
  });
  auto* box = new QWidget;
  auto* row = new QHBoxLayout(box);
  SetSpacingEm(*row, 0, 0.4);
  row->addWidget(decks_[0], 1);
  row->addWidget(mixer_);
  row->addWidget(decks_[1], 1);
  return box;
}

QWidget* frmMain::MakePages(const Look& look) {
  pages_ = new QStackedWidget;
  auto* buttons = new QWidget;
  auto* row = new QHBoxLayout(buttons);
  SetSpacingEm(*row, 0, 0.2);
  music_ = new MusicPage(workstation_.Catalogue(), look);
  settings_page_ = new SettingsPage(workstation_, choices_, look);
  AddPage(music_, Say::Music, Say::MusicTip, look, buttons);
  AddPage(settings_page_, Say::Settings, Say::SettingsTip, look, buttons);
  row->addStretch(1);
  connect(music_, &MusicPage::RowChosen, this, &frmMain::LoadOnFreeDeck);
  connect(music_, &MusicPage::RowWanted, this, &frmMain::Load);
  connect(music_, &MusicPage::FilesWanted, this, &frmMain::AddFiles);
  connect(settings_page_, &SettingsPage::ChoicesChanged, this, &frmMain::Change);
  auto* box = new QWidget;
  auto* rows = new QVBoxLayout(box);
  SetSpacingEm(*rows, 0, 0);
  rows->addWidget(pages_, 1);
  rows->addWidget(buttons);
  return box;
}

void frmMain::AddPage(QWidget* page, Say caption, Say tip, const Look& look, QWidget* buttons) {
  const int number = pages_->addWidget(page);
  auto* button = new QPushButton(look.say(caption));
  SetKind(*button, "page");
  button->setCheckable(true);
  Name(*button, QStringLiteral("Page%1").arg(number + 1), look.say(caption),
       look.say(Say::KeyHint).arg(look.say(tip), KeyText(KeyOfPage(number))));
  connect(button, &QPushButton::clicked, this, [this, number] { ShowPage(number); });
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
}

void frmMain::Key(const QKeySequence& key, Reach reach, std::function<void()> action) {
  auto* shortcut = new QShortcut(key, this);
  shortcut->setContext(reach == Reach::Everywhere ? Qt::ApplicationShortcut : Qt::WindowShortcut);
  // A key that is held down too long must not start and stop a deck again and again.
  shortcut->setAutoRepeat(reach == Reach::Window);
  connect(shortcut, &QShortcut::activated, this, std::move(action));
}

void frmMain::MakeKeys() {
  for (const int deck : {1, 2}) {
    const auto panel = [this, deck]() -> DeckPanel& { return *decks_[deck == 1 ? 0 : 1]; };
    Key(KeyOf(Command::PlayPause, deck), Reach::Everywhere, [panel] { panel().PlayOrPause(); });
    Key(KeyOf(Command::ToStart, deck), Reach::Everywhere, [panel] { panel().ToStart(); });
    Key(KeyOf(Command::Stop, deck), Reach::Everywhere, [panel] { panel().Stop(); });
    Key(KeyOf(Command::Load, deck), Reach::Everywhere, [this, deck] { Load(deck, music_->ChosenRow()); });
  }
  for (const int page : {0, 1}) Key(KeyOfPage(page), Reach::Everywhere, [this, page] { ShowPage(page); });
  Key(QKeySequence(Qt::CTRL | Qt::Key_Left), Reach::Window,
      [this] { mixer_->MoveCrossfader(-kCrossfaderStep); });
  Key(QKeySequence(Qt::CTRL | Qt::Key_Right), Reach::Window,
      [this] { mixer_->MoveCrossfader(kCrossfaderStep); });
}

void frmMain::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  ApplySize();
}

void frmMain::ApplySize() {
  const double growth = std::min(double(width()) / kBaseSize.width(), double(height()) / kBaseSize.height());
  const double scale = std::max(1.0, std::floor(growth * kSteps + 1e-6) / kSteps);
  const double points = kBasePoints * scale * 96.0 / logicalDpiY();
  if (std::abs(points - points_) < 0.01) return;
  points_ = points;
  // The sheet before the sizes: setting it gives every widget the font of the program again.
  ApplySkin(*qApp, SkinOf(choices_.skin), static_cast<int>(std::lround(points * logicalDpiY() / 72)));
  ApplyBaseSize(*this, points);
  QToolTip::setFont(font());
}

void frmMain::ShowFrame() {
  workstation_.PumpWindow();
  view_ = workstation_.View();
  const support::TimePoint now = clock_.Now();
  for (const int deck : {1, 2}) decks_[deck == 1 ? 0 : 1]->Show(Deck(deck), now);
  mixer_->Show(view_, now);
  status_->Show(view_, workstation_.DeviceNames(), now);
  music_->Show(view_);
  music_->ShowAdding(workstation_.Adding());
  settings_page_->Show(view_);
}

const app::DeckView& frmMain::Deck(int deck) const {
  return view_.decks[static_cast<std::size_t>(deck - 1)];
}

void frmMain::LoadOnFreeDeck(int row) {
  view_ = workstation_.View();
  if (const auto deck = DeckForLoading(view_)) return Load(*deck, row);
  status_->Tell((*say_)(Say::BothDecksPlay));
}

void frmMain::Load(int deck, int row) {
  view_ = workstation_.View();
  if (row < 1 || row > workstation_.Catalogue().Rows()) return status_->Tell((*say_)(Say::NoRowChosen));
  if (!MayLoad(Deck(deck))) return status_->Tell((*say_)(Say::DeckIsPlaying).arg(deck));
  workstation_.LoadDeck(deck, workstation_.Catalogue(), row);
}

void frmMain::AddFiles(std::vector<std::string> paths) {
  Add(std::move(paths), {});
}

void frmMain::AddAndLoad(int deck, std::vector<std::string> paths) {
  if (paths.empty()) return;
  Add(paths, [this, deck, paths] {
    for (const std::string& path : paths) {
      if (const int row = RowOf(path); row > 0) return Load(deck, row);
    }
  });
}

void frmMain::Add(std::vector<std::string> paths, std::function<void()> then) {
  if (paths.empty()) return;
  const int files = static_cast<int>(paths.size());
  ShowPage(0);
  // The workstation may outlive the window.
  workstation_.AddFiles(std::move(paths), [window = QPointer<frmMain>(this), files, then = std::move(then)](
                                              int rows, std::vector<std::string> refused) {
    if (window.isNull()) return;
    window->music_->ShowAdded(files, rows, refused);
    if (then) then();
  });
}

int frmMain::RowOf(const std::string& path) const {
  const catalogue::track_table& table = workstation_.Catalogue();
  for (int row = table.Rows(); row > 0; --row) {
    if (table.Cell(row, catalogue::track::kFilename) == path) return row;
  }
  return 0;
}

}  // namespace ui
