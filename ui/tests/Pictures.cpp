// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tests/Pictures.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QTableView>
#include <QTableWidget>
#include <fstream>

#include "app/Language.h"
#include "app/singers/SingerStation.h"
#include "dmx/testing/Rig.h"
#include "dmx/testing/ShowMaker.h"
#include "karaoke/testing/MidiBytes.h"
#include "ui/forms/DMX.h"
#include "ui/forms/Library.h"
#include "ui/forms/frmKaraoke.h"
#include "ui/tests/EditorBooth.h"

namespace ui::testing {
namespace {

struct Sheet {
  Skin::Name skin;
  QSize size;
  int language;
};

/// The window in the middle of an evening: two decks play, a song is sung, lamps are lit.
class Pictures : public EditorBooth {
 public:
  Pictures(QString target, const Sheet& sheet) : target_(std::move(target)), sheet_(sheet) {}

  void TestBody() override {
    QApplication::setCursorFlashTime(0);
    Prepare();
    TakeMusic();
    TakeKaraoke();
    TakeLamps();
    TakeOrgan();
    TakeOtherPages();
    TakeEditors();
  }

 private:
  void Work() {
    EditorBooth::Work();
    QApplication::processEvents();
  }
  void Page(int number) {
    Press(static_cast<Qt::Key>(Qt::Key_0 + number), Qt::ControlModifier);
    Work();
  }
  void Push(const char* button) {
    Find<QAbstractButton>(button).click();
    Work();
  }
  void Prepare();
  void TakeMusic();
  void TakeKaraoke();
  void TakeLamps();
  void TakeLive();
  void TakeOrgan();
  void TakeOtherPages();
  void TakeEditors();
  void Take(const QString& name) { Take(name, *window); }
  void Take(const QString& name, QWidget& widget);
  /// Every dialog and box that is open; they are closed.
  void TakeTurns();
  void TakeDialogs(const QString& name);
  [[nodiscard]] QString ListOf(QWidget& top) const;
  [[nodiscard]] QString LineOf(const QWidget& widget, const QWidget& top) const;

  QString target_;
  Sheet sheet_;
};

void Pictures::Prepare() {
  settings.Set("TLVG", "Skin", "Name", sheet_.skin == Skin::Name::Light ? "1" : "0");
  station->Language().Choose(sheet_.language);
  // The bars fall with the window's frames, which come in real time.
  settings.Set("TLVG", "Visualisation", "Name", "None");
  std::ofstream(folder / "BankIO16.txt", std::ios::binary) << "[1]\r\n1:0:1\r\n0:1\r\n[2]\r\n1\r\n0:1\r\n";
  std::ofstream(folder / "BankDAC16.txt", std::ios::binary) << "[1]\r\n255:64;9;8\r\n[2]\r\n7\r\n";
  auto track = karaoke::testing::UsualHead().Name("Words").Text(0, "@TCounting").Text(0, "@TAnna");
  const char* words[] = {"/one ", "two ", "three ", "four", "/five ", "six ", "seven ", "eight"};
  for (int i = 0; i < 8; ++i) track.Text(i == 0 ? 4800 : 480, words[i]);
  std::ofstream(folder / "good.kar", std::ios::binary) << karaoke::testing::FileBytes({track.End(960)});
  std::filesystem::create_directories(folder / "help");
  std::ofstream(folder / "help" / "introduction.htm") << "<h1>Manual</h1>";
  const std::string song = (folder / "good.kar").string();
  const std::string_view cells[] = {"Anna", "Counting", "", "Pop", "00:10", song};
  Karaoke().AddRow(cells);
  AddTrack("long.mp3", "An orchestra with a name that goes on and on and on until the deck ends",
           "A title that is far too long for any deck of the world, and then some more of it");
  Open(sheet_.size);
  station->Outputs().Set(3, {2, 0});
  Work();
  LoadAndPlay(1, 5);
  LoadAndPlay(2, 1);
  Work();
  for (const int row : {5, 1, 2}) DropRow(row, "PlayListView1");
  DropRow(3, "PlayListView2");
  Press(Qt::Key_Space, Qt::ControlModifier);
}

void Pictures::TakeMusic() {
  Page(1);
  Take(QStringLiteral("music"));
  Push("AutomixSetup");
  TakeDialogs(QStringLiteral("automix-setup"));
  Press(Qt::Key_F11, Qt::ControlModifier);
  Take(QStringLiteral("music-compact"));
  Press(Qt::Key_F11, Qt::ControlModifier);
  QTest::keyClicks(&Find<QLineEdit>("Search"), QStringLiteral("anna"));
  Advance(400ms);
  Work();
  Take(QStringLiteral("music-found"));
  Find<QLineEdit>("Search").clear();
  Advance(400ms);
  Work();
  Find<QTableView>("Catalogue").selectAll();
  Work();
  Take(QStringLiteral("music-chosen"));
  DropFiles({QUrl::fromLocalFile(QStringLiteral("/m/letter.txt"))}, "MusicPage");
  Take(QStringLiteral("music-refused"));
  Page(2);
  Take(QStringLiteral("playlist"));
}

void Pictures::TakeKaraoke() {
  Page(3);
  auto& grid = Find<QTableView>("KaraokeGrid");
  const QPoint cell = grid.visualRect(grid.model()->index(0, 1)).center();
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cell);
  QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, cell);
  Work();
  station->Songs().Seek(6s);
  Settle();
  station->Songs().Pause();
  Work();
  QTest::qWait(300);  // another thread draws the words ahead
  Take(QStringLiteral("karaoke"));
  for (QWidget* top : QApplication::topLevelWidgets()) {
    auto* singers = qobject_cast<frmKaraoke*>(top);
    if (singers == nullptr) continue;
    singers->resize(800, 600);
    Take(QStringLiteral("karaoke-singers"), *singers);
  }
  TakeTurns();
  Push("SongPart2");
  Choose("LyricLookChoice", 1);
  QTest::qWait(300);
  Take(QStringLiteral("karaoke-look"));
  for (const char* dialog : {"CurrentText", "LyricFont"}) {
    Push(dialog);
    TakeDialogs(QStringLiteral("karaoke-") + QLatin1String(dialog));
  }
}

/// Singers with short and long names, from left and from right.
void Pictures::TakeTurns() {
  app::SingerStation& host = station->Singers();
  const char* names[] = {"Anna", "Bartholomew Featherstonehaugh-Cholmondeley of Wolverhampton",
                         "\xD7\x93\xD7\xA0\xD7\x94", "\xE8\x8A\xB1\xE5\xAD\x90", "Ed"};
  singers::Wish wish;
  wish.filename = (folder / "good.kar").string();
  wish.artist = "Anna";
  wish.title = "Counting";
  wish.length = 200s;
  wish.semitones = -2;
  for (const char* name : names) {
    host.Do(&app::SingerStation::Add, name);
    Settle();
    host.Do(&app::SingerStation::Ask, host.View().sheet->newest, wish);
    wish.partner = "Zo\xC3\xAB";
  }
  station->Songs().Stop();
  Settle();
  Take(QStringLiteral("karaoke-turns"));
  for (const char* name : {"card", "strip"}) {
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (qobject_cast<frmKaraoke*>(top) == nullptr) continue;
      top->resize(1280, 720);
      Settle();
      Take(QStringLiteral("next-up-") + QLatin1String(name), *top);
    }
    Push("NextSinger");
    Work();
  }
  Take(QStringLiteral("karaoke-turn"));
}

void Pictures::TakeLamps() {
  Page(4);
  Take(QStringLiteral("console-off"));
  station->Lights().TurnOutput(app::LightStation::Output::On);
  dmx::Scenes scenes;
  dmx::testing::AddScene(scenes, 1, {dmx::testing::StepWith("00:02.0", "00:02.0", {200})}).SceneName = "Blue";
  dmx::DMXname pars;
  for (const int start : {1, 41}) {
    dmx::DMXfilename& par = pars.Add();
    par.Filename = "C:\\DMXlibrary\\Par.dmx";
    par.StartChannel = static_cast<std::int16_t>(start);
    par.Channels.Add().function = dmx::ChannelFunction::Dimmer;
    for (const char* label : {"Red", "Green", "Blue"}) {
      par.Channels.Add() = {dmx::ChannelFunction::Color, label, {}};
    }
  }
  const std::vector<int> channels{1};
  station->Lights().TakePlan(
      std::make_shared<const dmx::ShowPlan>(dmx::ShowPlan::Make(scenes, channels).Value()), pars, "Party",
      {"Blue"});
  Work();
  Take(QStringLiteral("console"));
  TakeLive();
}

/// The live console without fixtures, with a few and with many.
void Pictures::TakeLive() {
  Push("LiveView");
  for (const auto& [name, pars, heads] :
       {std::tuple{"none", 0, 0}, std::tuple{"few", 4, 2}, std::tuple{"many", 40, 8}}) {
    dmx::DMXname rig;
    for (int par = 0; par < pars; ++par) dmx::testing::AddRgbPar(rig, 1 + 3 * par);
    for (int head = 0; head < heads; ++head) dmx::testing::AddHead(rig, 201 + 6 * head);
    station->Lights().TakePatch(rig);
    Work();
    if (pars > 0) {
      for (const char* button : {"Group0On", "LiveColour5", "EffectCircle"}) Push(button);
      Work();
    }
    Take(QStringLiteral("console-live-") + QLatin1String(name));
  }
  Push("ReleaseAll");
  Push("FadersView");
}

void Pictures::TakeOrgan() {
  Page(5);
  for (int mode = 0; mode < 9; ++mode) {
    Push(QStringLiteral("cmdK8000%1").arg(mode).toLatin1().constData());
    Take(QStringLiteral("organ-%1").arg(mode));
  }
  Push("EditBanks");
  TakeDialogs(QStringLiteral("organ-banks"));
}

void Pictures::TakeOtherPages() {
  Find<QLineEdit>("Directory").setText(QStringLiteral("/music"));
  for (int page = 6; page <= 8; ++page) {
    Page(page);
    Take(QStringLiteral("page-%1").arg(page));
    for (QScrollArea* area : window->findChildren<QScrollArea*>()) {
      if (!area->isVisible() || area->verticalScrollBar()->maximum() == 0) continue;
      Take(QStringLiteral("page-%1-whole-%2").arg(page).arg(area->objectName()), *area->widget());
    }
  }
  Page(6);
  Push("EffectsMixing");
  Take(QStringLiteral("page-6-mixing"));
  for (const char* option : {"BrowseDirectory", "AddFolder"}) {
    if (window->findChild<QAbstractButton*>(QLatin1String(option)) == nullptr) continue;
    Push(option);
    TakeDialogs(QStringLiteral("settings-") + QLatin1String(option));
  }
  Press(Qt::Key_F12);
  TakeDialogs(QStringLiteral("help"));
}

void Pictures::TakeEditors() {
  Press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
  Library& library = *window->OpenEditors().FixtureEditor();
  library.resize(sheet_.size);
  Work();
  Take(QStringLiteral("fixture-editor-new"), library);
  library.Flow().Open(folder / "DMXlibrary" / "Head.dmx");
  Work();
  Take(QStringLiteral("fixture-editor"), library);
  editor = &library;
  for (const char* name : {"AddPreset", "AddChannel"}) {
    if (auto* button = library.findChild<QAbstractButton*>(QLatin1String(name))) button->click();
    Work();
    Take(QStringLiteral("fixture-editor-") + QLatin1String(name), library);
  }
  QApplication::setActiveWindow(window.get());
  Press(Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
  DMX& show = *window->OpenEditors().ShowEditor();
  show.resize(sheet_.size);
  Work();
  Take(QStringLiteral("show-editor-new"), show);
  editor = &show;
  for (const char* button : {"PatchFixture", "PatchFixture", "AddScene", "AddStep"}) {
    In<QAbstractButton>(button).click();
    Work();
  }
  Take(QStringLiteral("show-editor"), show);
  In<QAbstractButton>("btnNew").click();
  Work();
  TakeDialogs(QStringLiteral("show-editor-leave"));
}

void Pictures::TakeDialogs(const QString& name) {
  Work();
  int number = 0;
  for (QWidget* top : QApplication::topLevelWidgets()) {
    const bool other = top == window.get() || qobject_cast<EditorWindow*>(top) != nullptr ||
                       qobject_cast<frmKaraoke*>(top) != nullptr;
    if (other || !top->isVisible()) continue;
    Take(number++ == 0 ? name : name + QString::number(number), *top);
    top->close();
  }
  // A desktop gives the keys back to the window when a dialog closes; here nobody does.
  QApplication::setActiveWindow(window.get());
  Work();
}

void Pictures::Take(const QString& name, QWidget& widget) {
  if (auto* time = widget.findChild<QLabel*>(QStringLiteral("Clock"))) time->setText(QStringLiteral("20:00"));
  QCoreApplication::sendPostedEvents();
  const QString place = QStringLiteral("%1/%2-%3-%4")
                            .arg(target_, name, QString::number(sheet_.size.width()),
                                 QLatin1String(sheet_.skin == Skin::Name::Light ? "light" : "dark"));
  EXPECT_TRUE(widget.grab().save(place + QStringLiteral(".png"), nullptr, 90)) << place.toStdString();
  QFile list(place + QStringLiteral(".txt"));
  ASSERT_TRUE(list.open(QIODevice::WriteOnly));
  list.write(ListOf(widget).toUtf8());
}

QString Pictures::LineOf(const QWidget& widget, const QWidget& top) const {
  const QPoint place = widget.mapTo(&top, QPoint(0, 0));
  QString text;
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) text = label->text();
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
    text = button->text() + QLatin1Char('~') + button->shortcut().toString();
  if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) text = edit->placeholderText();
  if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) {
    for (int i = 0; i < combo->count(); ++i) text += combo->itemText(i) + QLatin1Char(';');
  }
  // What was never shown has no place yet.
  const QString room = widget.isVisibleTo(&top) ? QStringLiteral("%1,%2 %3x%4")
                                                      .arg(place.x())
                                                      .arg(place.y())
                                                      .arg(widget.width())
                                                      .arg(widget.height())
                                                : QStringLiteral("hidden");
  QString line = QStringLiteral("%1 | %2 | %3 | %4 | %5 | focus %6")
                     .arg(QLatin1String(widget.metaObject()->className()), widget.objectName(),
                          widget.accessibleName(), widget.toolTip(), room)
                     .arg(int(widget.focusPolicy()));
  line += widget.isEnabled() ? QString() : QStringLiteral(" | off");
  line += QStringLiteral(" | ") + text;
  line.replace(QString::fromStdString(folder.string()), QStringLiteral("FOLDER"));
  return line.replace(QLatin1Char('\n'), QStringLiteral("\\n")) + QLatin1Char('\n');
}

/// What is reached by Tab, in its order; then all that has a name or a look of its own, and the keys.
QString Pictures::ListOf(QWidget& top) const {
  QString list;
  for (QWidget* widget = top.nextInFocusChain(); widget != &top; widget = widget->nextInFocusChain()) {
    if ((widget->focusPolicy() & Qt::TabFocus) != 0 && top.isAncestorOf(widget)) list += LineOf(*widget, top);
  }
  QStringList all;
  for (const QWidget* widget : top.findChildren<QWidget*>()) {
    const bool plain = widget->metaObject() == &QWidget::staticMetaObject && widget->objectName().isEmpty();
    if (!plain && !widget->isWindow()) all += LineOf(*widget, top);
  }
  for (const QShortcut* key : top.findChildren<QShortcut*>()) {
    all += QStringLiteral("key %1 in %2\n").arg(key->key().toString()).arg(int(key->context()));
  }
  all.sort();
  return list + QStringLiteral("--\n") + all.join(QString());
}

}  // namespace

void RegisterPictures(const std::string& folder, int language) {
  const QString target = QString::fromStdString(folder);
  QDir().mkpath(target);
  for (const Skin::Name skin : {Skin::Name::Dark, Skin::Name::Light}) {
    for (const QSize size : {QSize(1366, 768), QSize(1920, 1080), QSize(3840, 2160)}) {
      const std::string name = (skin == Skin::Name::Light ? "Light" : "Dark") + std::to_string(size.width());
      ::testing::RegisterTest("Pictures", name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                              [target, skin, size, language]() -> ::testing::Test* {
                                return new Pictures(target, {skin, size, language});
                              });
    }
  }
}

}  // namespace ui::testing
