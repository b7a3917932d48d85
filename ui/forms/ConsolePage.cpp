// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/ConsolePage.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <cmath>

#include "app/lights/LightStation.h"
#include "app/lights/LiveLightStation.h"
#include "app/lights/StagedShow.h"
#include "app/settings/Preferences.h"
#include "support/Settings.h"
#include "ui/forms/FaderBank.h"
#include "ui/forms/LiveConsole.h"
#include "ui/forms/Menus.h"
#include "ui/forms/OutputLine.h"
#include "ui/forms/ShowLine.h"
#include "ui/models/ChannelText.h"
#include "ui/models/KeyMap.h"
#include "ui/strings/ConsoleWords.h"
#include "ui/strings/Decode.h"
#include "ui/strings/LiveWords.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/LightPreview.h"
#include "ui/widgets/QuietCombo.h"
#include "ui/widgets/WireStrip.h"

namespace ui {

ConsolePage::ConsolePage(app::LightStation& lights, app::LiveLightStation& live, support::Settings& settings,
                         MessageBoxes& boxes, const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent), lights_(lights), live_(live), settings_(settings), look_(look) {
  Name(*this, "ConsolePage", look.say(Say::Console));
  auto* rows = new QVBoxLayout(this);  // the Tab key takes the controls in the order in which they are made
  SetSpacingEm(*rows, 0.5, 0.35);
  rows->addLayout(MakeHead(boxes));
  rows->addLayout(MakeShowRow(boxes));
  MakeStage();
  rows->addWidget(stage_);
  faders_ = new QWidget;
  bank_ = new FaderBank(look);
  FillColumn(*faders_, 0, 0.35, {MakeWire(), {bank_, 1}});
  console_ = new LiveConsole(live, look);
  connect(console_, &LiveConsole::ShowEditorWanted, this, &ConsolePage::ShowEditorWanted);
  rows->addLayout(Row(0.5, {{faders_, 1}, {console_, 1}, MakeMaster()}), 1);
  console_->hide();
  connect(bank_, &FaderBank::FaderMoved, this, [this](int channel, int level) {
    lights_.TakeInHand({{channel, static_cast<dmx::DmxLevel>(level)}});
  });
  connect(bank_, &FaderBank::Scrolled, this, &ConsolePage::ShowRange);
  ReadColours();
}

QHBoxLayout* ConsolePage::MakeHead(MessageBoxes& boxes) {
  output_ = new OutputLine(lights_, boxes, look_);
  auto* row = new QHBoxLayout;
  SetSpacingEm(*row, 0, 0.6);
  row->addWidget(output_, 1);
  const auto view = [this](const char* name, LiveWord word, View shown) {
    const auto& say = look_.say;
    return Lamp(name,
                {say(word), say(word), say(Say::KeyHint).arg(say.Tip(word), KeyText(KeyOfLiveLights()))},
                [this, shown](bool) { ShowView(shown); });
  };
  to_live_ = view("LiveView", LiveWord::LiveView, View::Live);
  to_faders_ = view("FadersView", LiveWord::FadersView, View::Faders);
  to_faders_->setChecked(true);
  row->addWidget(to_live_);
  row->addWidget(to_faders_);
  MakeChoices(*row);
  return row;
}

void ConsolePage::MakeChoices(QHBoxLayout& row) {
  const auto& say = look_.say;
  const auto page = [&](const char* name, const QString& sign, ConsoleWord word, Qt::Key key, int by) {
    auto* button =
        ToolButton(name, {sign, say(word), say(Say::KeyHint).arg(say(word), KeyText(Qt::CTRL | key))});
    connect(button, &QPushButton::clicked, this, [this, by] { bank_->Page(by); });
    return button;
  };
  back_ = page("FadersBack", QStringLiteral("◂"), ConsoleWord::PageBack, Qt::Key_PageUp, -1);
  on_ = page("FadersOn", QStringLiteral("▸"), ConsoleWord::PageOn, Qt::Key_PageDown, 1);
  range_ = Reading("FaderRange", Qt::AlignCenter, say(ConsoleWord::Range).arg(481).arg(512));
  fixtures_ = new QuietCombo(look_.skin);
  fixtures_->setMinimumContentsLength(24);
  Name(*fixtures_, "FixtureChoice", say.Of(ConsoleWord::Fixture));
  connect(fixtures_, &QComboBox::activated, this,
          [this](int choice) { bank_->ShowFrom(fixtures_->itemData(choice).toInt()); });
  auto* down = ToolButton("AllDown", say.Of(ConsoleWord::AllDown), [this] { live_.AllDown(); });
  for (QWidget* widget :
       {static_cast<QWidget*>(back_), static_cast<QWidget*>(range_), static_cast<QWidget*>(on_),
        static_cast<QWidget*>(fixtures_), static_cast<QWidget*>(down)}) {
    row.addWidget(widget);
    if (widget != down) of_faders_.push_back(widget);
  }
}

void ConsolePage::ShowView(View view) {
  const bool live = view == View::Live;
  to_live_->setChecked(live);
  to_faders_->setChecked(!live);
  for (QWidget* widget : of_faders_) widget->setVisible(!live);
  faders_->setVisible(!live);
  console_->setVisible(live);
}

void ConsolePage::ToggleView() {
  ShowView(to_live_->isChecked() ? View::Faders : View::Live);
}

QHBoxLayout* ConsolePage::MakeShowRow(MessageBoxes& boxes) {
  const auto& say = look_.say;
  show_ = new ShowLine(lights_, boxes, look_);
  return Row(0.6,
             {{show_, 1},
              ToolButton("LibraryButton", say.Of(Say::FixtureEditor), [this] { Q_EMIT LibraryWanted(); }),
              ToolButton("DMXButton", say.Of(Say::ShowEditor), [this] { Q_EMIT ShowEditorWanted(); })});
}

QHBoxLayout* ConsolePage::MakeWire() {
  wire_ = new WireStrip(look_);
  Name(*wire_, "WireStrip", look_.say(ConsoleWord::Wire), look_.say.Tip(ConsoleWord::Wire));
  connect(wire_, &WireStrip::ChannelWanted, this,
          [this](int channel) { bank_->ShowFrom(channel - (channel - 1) % bank_->Size()); });
  QLabel* head = Caption(look_.say(ConsoleWord::Wire), look_.skin.dim);
  head->setToolTip(look_.say.Tip(ConsoleWord::Wire));
  return Row(0.6, {head, {wire_, 1}, ToolButton("FadersRelease", look_.say.Of(LiveWord::ReleaseAll), [this] {
                     live_.LetAllGo();
                   })});
}

void ConsolePage::MakeStage() {
  stage_ = new LightPreview(look_.skin, LightPreview::Height::Strip);
  stage_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  stage_->setToolTip(look_.say(ConsoleWord::StageTip));
  Name(*stage_, "Stage", look_.say(ConsoleWord::Stage));
  stage_->hide();
  connect(stage_, &LightPreview::Chosen, this, [this](int fixture) {
    const dmx::DMXfilename* chosen = patch_ == nullptr ? nullptr : patch_->fixtures.Item(fixture);
    if (chosen == nullptr) return;
    if (to_live_->isChecked()) return console_->ChooseFixture(fixture);
    bank_->ShowFrom(chosen->StartChannel);
  });
  (new ContextMenu(*stage_, QStringLiteral("StageMenu")))->AddLast([this](QMenu& menu, const QPoint& place) {
    FillFixtureMenu(menu, stage_->FixtureAt(place));
  });
}

void ConsolePage::FillFixtureMenu(QMenu& menu, int position) {
  const auto& say = look_.say;
  int start = 0;
  QString name;
  std::vector<dmx::FaderMove> full, dark;
  for (int channel = 1; patch_ != nullptr && channel <= dmx::kUniverseChannels; ++channel) {
    const app::ChannelLabel& label = patch_->At(channel);
    if (label.fixture != position) continue;
    if (start == 0) start = channel;
    name = Decode(label.fixture_name);
    if (label.function == dmx::ChannelFunction::Dimmer) full.push_back({channel, 255});
    dark.push_back({channel, 0});
  }
  if (start == 0) return;
  AddAct(menu, QStringLiteral("FixtureFaders"), say(ConsoleWord::FixtureFaders).arg(name), {},
         [this, start] { bank_->ShowFrom(start); });
  AddAct(menu, QStringLiteral("FixtureFull"), say(ConsoleWord::FixtureFull).arg(name), {}, [this, full] {
    lights_.TakeInHand(full);
  })->setEnabled(!full.empty());
  AddAct(menu, QStringLiteral("FixtureDark"), say(ConsoleWord::FixtureDark).arg(name), {},
         [this, dark] { lights_.TakeInHand(dark); });
  menu.addSeparator();
  AddAct(menu, QStringLiteral("FixtureLibrary"), say(Say::FixtureEditor), KeyOfFixtureEditor(),
         [this] { Q_EMIT LibraryWanted(); });
  AddAct(menu, QStringLiteral("FixtureShow"), say(Say::ShowEditor), KeyOfShowEditor(),
         [this] { Q_EMIT ShowEditorWanted(); });
}

void ConsolePage::ShowStage(const app::LightView& view) {
  const bool any = view.patch != nullptr && view.patch->fixtures.count() > 0;
  if (stage_->isVisibleTo(this) != any) stage_->setVisible(any);
  if (any) stage_->Show(view.patch->fixtures, view.on_the_wire);
}

QVBoxLayout* ConsolePage::MakeMaster() {
  const auto& say = look_.say;
  auto* head = new QLabel(say(ConsoleWord::Master));
  head->setAlignment(Qt::AlignCenter);
  master_ = new Fader(Qt::Vertical, look_.skin, look_.skin.decks[1]);
  master_->setRange(0, dmx::OutputStage::kFullMaster);
  master_->setPageStep(25);
  Name(*master_, "GrandMaster", say.Of(ConsoleWord::Master));
  connect(master_, &QSlider::valueChanged, this, [this](int level) { lights_.SetGrandMaster(level); });
  master_text_ = Reading("GrandMasterValue", Qt::AlignCenter, "100 %");
  return Column(0.1, {head, {master_, 1, Qt::AlignHCenter}, master_text_});
}

void ConsolePage::ToggleBlackout() {
  lights_.SetBlackout(blackout_ ? dmx::OutputStage::Blackout::Off : dmx::OutputStage::Blackout::On);
}

void ConsolePage::showEvent(QShowEvent* event) {
  Surface::showEvent(event);
  ReadColours();  // they are set on another page
  show_->ListShows();
}

void ConsolePage::keyPressEvent(QKeyEvent* event) {
  const bool control = event->modifiers() == Qt::ControlModifier;
  if (control && event->key() == Qt::Key_PageUp) return bank_->Page(-1);
  if (control && event->key() == Qt::Key_PageDown) return bank_->Page(1);
  Surface::keyPressEvent(event);
}

void ConsolePage::ReadColours() {
  std::vector<QColor> colours;
  for (const app::StoredColour stored : app::ReadColours(settings_)) colours.push_back(ShownColour(stored));
  bank_->SetColours(colours);
}

void ConsolePage::ShowRange() {
  const int first = bank_->First();
  const int last = first + bank_->Size() - 1;
  SetText(*range_, look_.say(ConsoleWord::Range).arg(first).arg(last));
  back_->setEnabled(first > 1);
  on_->setEnabled(last < dmx::kUniverseChannels);
  wire_->SetFrame(first, bank_->Size());
}

void ConsolePage::ListFixtures(const app::StagePatch* patch) {
  fixtures_->clear();
  for (const FixtureSpan& span : SpansOf(patch)) {
    fixtures_->addItem(look_.say(ConsoleWord::FixtureRange)
                           .arg(QString::number(span.first), QString::number(span.last), span.name),
                       span.first);
  }
  fixtures_->setPlaceholderText(
      look_.say(fixtures_->count() > 0 ? ConsoleWord::Fixture : ConsoleWord::NoFixtures));
  fixtures_->setCurrentIndex(-1);
  fixtures_->setEnabled(fixtures_->count() > 0);
}

void ConsolePage::Show(support::TimePoint now) {
  const app::LightView& view = lights_.View();
  blackout_ = view.blackout;
  if (!isVisible()) return;
  output_->Show(view, now);
  if (to_live_->isChecked()) {
    console_->Show();
  } else {
    bank_->Show(view, now);
    wire_->Show(view.on_the_wire);
  }
  ShowStage(view);
  show_->Show(view);
  if (view.patch != patch_ || fixtures_->placeholderText().isEmpty()) {
    patch_ = view.patch;
    ListFixtures(patch_.get());
  }
  if (!master_->isSliderDown() && master_->value() != view.grand_master) {
    const QSignalBlocker quiet(master_);
    master_->setValue(view.grand_master);
  }
  SetText(*master_text_,
          QStringLiteral("%1 %").arg(std::lround(100.0 * master_->value() / dmx::OutputStage::kFullMaster)));
}

}  // namespace ui
