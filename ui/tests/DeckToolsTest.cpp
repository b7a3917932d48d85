// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSlider>
#include <QTableView>
#include <fstream>

#include "ui/forms/MessageBox.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/EqGraph.h"
#include "ui/widgets/LevelMeter.h"
#include "ui/widgets/ListenButton.h"
#include "ui/widgets/MixHandle.h"

namespace ui::testing {
namespace {

void Drag(QWidget& widget, QPoint from, QPoint way) {
  QTest::mousePress(&widget, Qt::LeftButton, {}, from);
  QTest::mouseMove(&widget, from + way);
  QTest::mouseRelease(&widget, Qt::LeftButton, {}, from + way);
}

class DeckToolsTest : public Booth {
 protected:
  DeckToolsTest() {
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "EQ.tlv", std::ios::binary) << "[Warm]\r\n0;6;4;2;0;0;0;0;0;-2;\r\n";
    Open();
    workers.RunAll();
    Settle();
  }
  ~DeckToolsTest() override { std::filesystem::remove_all(folder); }
  void Scan() {
    workers.RunAll();
    Settle();
  }
  [[nodiscard]] std::string Preset(const char* number) { return settings.Get("QRV", "EQ", number, ""); }
  void AnswerYes(const char* box) {
    ASSERT_NE(window->findChild<MessageBox*>(QLatin1String(box)), nullptr);
    Click((std::string(box) + "Yes").c_str());
    Scan();
  }
};

// Equaliser

TEST_F(DeckToolsTest, AHandleInTheMixerMovesItsBandOnThePlayingDeck) {
  LoadAndPlay(1, 1);
  auto& graph = Find<EqGraph>("EqMixer");
  Drag(graph, graph.HandleAt(2), {0, -8});
  Settle();
  const int gain = station->Equaliser().Sliders()[3];
  EXPECT_GT(gain, 0);
  EXPECT_FLOAT_EQ(Deck(1).equaliser[2], static_cast<float>(gain));
  EXPECT_EQ(Find<QSlider>("Eq3").value(), gain);
  QTest::mouseDClick(&graph, Qt::LeftButton, {}, graph.HandleAt(2));
  Settle();
  EXPECT_EQ(station->Equaliser().Sliders()[3], 0);
  QTest::keyClick(&graph, Qt::Key_Right);
  QTest::keyClick(&graph, Qt::Key_Down);
  EXPECT_EQ(station->Equaliser().Sliders()[4], -1);
}

TEST_F(DeckToolsTest, ATrackBeginsFlatUntilTheSlidersAreSentAgain) {
  Find<QSlider>("Eq10").setValue(-5);
  LoadAndPlay(1, 1);
  EXPECT_FLOAT_EQ(Deck(1).equaliser[9], 0);
  Click("EqResend");
  EXPECT_FLOAT_EQ(Deck(1).equaliser[9], -5);
  Click("EqFlat");
  EXPECT_FLOAT_EQ(Deck(1).equaliser[9], 0);
}

TEST_F(DeckToolsTest, AChosenPresetMovesTheBank) {
  Press(Qt::Key_6, Qt::ControlModifier);
  EXPECT_EQ(Find<QListWidget>("List1").item(0)->data(Qt::UserRole).toString(),
            QStringLiteral("0;6;4;2;0;0;0;0;0;-2;"));
  Choose("cmbSelect", 0);
  EXPECT_EQ(Find<QSlider>("Eq1").value(), 6);
  EXPECT_EQ(Preset("Preset1"), "Warm");
  Choose("EqBank", 1);
  EXPECT_EQ(Find<QComboBox>("cmbSelect").currentIndex(), -1) << "the other bank has none";
  Choose("cmbSelect", 0);
  EXPECT_EQ(Find<QSlider>("Eq10").value(), 0) << "slider 10 begins bank 2";
  EXPECT_EQ(station->Equaliser().Sliders()[11], 6);
  EXPECT_EQ(Preset("Preset2"), "Warm");
}

TEST_F(DeckToolsTest, APresetWhoseNameIsNoUtf8KeepsItsBytesWhenItIsOverwritten) {
  std::ofstream(folder / "EQ.tlv", std::ios::binary) << "[Caf\xE9]\r\n0;6;4;2;0;0;0;0;0;-2;\r\n";
  Press(Qt::Key_6, Qt::ControlModifier);
  station->Equaliser().Save(decks::EqBank::First, "", [](const auto&) {});  // refused; reads the file again
  Scan();
  Find<QLineEdit>("Text2").setText(QString::fromUtf8("Café"));
  Click("EqSave");
  Scan();
  AnswerYes("EqOverwriteBox");
  EXPECT_EQ(files.Content(folder / "EQ.tlv"), "[Caf\xE9]\r\n0;0;0;0;0;0;0;0;0;0;\r\n");
}

TEST_F(DeckToolsTest, OverwritingAndDeletingAskFirst) {
  Press(Qt::Key_6, Qt::ControlModifier);
  Find<QLineEdit>("Text2").setText(QStringLiteral("Warm"));
  Click("EqSave");
  Scan();
  EXPECT_FALSE(files.Content(folder / "EQ.tlv"));
  AnswerYes("EqOverwriteBox");
  EXPECT_EQ(files.Content(folder / "EQ.tlv"), "[Warm]\r\n0;0;0;0;0;0;0;0;0;0;\r\n");
  EXPECT_EQ(Find<QComboBox>("cmbSelect").currentText(), QStringLiteral("Warm")) << "chosen by itself";
  EXPECT_EQ(Preset("Preset1"), "Warm");
  Click("EqDelete");
  AnswerYes("EqDeleteBox");
  EXPECT_EQ(files.Content(folder / "EQ.tlv"), "");
  Find<QLineEdit>("Text2").clear();
  Click("EqSave");
  Scan();
  EXPECT_EQ(TextOf("EqMessage"), QStringLiteral("A preset needs a name of one line."));
}

// Mix points

TEST_F(DeckToolsTest, MixPointsAreMovedByHandByKeyAndGoBack) {
  LoadAndPlay(1, 1);
  Scan();
  auto& handle = Find<MixHandle>("deck1StartMixPoint");
  ASSERT_TRUE(handle.isVisible());
  Drag(handle, handle.rect().center(), {60, 0});
  Settle();
  EXPECT_TRUE(Deck(1).moved.start);
  const auto dragged = Deck(1).start_mix_point;
  EXPECT_GT(dragged, 0us);
  EXPECT_NE(Music().Cell(1, catalogue::track::kStartMixPoint), "");
  QTest::keyClick(&handle, Qt::Key_Right);
  Settle();
  EXPECT_EQ(Deck(1).start_mix_point, dragged + 10ms);
  QTest::mouseDClick(&handle, Qt::LeftButton);
  Settle();
  EXPECT_FALSE(Deck(1).moved.start);
}

TEST_F(DeckToolsTest, KeysSetMixPointsWhereTheDeckIsHeard) {
  LoadAndPlay(1, 1);
  Scan();
  Advance(3s);
  Press(Qt::Key_F1, Qt::ControlModifier);
  EXPECT_NEAR(std::chrono::duration<double>(Deck(1).start_mix_point).count(), 3, 0.5);
  Advance(2s);
  Press(Qt::Key_F2, Qt::ControlModifier);
  EXPECT_NEAR(std::chrono::duration<double>(Deck(1).end_mix_point).count(), 5, 0.5);
}

TEST_F(DeckToolsTest, TheThresholdIsSentWhenTheHandLetsGo) {
  Press(Qt::Key_6, Qt::ControlModifier);
  auto& slider = Find<QSlider>("AutomationSlider1");
  QTest::mousePress(&slider, Qt::LeftButton, {}, slider.rect().center());
  QTest::mouseMove(&slider, slider.rect().center() + QPoint(40, 0));
  EXPECT_EQ(settings.Get("TLVG", "Settings", "GainPercent", "3"), "3");
  QTest::mouseRelease(&slider, Qt::LeftButton, {}, slider.rect().center() + QPoint(40, 0));
  EXPECT_EQ(settings.Get("TLVG", "Settings", "GainPercent", ""), std::to_string(slider.value()));
  EXPECT_GT(slider.value(), 3);
}

TEST_F(DeckToolsTest, TheAutomixMatchesWhatIsChosen) {
  Press(Qt::Key_6, Qt::ControlModifier);
  for (const char* match : {"AutoBPM", "AutoGain"}) {
    EXPECT_FALSE(Find<QAbstractButton>(match).isChecked());
    Find<QAbstractButton>(match).click();
    EXPECT_EQ(settings.Get("TLVG", "Settings", match, ""), "True");
  }
  Settle();
  EXPECT_TRUE(station->Lists().View().automix.match_tempo);
  EXPECT_TRUE(station->Lists().View().automix.match_gain);
}

// Seeking

TEST_F(DeckToolsTest, AStrayClickOrDragDoesNotSeekInWhatPlays) {
  LoadAndPlay(1, 1);
  Advance(5s);
  auto& overview = Find<QSlider>("deck1Overview");
  const QPoint middle(overview.width() / 2, overview.height() / 3);
  const auto stays = [&] { return Deck(1).position < 15s; };
  QTest::mouseClick(&overview, Qt::LeftButton, {}, middle);
  Settle();
  EXPECT_TRUE(stays());
  EXPECT_TRUE(TextOf("Message").startsWith(QStringLiteral("Deck 1 is playing: double-click")));
  Drag(overview, middle, {30, 0});
  Drag(Find<QWidget>("deck1Wave"), {150, 20}, {-80, 0});
  QTest::keyClick(&overview, Qt::Key_Right);
  Settle();
  EXPECT_TRUE(stays());
  Find<QAbstractButton>("SeekGuard").click();
  EXPECT_EQ(settings.Get("TLVG", "Mixer", "SeekGuard", ""), "False");
  QTest::mouseClick(&overview, Qt::LeftButton, {}, middle);
  Settle();
  EXPECT_FALSE(stays());
}

TEST_F(DeckToolsTest, ADoubleClickOrShiftSeeksInWhatPlaysAndAnyClickInWhatDoesNot) {
  LoadAndPlay(1, 1);
  auto& overview = Find<QSlider>("deck1Overview");
  const auto at = [&](int part) { return QPoint(overview.width() * part / 10, overview.height() / 3); };
  const auto place = [&] {
    Settle();
    return std::chrono::duration<double>(Deck(1).position).count();
  };
  QTest::mouseClick(&overview, Qt::LeftButton, {}, at(5));
  QTest::mouseDClick(&overview, Qt::LeftButton, {}, at(5));
  QTest::mouseRelease(&overview, Qt::LeftButton, {}, at(5));
  EXPECT_NEAR(place(), 90, 2);
  EXPECT_EQ(TextOf("Message"), QString()) << "what the first click was told";
  QTest::mouseClick(&overview, Qt::LeftButton, Qt::ShiftModifier, at(3));
  EXPECT_NEAR(place(), 54, 2);
  auto& wave = Find<QWidget>("deck1Wave");
  QTest::mousePress(&wave, Qt::LeftButton, Qt::ShiftModifier, {150, 20});
  QTest::mouseMove(&wave, {70, 20});
  QTest::mouseRelease(&wave, Qt::LeftButton, Qt::ShiftModifier, {70, 20});
  const double dragged = place();
  EXPECT_GT(dragged, 54.5);
  QTest::keyClick(&overview, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_NEAR(place(), dragged + 5, 1);
  Click("deck1Play");
  QTest::mouseClick(&overview, Qt::LeftButton, {}, at(7));
  EXPECT_NEAR(place(), 126, 2);
}

TEST_F(DeckToolsTest, AHandThatMissesTheFlagOfAMixPointStillHoldsIt) {
  LoadAndPlay(1, 1);
  Scan();
  auto& overview = Find<QSlider>("deck1Overview");
  auto& handle = Find<MixHandle>("deck1StartMixPoint");
  Drag(handle, handle.rect().center(), {overview.width() / 2, 0});
  Settle();
  const auto set = Deck(1).start_mix_point;
  const QPoint point = handle.mapTo(&overview, QPoint(handle.Stem(), 0));
  for (const QPoint beside : {QPoint(-8, 4), QPoint(12, 4), QPoint(-12, 30)}) {
    EXPECT_EQ(overview.childAt(point + beside), &handle) << beside.x();
  }
  EXPECT_GE(std::min(handle.width(), handle.height()), 36) << "for a finger";
  const auto heard = Deck(1).position;
  Drag(handle, QPoint(handle.Stem() - 8, 4), {20, 0});
  Settle();
  EXPECT_GT(Deck(1).start_mix_point, set);
  EXPECT_LT(Deck(1).position - heard, 1s);
}

// Meters

TEST_F(DeckToolsTest, AnOverloadStaysLitUntilItIsClicked) {
  auto& meter = Find<LevelMeter>("deck1Level");
  meter.Show(-0.5F, -20, clock.Now());
  EXPECT_FALSE(meter.Overloaded());
  meter.Show(-3, 0, clock.Now());
  meter.Show(-60, -60, clock.Now() + 1h);
  EXPECT_TRUE(meter.Overloaded());
  QTest::mouseClick(&meter, Qt::LeftButton);
  EXPECT_FALSE(meter.Overloaded());
}

// Listening

TEST_F(DeckToolsTest, AListenedRowEndsWhenAnotherIsChosen) {
  Choose("Device3", 2);
  ChooseRow(2);
  Press(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(Deck(4).filename, "two.ogg");
  EXPECT_EQ(Deck(4).state, State::Playing);
  EXPECT_TRUE(Find<QWidget>("ListenBar").isVisible());
  Press(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_GT(Deck(4).position, 9s);
  ChooseRow(3);
  Settle();
  EXPECT_NE(Deck(4).state, State::Playing);
  EXPECT_FALSE(Find<QWidget>("ListenBar").isVisible());
  EXPECT_EQ(Deck(1).state, State::Empty);
}

TEST_F(DeckToolsTest, WithoutHeadphonesNothingIsListenedToAndTheButtonSaysWhy) {
  ChooseRow(1);
  auto& listen = Find<ListenButton>("ListenRow");
  EXPECT_FALSE(listen.isEnabled());
  EXPECT_TRUE(listen.toolTip().startsWith(QStringLiteral("Choose a device")));
  Press(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_TRUE(TextOf("Message").startsWith(QStringLiteral("Choose a device")));
  EXPECT_EQ(Deck(4).state, State::Empty);
  Choose("Device3", 2);
  EXPECT_TRUE(listen.isEnabled());
  Press(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(Deck(4).state, State::Playing);
  Choose("Device3", 0);
  EXPECT_NE(Deck(4).state, State::Playing);
  EXPECT_FALSE(Find<QWidget>("ListenBar").isVisible());
}

TEST_F(DeckToolsTest, ADragOnAListenButtonSetsItsLevelOnly) {
  LoadAndPlay(1, 1);
  Choose("Device3", 2);
  auto& listen = Find<ListenButton>("deck1Cue");
  Drag(listen, listen.rect().center(), {-listen.width() / 4, 0});
  EXPECT_FALSE(listen.isChecked());
  EXPECT_NEAR(listen.Level(), 55, 3);
  Click("deck1Cue");
  EXPECT_EQ(Deck(1).pre_volume, listen.Level());
  EXPECT_EQ(settings.Get("TLVG", "Mixer", "Preview", ""), std::to_string(listen.Level()));
}

// Gain and outputs

TEST_F(DeckToolsTest, TheGainIsAskedForAndForgottenWithTheTrack) {
  commands.Add("mp3gain",
               "File\tMP3 gain\tdB gain\tMax Amplitude\tMax global_gain\tMin global_gain\n"
               "one.mp3\t2\t-3.7\t3899.187\t152\t127\n");
  DropRow(1, "deck1");
  auto& ask = Find<QPushButton>("deck1Gain");
  EXPECT_EQ(TextOf("deck1GainValue"), QStringLiteral("– dB"));
  Click("deck1Gain");
  EXPECT_FALSE(ask.isEnabled()) << "while it runs";
  EXPECT_EQ(ask.text(), QStringLiteral("…"));
  Scan();
  EXPECT_TRUE(ask.isEnabled());
  EXPECT_EQ(ask.text(), QStringLiteral("Gain"));
  EXPECT_EQ(TextOf("deck1GainValue"), QStringLiteral("−3.7 dB"));
  EXPECT_TRUE(Find<QLabel>("deck1GainValue").toolTip().startsWith(QStringLiteral("mp3gain −3.7 dB")));
  DropRow(2, "deck1");
  EXPECT_EQ(TextOf("deck1GainValue"), QStringLiteral("– dB"));
}

TEST_F(DeckToolsTest, AGainThatNobodyGaveIsSaidAndAnAnswerThatComesTooLateIsNotShown) {
  DropRow(1, "deck1");
  Click("deck1Gain");
  Scan();
  EXPECT_TRUE(TextOf("Message").startsWith(QStringLiteral("mp3gain gave no gain for deck 1")));
  EXPECT_TRUE(Find<QWidget>("deck1Gain").isEnabled());
  commands.Add("mp3gain",
               "File\tMP3 gain\tdB gain\tMax Amplitude\tMax global_gain\tMin global_gain\n"
               "one.mp3\t2\t3.7\t3899.187\t152\t127\n");
  Click("deck1Gain");
  DropRow(2, "deck1");
  EXPECT_TRUE(Find<QWidget>("deck1Gain").isEnabled()) << "nobody asked about this one";
  Scan();
  EXPECT_EQ(TextOf("deck1GainValue"), QStringLiteral("– dB"));
}

TEST_F(DeckToolsTest, AnOutputThatCameBackIsReturnedToByItsButton) {
  LoadAndPlay(1, 1);
  auto& back = Find<QPushButton>("Return1");
  EXPECT_FALSE(back.isVisible());
  engine.PostDeviceEvent({decks::DeviceEvent::Kind::Replaced, 1, "The card is gone."});
  Settle();
  EXPECT_FALSE(back.isVisible());
  engine.PostDeviceEvent({decks::DeviceEvent::Kind::CanReturn, 1, "The card is back."});
  Settle();
  ASSERT_TRUE(back.isVisible());
  Click("Return1");
  EXPECT_EQ(engine.Returned(), std::vector<int>{1});
}

// Tempo and beats

TEST_F(DeckToolsTest, ToolsOfTheTempoDoWhatTheySay) {
  DropRow(1, "deck1");
  Click("deck1PitchUp");
  EXPECT_FLOAT_EQ(Deck(1).pitch, 1);
  Click("deck1KeyLock");
  EXPECT_EQ(Deck(1).key_lock, decks::KeyLock::Off);
  Press(Qt::Key_F2, Qt::ShiftModifier);
  EXPECT_EQ(Deck(1).key_lock, decks::KeyLock::On);
  Choose("deck1TempoRange", 3);
  EXPECT_EQ(Find<QSlider>("deck1Tempo").maximum(), 1600);
  EXPECT_EQ(Deck(2).pitch, 0);
}

TEST_F(DeckToolsTest, ANudgeLastsAsLongAsItsKeyIsHeld) {
  DropRow(1, "deck1");
  Settle();
  QTest::keyPress(window.get(), Qt::Key_F4, Qt::ShiftModifier);
  Settle();
  EXPECT_GT(Deck(1).playing_bpm, 129);
  QTest::keyRelease(window.get(), Qt::Key_F4);
  Settle();
  EXPECT_DOUBLE_EQ(Deck(1).playing_bpm, 128);
}

TEST_F(DeckToolsTest, TapsSetTempoAndBeatsAndTheMenuScalesThem) {
  LoadAndPlay(1, 1);
  for (int i = 0; i < 6; ++i) {
    QTest::mousePress(&Find<QPushButton>("deck1Tap"), Qt::LeftButton);
    QTest::mouseRelease(&Find<QPushButton>("deck1Tap"), Qt::LeftButton);
    Advance(500ms);
  }
  EXPECT_NEAR(Deck(1).bpm, 120, 3);
  ASSERT_NE(Deck(1).grid, nullptr);
  const double bpm = Deck(1).bpm;
  Find<QMenu>("deck1BeatsMenu").actions().at(1)->trigger();
  Settle();
  EXPECT_NEAR(Deck(1).bpm, bpm / 2, 0.01);
  Find<QMenu>("deck1BeatsMenu").actions().last()->trigger();
  Settle();
  EXPECT_NE(Deck(1).bpm, bpm / 2) << "as it was found";
}

}  // namespace
}  // namespace ui::testing
