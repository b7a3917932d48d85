// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/DMX.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <algorithm>

#include "ui/forms/Dialogs.h"
#include "ui/forms/FixtureBrowser.h"
#include "ui/forms/FixtureFaders.h"
#include "ui/forms/PatchPanel.h"
#include "ui/forms/ScenePanel.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/LightPreview.h"

namespace ui {
namespace {

constexpr double kPatchEms = 22.5;
constexpr double kScenesEms = 31;
constexpr const char* kNoScene = "You don't have any Scene";

}  // namespace

DMX::DMX(app::Workstation& workstation, const support::Clock& clock)
    : EditorWindow("DMX", workstation, clock) {
  workstation.Lights().ShowEditorLoaded();
}

DMX::~DMX() {
  ClearSheet();
}

QWidget* DMX::MakeBody() {
  faders_.clear();
  length_ = new QLabel;
  Name(*length_, "TotalLength", {}, Word(EditorWord::TotalLengthTip));
  blind_button_ = MakeButton("Blind", EditorWord::Blind, EditorWord::BlindTip, "lamp1");
  blind_button_->setCheckable(true);
  blind_button_->setChecked(blind_);
  connect(blind_button_, &QPushButton::clicked, this, &DMX::SwitchBlind);
  Bar().addStretch(1);
  Bar().addWidget(blind_button_);
  Bar().addWidget(length_);
  patch_ = new PatchPanel(edit_, workstation_.Editors(), Dressed(), this);
  patch_->setFixedWidth(Em(*this, kPatchEms));
  connect(patch_, &PatchPanel::Changed, this, &DMX::ShowDocument);
  connect(patch_, &PatchPanel::Refused, this, &DMX::Tell);
  connect(patch_, &PatchPanel::ChoiceChanged, this, &DMX::ShowChoice);
  browser_ = new FixtureBrowser(workstation_.FixturePacks(), Dressed(), *patch_);
  connect(patch_, &PatchPanel::BrowseWanted, browser_, &FixtureBrowser::Open);
  connect(browser_, &FixtureBrowser::Brought, this, &DMX::PatchBrought);
  connect(browser_, &FixtureBrowser::Refused, this,
          [this](const support::Error& why) { Tell(Decode(workstation_.Editors().Say(why))); });
  connect(patch_, &PatchPanel::LocateWanted, this, &DMX::Locate);
  connect(patch_, &PatchPanel::RepairWanted, this, &DMX::AskToRepair);
  connect(patch_, &PatchPanel::DropWanted, this, &DMX::AskToDrop);
  scenes_ = new ScenePanel(edit_, levels_, Dressed(), this);
  scenes_->setFixedWidth(Em(*this, kScenesEms));
  connect(scenes_, &ScenePanel::Changed, this, &DMX::ShowDocument);
  connect(scenes_, &ScenePanel::StepChosen, this, &DMX::ShowStep);
  connect(scenes_, &ScenePanel::PlayWanted, this, &DMX::Play);
  connect(scenes_, &ScenePanel::StopWanted, this, [this] { workstation_.Lights().StopShow(); });
  preview_ = new LightPreview(Dressed().skin);
  Name(*preview_, "Preview", Word(EditorWord::Preview), Word(EditorWord::PreviewTip));
  connect(preview_, &LightPreview::Chosen, this, [this](int fixture) { patch_->Choose(fixture); });
  area_ = new QScrollArea;
  area_->setWidgetResizable(true);
  area_->setFrameShape(QFrame::NoFrame);
  area_->setFocusPolicy(Qt::NoFocus);
  Name(*area_, "FaderArea", Word(EditorWord::Fixtures));
  strip_ = new Surface(Dressed().skin.ground);
  auto* strip = new QHBoxLayout(strip_);
  SetSpacingEm(*strip, 0, 0.4);
  strip->addStretch(1);
  hint_ = new QLabel(Word(EditorWord::EmptyHint));
  SetTextColour(*hint_, Dressed().skin.dim);
  SetFontEm(*hint_, 1.2);
  strip->addWidget(hint_);
  strip->addStretch(1);
  area_->setWidget(strip_);
  auto* body = new QWidget;
  FillRow(*body, 0, 0.5, {patch_, {Column(0.5, {{preview_, 1}, {area_, 3}}), 1}, scenes_});
  ReadLibrary();
  patch_->setFocus();
  return body;
}

void DMX::ReadLibrary() {
  workstation_.Editors().ListFixtures(
      [window = QPointer<DMX>(this)](std::vector<app::LibraryFixture> fixtures) {
        if (window.isNull() || !window->IsDressed()) return;
        window->patch_->ShowLibrary(std::move(fixtures));
      });
}

// A fixture that was described in the meantime is there to be patched.
void DMX::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ActivationChange && isActiveWindow() && IsDressed()) ReadLibrary();
  EditorWindow::changeEvent(event);
}

void DMX::ShowDocument() {
  patch_->ShowDocument();
  scenes_->ShowDocument();
  ShowFaders();
  ShowChoice();
  preview_->Show(edit_.Now().fixtures, levels_.Now());
  const QString length = Decode(dmx::ShowTimeText(dmx::PlayingTime(edit_.Now().scenes)));
  SetText(*length_, Word(EditorWord::TotalLength).arg(length));
  ShowTitle(EditorWord::ShowEditor);
  ShowState();
}

void DMX::ShowFaders() {
  const dmx::DMXname& fixtures = edit_.Now().fixtures;
  auto* row = static_cast<QHBoxLayout*>(strip_->layout());
  const auto same = [&](std::size_t place) {
    const dmx::DMXfilename* fixture = fixtures.Item(static_cast<int>(place) + 1);
    return fixture != nullptr && *fixture == faders_[place]->Fixture();
  };
  std::size_t kept = 0;
  while (kept < faders_.size() && same(kept)) ++kept;
  while (faders_.size() > kept) {
    delete faders_.back();
    faders_.pop_back();
  }
  for (int position = static_cast<int>(kept) + 1; position <= fixtures.count(); ++position) {
    auto* faders = new FixtureFaders(position, *fixtures.Item(position), Dressed(), this);
    connect(faders, &FixtureFaders::LevelMoved, this, &DMX::MoveLevel);
    connect(faders, &FixtureFaders::ColourMoved, this, &DMX::MoveColour);
    connect(faders, &FixtureFaders::DirectionMoved, this, &DMX::MoveDirection);
    row->insertWidget(position - 1, faders);
    ApplyBaseSize(*faders, font().pointSizeF());
    faders->Fit();
    faders->ShowLevels(levels_.Now());
    faders_.push_back(faders);
  }
  hint_->setVisible(fixtures.count() == 0);
  if (staged_ == fixtures) return;
  staged_ = fixtures;
  workstation_.Lights().TakePatch(fixtures);
}

void DMX::ShowChoice() {
  const std::vector<int> chosen = patch_->Chosen();
  for (std::size_t place = 0; place < faders_.size(); ++place) {
    const int position = static_cast<int>(place) + 1;
    faders_[place]->ShowChosen(std::find(chosen.begin(), chosen.end(), position) != chosen.end());
  }
  const auto first = chosen.empty() ? 0U : static_cast<std::size_t>(chosen.front());
  if (first > 0 && first <= faders_.size()) BringIntoView(*faders_[first - 1]);
}

// One that is wider than the view is shown from its beginning.
void DMX::BringIntoView(const QWidget& faders) {
  QScrollBar& bar = *area_->horizontalScrollBar();
  const int left = faders.x();
  const int right = left + faders.width() - area_->viewport()->width();
  bar.setValue(std::min(left, std::max(bar.value(), right)));
}

std::vector<int> DMX::Together(int position) const {
  std::vector<int> chosen = patch_->Chosen();
  const bool among = std::find(chosen.begin(), chosen.end(), position) != chosen.end();
  return among ? chosen : std::vector<int>{position};
}

void DMX::MoveLevel(int position, int channel, int level) {
  Move(dmx::MovesOfLevel(edit_.Now().fixtures, Together(position), position, channel,
                         static_cast<dmx::DmxLevel>(level)));
}

void DMX::MoveColour(int position, const QColor& colour) {
  const auto level = [](int value) { return static_cast<dmx::DmxLevel>(value); };
  Move(dmx::MovesOfColour(edit_.Now().fixtures, Together(position),
                          {level(colour.red()), level(colour.green()), level(colour.blue())}));
}

void DMX::MoveDirection(int position, const QPointF& place) {
  Move(dmx::MovesOfDirection(edit_.Now().fixtures, Together(position), place.x(), place.y()));
}

void DMX::Move(std::vector<dmx::FaderMove> moves) {
  for (const dmx::FaderMove& move : moves) levels_.Move(move.channel, move.level, clock_.Now());
  workstation_.Lights().MoveFaders(std::move(moves));
  ShowLevels();
}

void DMX::ShowFrame() {
  if (!IsDressed()) return;
  GuardLamps();
  browser_->ShowFrame();
  const app::LightView& view = workstation_.Lights().View();
  if (levels_.Take(view.levels, clock_.Now())) ShowLevels();
  preview_->Show(edit_.Now().fixtures, levels_.Now());
  ShowPlayer();
}

void DMX::ShowPlayer() {
  const app::ShowView& show = workstation_.Lights().View().show;
  if (show.state == dmx::ShowPlayer::State::Stopped) return scenes_->ShowPlaying({});
  const auto tenths = std::chrono::duration_cast<dmx::Tenths>(show.position);
  scenes_->ShowPlaying(Word(EditorWord::PlayingAt)
                           .arg(show.place.scene)
                           .arg(show.place.step)
                           .arg(Decode(dmx::ShowTimeText(tenths))));
}

void DMX::GuardLamps() {
  const app::LightView& view = workstation_.Lights().View();
  const bool live = view.output_on || view.status.state == dmx::DmxInterfaceStatus::State::Sending;
  if (blind_ || blind_chosen_ || !live) return;
  blind_ = true;
  blind_button_->setChecked(true);
}

void DMX::SwitchBlind(bool blind) {
  blind_ = blind;
  blind_chosen_ = true;
  if (!blind) levels_.LetGo();  // the lamps stay as they are, and the faders show them
}

void DMX::ShowStep() {
  GuardLamps();
  const bool plays = workstation_.Lights().View().show.state == dmx::ShowPlayer::State::Playing;
  if (plays && !blind_) return;
  const dmx::SceneStep* step = edit_.Step(scenes_->ChosenScene(), scenes_->ChosenStep());
  if (step == nullptr) return;
  std::vector<dmx::FaderMove> moves;
  auto channel = edit_.Channels().begin();
  for (const dmx::Sliders& record : step->SceneChannel) {
    if (channel == edit_.Channels().end()) break;
    const int place = *channel++;
    const int level = std::clamp<int>(record.ChannelValue, 0, dmx::kHighestLevel);
    if (place > 0) moves.push_back({place, static_cast<dmx::DmxLevel>(level)});
  }
  if (!blind_) return Move(std::move(moves));
  for (const dmx::FaderMove& move : moves) levels_.Hold(move.channel, move.level);
  ShowLevels();
}

void DMX::ShowLevels() {
  for (FixtureFaders* faders : faders_) faders->ShowLevels(levels_.Now());
  preview_->Show(edit_.Now().fixtures, levels_.Now());
}

void DMX::Play() {
  auto plan = edit_.Plan();
  if (!plan) return Tell(Decode(workstation_.Editors().Say(plan.Failure())));
  std::vector<std::string> names;
  for (const dmx::Scene& scene : edit_.Now().scenes) names.push_back(scene.SceneName);
  levels_.LetGo();
  app::LightStation& lights = workstation_.Lights();
  lights.TakePlan(std::make_shared<const dmx::ShowPlan>(std::move(plan).Value()), edit_.Now().fixtures,
                  path_.stem().string(), std::move(names));
  lights.PlayShow();
  lights.SeekShow(edit_.StartOf(scenes_->ChosenScene(), scenes_->ChosenStep()));
}

void DMX::PatchBrought(const app::BroughtFixture& brought) {
  patch_->PatchNext(brought.fixture);
  ReadLibrary();
  QStringList lines;
  for (const std::string& note : brought.notes) lines += Decode(note);
  if (!lines.isEmpty()) Tell(lines.join(QLatin1Char('\n')));
}

void DMX::Locate(int position) {
  QFileDialog* dialog = MakeDialog("LocateDialog", EditorWord::LocateTitle, EditorWord::Open);
  dialog->setDirectory(TextOf(workstation_.Editors().LibraryFolder()));
  dialog->setNameFilter(QStringLiteral("DMX Files (*.dmx)"));
  connect(dialog, &QFileDialog::fileSelected, this, [this, position](const QString& name) {
    workstation_.Editors().BringFixture(
        PathOf(name),
        [window = QPointer<DMX>(this), position](const support::Result<app::LibraryFixture>& fixture) {
          if (window.isNull()) return;
          if (fixture) return window->Replace(position, fixture.Value());
          window->Tell(Decode(window->workstation_.Editors().Say(fixture.Failure())));
        });
  });
  ShowDialog(*dialog, *this);
}

void DMX::Replace(int position, const app::LibraryFixture& fixture) {
  const auto replaced = edit_.ReplaceFixture(
      position, {workstation_.Editors().FilenameOf(fixture.file), 0, 0, fixture.channels, fixture.cut_short});
  if (!replaced) Tell(Decode(workstation_.Editors().Say(replaced.Failure())));
  ShowDocument();
  ReadLibrary();
}

void DMX::AskToRepair(int position) {
  const dmx::DMXfilename* fixture = edit_.Now().fixtures.Item(position);
  if (fixture == nullptr) return;
  const int now = fixture->Channels.count();
  const EditorWord question = now > fixture->NumberOf ? EditorWord::RepairMore : EditorWord::RepairFewer;
  Ask(QStringLiteral("Repair"), Word(question).arg(FixtureTitle(*fixture)).arg(fixture->NumberOf).arg(now),
      Word(EditorWord::Repair).remove(QStringLiteral("…")).trimmed(), Dressed().say(Say::DialogCancel),
      [this, position](bool repair) {
        if (!repair) return;
        edit_.RepairFixture(position);
        ShowDocument();
      });
}

void DMX::AskToDrop(int aside) {
  const auto& all = edit_.Now().aside;
  if (aside < 1 || aside > static_cast<int>(all.size())) return;
  const QString title = FixtureTitle(all[static_cast<std::size_t>(aside - 1)].fixture);
  Ask(QStringLiteral("Drop"), Word(EditorWord::DropAsk).arg(title), Word(EditorWord::Remove),
      Dressed().say(Say::DialogCancel), [this, aside](bool drop) {
        if (!drop) return;
        edit_.DropAside(aside);
        ShowDocument();
      });
}

EditorWindow::Files DMX::FilesOf() const {
  return {workstation_.Editors().ShowFolder(), QStringLiteral("DMX Show File (*.SHW)"), QStringLiteral("shw"),
          Word(EditorWord::NewShowName)};
}

std::string DMX::Refusal() const {
  return edit_.Now().scenes.count() == 0 ? kNoScene : std::string();
}

void DMX::Write(const Path& path, std::function<void(bool)> done) {
  const auto stamp = edit_.History().Stamp();
  edit_.Settle();
  workstation_.Editors().SaveShow(
      path, edit_.Now(),
      [window = QPointer<DMX>(this), stamp, path, done](const support::Result<void>& saved) {
        if (window.isNull()) return;
        if (saved) {
          window->edit_.MarkSaved(stamp);
          window->path_ = path;
        } else {
          window->Tell(Decode(window->workstation_.Editors().Say(saved.Failure())));
        }
        window->ShowDocument();
        done(saved.Ok());
      });
}

void DMX::Read(const Path& path) {
  workstation_.Editors().OpenShow(
      path, [window = QPointer<DMX>(this), path](const support::Result<app::OpenedShow>& opened) {
        if (window.isNull()) return;
        if (opened) return window->Opened(opened.Value(), path);
        window->Tell(Decode(window->workstation_.Editors().Say(opened.Failure())));
      });
}

std::function<std::string()> DMX::DraftText() const {
  return [show = edit_.Now()] { return dmx::ShowText(show); };
}

void DMX::ReadDraft(const std::string& text, const Path& path) {
  workstation_.Editors().ReadShow(
      text, [window = QPointer<DMX>(this), path](const support::Result<app::OpenedShow>& opened) {
        if (window.isNull()) return;
        if (!opened) return window->Tell(Decode(window->workstation_.Editors().Say(opened.Failure())));
        window->Opened(opened.Value(), path);
        window->edit_.MarkUnsaved();
        window->ShowDocument();
      });
}

void DMX::Opened(const app::OpenedShow& opened, const Path& path) {
  edit_.Begin(opened.reading.show);
  path_ = opened.reading.ended_early ? Path() : path;
  // What was not read, or was brought into bounds, stands otherwise in the file that is there.
  if (opened.reading.ended_early || !opened.reading.notes.empty()) edit_.MarkUnsaved();
  levels_.LetGo();
  ShowDocument();
  QStringList lines;
  if (opened.reading.ended_early) lines += Word(EditorWord::ShowEndedEarly);
  for (const auto* sentences : {&opened.patch.refused, &opened.patch.notes, &opened.reading.notes}) {
    for (const std::string& sentence : *sentences) lines += Decode(sentence);
  }
  if (!opened.patch.missing.empty()) {
    lines += Word(EditorWord::MissingHint);
    patch_->Choose(opened.patch.missing.front());
  }
  if (!lines.isEmpty()) Tell(lines.join(QLatin1Char('\n')));
  ShowStep();
}

void DMX::Clear() {
  edit_.Begin({});
  levels_.LetGo();
}

}  // namespace ui
