// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/Library.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "app/lights/LightStation.h"
#include "dmx/FixtureProblems.h"
#include "support/Text.h"
#include "ui/forms/ChannelColumn.h"
#include "ui/forms/ChannelStrip.h"
#include "ui/forms/FixtureBrowser.h"
#include "ui/forms/PresetPanel.h"
#include "ui/strings/Decode.h"
#include "ui/strings/FixtureLibraryWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"
#include "ui/widgets/StepButton.h"

namespace ui {
namespace {

constexpr double kSliderEms = 26;  ///< of a column with its slider
constexpr double kFlatEms = 12;    ///< and without
constexpr double kListEms = 13;

QString FixtureLabel(int counter, int number) {
  switch (counter) {
    case 0:
      return QStringLiteral("Tilt Angle: %1°").arg(number);
    case 1:
      return QStringLiteral("Pan Angle: %1°").arg(number);
    case 2:
      return QStringLiteral("Beam Angle: %1°").arg(number);
    default:
      return QStringLiteral("Channels: %1").arg(number);
  }
}

}  // namespace

Library::Library(app::Workstation& workstation, const support::Clock& clock)
    : EditorWindow("Library", workstation, clock) {
  workstation.Lights().FixtureEditorLoaded();
}

Library::~Library() {
  ClearSheet();
}

QWidget* Library::MakeBody() {
  MakeTools();
  presets_ = new PresetPanel(edit_, Dressed(), this);
  connect(presets_, &PresetPanel::Changed, this, &Library::ShowDocument);
  connect(presets_, &PresetPanel::LevelWanted, this, &Library::MoveFader);
  auto* body = new QWidget;
  auto* columns = new QHBoxLayout(body);
  SetSpacingEm(*columns, 0, 0.5);
  MakeList();
  MakeBrowser();
  columns->addWidget(list_);
  auto* rows = new QVBoxLayout;
  SetSpacingEm(*rows, 0, 0.5);
  rows->addWidget(MakeHead());
  MakeChannels();
  rows->addWidget(channels_, 5);
  rows->addLayout(Row(0.5, {{presets_, 3}, {MakeProblems(), 1}}), 5);
  columns->addLayout(rows, 1);
  ReadLibrary();
  list_->setFocus();
  return body;
}

void Library::MakeList() {
  list_ = new QListWidget;
  list_->setFixedWidth(Em(*this, kListEms));
  Name(*list_, "FixtureList", Word(EditorWord::LibraryList), Word(EditorWord::FixtureListTip));
  // Both: a click, and the keyboard's Enter.
  const auto open = [this](const QListWidgetItem* item) {
    const QString file = item->data(Qt::UserRole).toString();
    if (file.isEmpty()) return;
    Flow().Open(workstation_.Editors().LibraryFolder() / PathOf(file));
    MarkInList();  // until it is open
  };
  connect(list_, &QListWidget::itemClicked, this, open);
  connect(list_, &QListWidget::itemActivated, this, open);
}

void Library::MakeBrowser() {
  browser_ = new FixtureBrowser(workstation_.FixturePacks(), Dressed(), *list_);
  connect(browser_, &FixtureBrowser::Brought, this, [this](const app::BroughtFixture& brought) {
    ReadLibrary();
    Flow().Open(workstation_.Editors().LibraryFolder() / PathOf(TextOf(brought.fixture.file)));
    QStringList lines;
    for (const std::string& note : brought.notes) lines += Decode(note);
    if (!lines.isEmpty()) Tell(lines.join(QLatin1Char('\n')));
  });
  connect(browser_, &FixtureBrowser::Refused, this,
          [this](const support::Error& why) { Tell(Decode(workstation_.Editors().Say(why))); });
}

void Library::ReadLibrary() {
  workstation_.Editors().ListFixtures(
      [window = QPointer<Library>(this)](std::vector<app::LibraryFixture> fixtures) {
        if (!window.isNull() && window->IsDressed()) window->ShowList(std::move(fixtures));
      });
}

void Library::ShowList(std::vector<app::LibraryFixture> fixtures) {
  const QSignalBlocker quiet(list_);
  list_->clear();
  for (const app::LibraryFixture& fixture : fixtures) {
    auto* item = new QListWidgetItem(Decode(std::filesystem::path(fixture.file).stem().string()), list_);
    item->setData(Qt::UserRole, TextOf(fixture.file));
    if (!fixture.cut_short) continue;
    item->setForeground(Dressed().skin.warning);
    item->setToolTip(Word(EditorWord::CutShortTip));
  }
  MarkInList();
  if (!fixtures.empty()) return;
  auto* none = new QListWidgetItem(Word(EditorWord::LibraryEmpty), list_);
  none->setFlags(Qt::NoItemFlags);
}

void Library::MarkInList() {
  const QSignalBlocker quiet(list_);
  const QString file = TextOf(path_.filename());
  int row = list_->count() - 1;
  while (row >= 0 && (file.isEmpty() || list_->item(row)->data(Qt::UserRole).toString() != file)) --row;
  list_->setCurrentRow(row);
}

// What was saved or brought meanwhile is listed.
void Library::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ActivationChange && isActiveWindow() && IsDressed()) ReadLibrary();
  EditorWindow::changeEvent(event);
}

void Library::MakeTools() {
  start_ = new QLineEdit(QString::number(start_channel_));
  start_->setValidator(new QIntValidator(1, dmx::kUniverseChannels, start_));
  start_->setFixedWidth(Em(*this, 5));
  Name(*start_, "StartChannel", Word(EditorWord::StartChannel), Word(EditorWord::StartChannelTip));
  connect(start_, &QLineEdit::textChanged, this, [this](const QString& text) {
    start_channel_ = std::clamp(text.toInt(), 1, dmx::kUniverseChannels);
    ShowSliders();
  });
  toggle_ = new QPushButton;
  SetKind(*toggle_, "plain");
  Name(*toggle_, "ShowSliders", Word(EditorWord::SlidersTip), Word(EditorWord::SlidersTip));
  connect(toggle_, &QPushButton::clicked, this, &Library::ToggleSliders);
  Bar().addWidget(PlainButton("BrowseFixtures", Dressed().say.Of(FixtureLibraryWord::FromLibrary),
                              [this] { browser_->Open(); }));
  Bar().addStretch(1);
  Bar().addWidget(Caption(Word(EditorWord::StartChannel), Dressed().skin.dim));
  Bar().addWidget(start_);
  Bar().addWidget(toggle_);
}

QWidget* Library::MakeHead() {
  text1_ = new QLineEdit;
  Name(*text1_, "Text1", Word(EditorWord::FixtureNameTip), Word(EditorWord::FixtureNameTip));
  connect(text1_, &QLineEdit::textEdited, this, [this](const QString& text) {
    edit_.SetName(text.toStdString());
    ShowDocument();
  });
  connect(text1_, &QLineEdit::editingFinished, this, [this] { edit_.History().Settle(); });
  type_ = new QuietCombo(Dressed().skin);
  type_->setPlaceholderText(QStringLiteral("Type:"));
  Name(*type_, "Type", Word(EditorWord::TypeTip), Word(EditorWord::TypeTip));
  for (const auto type :
       {dmx::FixtureType::MovingHead, dmx::FixtureType::Scanner, dmx::FixtureType::ColorChanger})
    type_->addItem(QStringLiteral("Type: ") + Decode(dmx::TypeText(type)), static_cast<int>(type));
  connect(type_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (index < 0) return;
    edit_.SetType(static_cast<dmx::FixtureType>(type_->itemData(index).toInt()));
    ShowDocument();
  });
  auto* head = new Surface(Dressed().skin.panel);
  auto* row = new QHBoxLayout(head);
  SetSpacingEm(*row, 0.6, 0.6);
  row->addWidget(Caption(Word(EditorWord::Name), Dressed().skin.dim));
  row->addWidget(text1_, 1);
  row->addWidget(type_);
  for (const Counter counter : {Counter::Tilt, Counter::Pan, Counter::Beam, Counter::Channels})
    row->addWidget(MakeCounter(counter));
  return head;
}

QWidget* Library::MakeCounter(Counter counter) {
  const int number = static_cast<int>(counter);
  auto* label = new QLabel;
  static constexpr const char* kNames[] = {"Tilt", "Pan", "Beam", "Channels"};
  Name(*label, QLatin1String(kNames[number]) + QStringLiteral("Text"));
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  SetWidest(*label, FixtureLabel(number, counter == Counter::Channels ? 512 : 360));
  counters_[static_cast<std::size_t>(number)] = label;
  auto* box = new QWidget;
  auto* row = new QHBoxLayout(box);
  SetSpacingEm(*row, 0, 0.3);
  row->addWidget(label);
  const struct {
    const char* part;
    EditorWord sign;
    EditorWord tip;
    int by;
  } steps[] = {{"Up", EditorWord::UpSign, EditorWord::CounterUpTip, 1},
               {"Down", EditorWord::DownSign, EditorWord::CounterDownTip, -1}};
  for (const auto& step : steps) {
    const int timer = 2 * number + (step.by > 0 ? 1 : 2);
    auto* button = new StepButton(Word(step.sign), QStringLiteral("tmrCommand%1").arg(timer));
    const QString tip = Word(step.tip).arg(FixtureLabel(number, 0).section(QLatin1Char(':'), 0, 0));
    Name(*button, QLatin1String(kNames[number]) + QLatin1String(step.part), tip, tip);
    connect(button, &StepButton::Stepped, this, [this, counter, by = step.by] { Step(counter, by); });
    connect(button, &StepButton::Released, this, [this] { edit_.History().Settle(); });
    row->addWidget(button);
  }
  return box;
}

void Library::MakeChannels() {
  channels_ = new ChannelStrip(
      Dressed(), [this](ChannelColumn& column) { ListenTo(column); },
      [this](ChannelColumn& column) { ShowColumn(column); });
  Name(*channels_, "ChannelArea", Word(EditorWord::Channels));
}

QWidget* Library::MakeProblems() {
  problem_box_ = new Surface(Dressed().skin.panel);
  problem_head_ = Reading("ProblemHead");
  SetFontEm(*problem_head_, 1.1, Weight::Bold);
  SetTextColour(*problem_head_, Dressed().skin.warning);
  problems_ = new QPlainTextEdit;
  problems_->setReadOnly(true);
  problems_->setTabChangesFocus(true);
  Name(*problems_, "Problems", Word(EditorWord::Problems), Word(EditorWord::ProblemsTip));
  FillColumn(*problem_box_, 0.6, 0.4, {problem_head_, {problems_, 1}});
  return problem_box_;
}

void Library::Step(Counter counter, int by) {
  if (counter == Counter::Channels) {
    edit_.SetChannels(edit_.Now().channels.count() + by);
  } else {
    const auto angle = static_cast<dmx::FixtureEdit::Angle>(counter);
    edit_.SetAngle(angle, edit_.AngleOf(angle) + by);
  }
  ShowDocument();
}

void Library::ToggleSliders() {
  sliders_shown_ = !sliders_shown_;
  ShowSliders();
}

void Library::ListenTo(const ChannelColumn& column) {
  connect(&column, &ChannelColumn::Chosen, this, &Library::ChooseChannel);
  connect(&column, &ChannelColumn::LevelMoved, this, &Library::MoveFader);
  connect(&column, &ChannelColumn::FunctionChosen, this, [this](int channel, dmx::ChannelFunction function) {
    edit_.SetFunction(channel, function);
    ShowDocument();
  });
  connect(&column, &ChannelColumn::Labelled, this, [this](int channel, const QString& label) {
    edit_.SetLabel(channel, label.toStdString());
    ShowDocument();
  });
  connect(&column, &ChannelColumn::Settled, this, [this] { edit_.History().Settle(); });
}

void Library::ShowSliders() {
  toggle_->setText(sliders_shown_ ? QStringLiteral("Hide Sliders") : QStringLiteral("Show Sliders"));
  channels_->setMinimumHeight(Em(*this, sliders_shown_ ? kSliderEms * 0.72 : kFlatEms));
  channels_->setMaximumHeight(sliders_shown_ ? QWIDGETSIZE_MAX : Em(*this, kFlatEms));
  channels_->Refresh();
}

void Library::ShowColumn(ChannelColumn& column) {
  const dmx::FixtureChannel* channel = edit_.Now().channels.Item(column.Number());
  if (channel == nullptr) return;
  column.ShowSlider(sliders_shown_ ? ChannelColumn::Slider::Shown : ChannelColumn::Slider::Hidden);
  column.Show(*channel, DmxChannel(column.Number()));
  ShowLevel(column);
  column.ShowChosen(column.Number() == channel_);
}

void Library::ShowLevel(ChannelColumn& column) {
  const int on_the_wire = DmxChannel(column.Number());
  if (on_the_wire <= dmx::kUniverseChannels) column.ShowLevel(levels_.At(on_the_wire));
}

void Library::ChooseChannel(int channel) {
  channel_ = channel;
  for (ChannelColumn* column : channels_->Columns()) column->ShowChosen(column->Number() == channel);
  presets_->ShowChannel(channel);
}

void Library::MoveFader(int channel, int level) {
  const int on_the_wire = DmxChannel(channel);
  if (on_the_wire > dmx::kUniverseChannels) return;
  levels_.Move(on_the_wire, static_cast<dmx::DmxLevel>(level), clock_.Now());
  workstation_.Lights().MoveFader(on_the_wire, static_cast<dmx::DmxLevel>(level));
  for (ChannelColumn* column : channels_->Columns())
    if (column->Number() == channel) column->ShowLevel(level);
}

void Library::ShowFrame() {
  if (!IsDressed()) return;
  browser_->ShowFrame();
  if (!levels_.Take(workstation_.Lights().View().levels, clock_.Now())) return;
  for (ChannelColumn* column : channels_->Columns()) ShowLevel(*column);
}

void Library::ShowDocument() {
  const dmx::Fixture& fixture = edit_.Now();
  const QString name = Decode(fixture.name);
  if (text1_->text() != name) text1_->setText(name);
  {
    const QSignalBlocker quiet(type_);
    type_->setCurrentIndex(type_->findData(static_cast<int>(fixture.type)));
    type_->update();
  }
  ShowCounters();
  const int count = fixture.channels.count();
  channel_ = count == 0 ? 0 : std::clamp(channel_, 1, count);
  channels_->SetChannels(count);
  ShowSliders();
  ChooseChannel(channel_);
  ShowProblems();
  MarkInList();
  ShowTitle(EditorWord::Library);
  ShowState();
}

void Library::ShowCounters() {
  const dmx::Fixture& fixture = edit_.Now();
  const int numbers[] = {fixture.tilt_angle, fixture.pan_angle, fixture.beam_angle, fixture.channels.count()};
  for (int counter = 0; counter < kCounters; ++counter)
    SetText(*counters_[static_cast<std::size_t>(counter)], FixtureLabel(counter, numbers[counter]));
}

void Library::ShowProblems() {
  // Nothing was described yet that could have any.
  const bool empty = edit_.Now() == dmx::Fixture{};
  const auto problems = empty ? std::vector<std::string>() : dmx::FixtureProblems(edit_.Now());
  SetText(*problem_head_, Word(EditorWord::ProblemCount).arg(problems.size()));
  QStringList lines;
  for (const std::string& problem : problems) lines += Decode(problem);
  const QString text = lines.join(QLatin1Char('\n'));
  if (problems_->toPlainText() != text) problems_->setPlainText(text);
  problem_box_->setVisible(!problems.empty());
}

EditorWindow::Files Library::FilesOf() const {
  return {workstation_.Editors().LibraryFolder(), QStringLiteral("DMX Files (*.dmx)"), QStringLiteral("dmx"),
          Decode(edit_.Now().name)};
}

std::string Library::Refusal() const {
  return edit_.Now().name.empty() ? dmx::kFixtureNeedsName : std::string();
}

std::string Library::Question() const {
  return dmx::FixtureQuestion(dmx::FixtureProblems(edit_.Now()));
}

void Library::Write(const Path& path, std::function<void(bool)> done) {
  const auto stamp = edit_.History().Stamp();
  edit_.History().Settle();
  workstation_.Editors().SaveFixture(
      path, edit_.Now(),
      [window = QPointer<Library>(this), stamp, path, done](const support::Result<void>& saved) {
        if (window.isNull()) return;
        if (saved) {
          window->edit_.History().MarkSaved(stamp);
          window->path_ = path;
          window->ReadLibrary();
        } else {
          window->Tell(Decode(window->workstation_.Editors().Say(saved.Failure())));
        }
        window->ShowDocument();
        done(saved.Ok());
      });
}

void Library::Read(const Path& path) {
  workstation_.Editors().OpenFixture(
      path, [window = QPointer<Library>(this), path](const support::Result<dmx::FixtureReading>& reading) {
        if (window.isNull()) return;
        if (reading) return window->Opened(reading.Value(), path);
        window->Tell(Decode(window->workstation_.Editors().Say(reading.Failure())));
      });
}

std::function<std::string()> Library::DraftText() const {
  return [fixture = edit_.Now()] { return dmx::FixtureText(fixture); };
}

void Library::ReadDraft(const std::string& text, const Path& path) {
  const auto reading = dmx::ReadFixture(text);
  if (!reading) return Tell(Decode(workstation_.Editors().Say(reading.Failure())));
  Opened(reading.Value(), path);
  edit_.History().MarkSaved(0);
  ShowDocument();
}

void Library::Opened(const dmx::FixtureReading& reading, const Path& path) {
  edit_.History().Begin(reading.fixture);
  // What was not read, or was brought into bounds, stands otherwise in the file that is there.
  path_ = reading.ended_early ? Path() : path;
  if (reading.ended_early || !reading.notes.empty()) edit_.History().MarkSaved(0);
  channel_ = 1;
  ShowDocument();
  QStringList lines;
  if (reading.ended_early) lines += Word(EditorWord::EndedEarly);
  for (const std::string& note : reading.notes) lines += Decode(note);
  if (!lines.isEmpty()) Tell(lines.join(QLatin1Char('\n')));
}

void Library::Clear() {
  edit_.History().Begin({});
  channel_ = 1;
}

}  // namespace ui
