// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The microphone by its buttons, keys and knobs, and what they show of it.

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include "support/Sentences.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/HoldButton.h"
#include "ui/widgets/Knob.h"
#include "ui/widgets/LevelBar.h"
#include "ui/widgets/LevelMeter.h"

namespace ui::testing {
namespace {

using support::Sentence;

class MicrophoneFormTest : public Booth {
 protected:
  [[nodiscard]] const decks::MicrophoneWish& Wish() const { return microphone.wish; }
  void OpenPanel() {
    Open();
    Press(Qt::Key_8, Qt::ControlModifier);
    Advance(500ms);
  }
  /// To where a knob is pulled up or down, by the keys.
  void Turn(const char* knob, int steps) {
    auto& turned = Find<Knob>(knob);
    turned.setFocus();
    for (int i = 0; i < std::abs(steps); ++i) QTest::keyClick(&turned, steps > 0 ? Qt::Key_Up : Qt::Key_Down);
    Advance(500ms);
  }
  [[nodiscard]] QString State() { return TextOf("MicrophoneState"); }
};

TEST_F(MicrophoneFormTest, IsOffAtTheStartAndSwitchedOverEveryPage) {
  Open();
  auto& on = Find<QPushButton>("Microphone");
  EXPECT_FALSE(on.isChecked());
  for (const Qt::Key page : {Qt::Key_1, Qt::Key_3, Qt::Key_4, Qt::Key_5, Qt::Key_8}) {
    Press(page, Qt::ControlModifier);
    ASSERT_TRUE(on.isVisible());
    Click("Microphone");
    EXPECT_TRUE(Wish().on && on.isChecked());
    Press(Qt::Key_M, Qt::ControlModifier);
    EXPECT_FALSE(Wish().on || on.isChecked());
  }
}

TEST_F(MicrophoneFormTest, TalksAsLongAsTheButtonIsHeldWhereverTheHandDrifts) {
  Open();
  auto& talk = Find<HoldButton>("TalkOver");
  const QPoint middle = talk.rect().center();
  QTest::mousePress(&talk, Qt::LeftButton, {}, middle);
  Settle();
  EXPECT_TRUE(Wish().talk_over && talk.isDown());
  QTest::mouseMove(&talk, middle + QPoint(400, 300));
  Settle();
  EXPECT_TRUE(Wish().talk_over) << "the hand drifted";
  QTest::mouseRelease(&talk, Qt::LeftButton, {}, middle + QPoint(400, 300));
  Settle();
  EXPECT_FALSE(Wish().talk_over || talk.isDown());
  EXPECT_FALSE(Wish().on) << "nothing stays switched on";
  QTest::mousePress(&talk, Qt::LeftButton, {}, middle);
  Settle();
  Open();  // as when the language changes
  Settle();
  EXPECT_FALSE(Wish().talk_over) << "nobody could let go of it";
}

TEST_F(MicrophoneFormTest, TalksAsLongAsTheKeyIsHeldWhateverIsLetGoFirst) {
  Open();
  auto& field = Find<QLineEdit>("Search");
  field.setFocus();
  QTest::keyPress(&field, Qt::Key_T, Qt::ControlModifier);
  Settle();
  EXPECT_TRUE(Wish().talk_over);
  EXPECT_TRUE(Find<QPushButton>("TalkOver").isDown());
  for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
    QKeyEvent repeated(type, Qt::Key_T, Qt::NoModifier, QStringLiteral("t"), true);
    QApplication::sendEvent(&field, &repeated);
  }
  Settle();
  EXPECT_TRUE(Wish().talk_over) << "Ctrl was let go first";
  QTest::keyRelease(&field, Qt::Key_T);
  Settle();
  EXPECT_FALSE(Wish().talk_over);
  EXPECT_EQ(field.text(), QString());
  QTest::keyClick(&field, Qt::Key_T);
  EXPECT_EQ(field.text(), QStringLiteral("t"));
  QTest::keyPress(&field, Qt::Key_T, Qt::ControlModifier);
  QEvent away(QEvent::ApplicationDeactivate);
  QApplication::sendEvent(qApp, &away);
  Settle();
  EXPECT_FALSE(Wish().talk_over) << "whoever went to another program let go there";
}

TEST_F(MicrophoneFormTest, TalksUntilBothTheKeyAndTheButtonAreLetGo) {
  Open();
  auto& talk = Find<HoldButton>("TalkOver");
  QTest::mousePress(&talk, Qt::LeftButton);
  QTest::keyPress(window.get(), Qt::Key_T, Qt::ControlModifier);
  QTest::keyRelease(window.get(), Qt::Key_T, Qt::ControlModifier);
  Settle();
  EXPECT_TRUE(Wish().talk_over) << "the button is held yet";
  QTest::keyPress(window.get(), Qt::Key_T, Qt::ControlModifier);
  QTest::mouseRelease(&talk, Qt::LeftButton);
  Settle();
  EXPECT_TRUE(Wish().talk_over) << "the key is held yet";
  QTest::keyRelease(window.get(), Qt::Key_T, Qt::ControlModifier);
  Settle();
  EXPECT_FALSE(Wish().talk_over);
}

TEST_F(MicrophoneFormTest, EveryKnobAndChoiceReachesTheVoiceAndTheMusic) {
  OpenPanel();
  const struct {
    const char* knob;
    int steps;
    std::function<double()> asked;
    double before;
    double by;  ///< a step
  } knobs[] = {
      {"MicrophoneGain", 7, [this] { return Wish().voice.gain; }, 0, 1},
      {"MicrophoneLowCut", 10, [this] { return Wish().voice.low_cut; }, 90, 1},
      {"MicrophoneBass", -4, [this] { return Wish().voice.bass; }, 0, 1},
      {"MicrophoneMiddle", 3, [this] { return Wish().voice.middle; }, 0, 1},
      {"MicrophoneTreble", -2, [this] { return Wish().voice.treble; }, 0, 1},
      {"MicrophoneThreshold", -5, [this] { return Wish().voice.threshold; }, -20, 1},
      {"MicrophoneRatio", 2, [this] { return Wish().voice.ratio; }, 4, 1},
      {"MicrophoneMakeUp", 3, [this] { return Wish().voice.makeup; }, 6, 1},
      {"MicrophoneDuckDepth", 8, [this] { return Wish().duck.depth; }, 12, 1},
      {"MicrophoneDuckAttack", 3, [this] { return double(Wish().duck.attack.count()); }, 50, 10},
      {"MicrophoneDuckHold", 3, [this] { return double(Wish().duck.hold.count()); }, 400, 100},
      {"MicrophoneDuckRelease", 9, [this] { return double(Wish().duck.release.count()); }, 600, 100},
  };
  for (const auto& knob : knobs) {
    EXPECT_EQ(knob.asked(), knob.before) << knob.knob;
    Turn(knob.knob, knob.steps);
    EXPECT_EQ(knob.asked(), knob.before + knob.steps * knob.by) << knob.knob;
  }
  EXPECT_FALSE(Find<Knob>("MicrophoneGateLevel").isEnabled()) << "it learns";
  Choose("MicrophoneGate", 2);
  Turn("MicrophoneGateLevel", 5);
  EXPECT_EQ(Wish().voice.gate, decks::GateMode::Fixed);
  EXPECT_EQ(Wish().voice.gate_level, -40);
  for (const char* box : {"MicrophoneCompressor", "MicrophoneDuck", "MicrophoneSwift"}) {
    QTest::mouseClick(&Find<QCheckBox>(box), Qt::LeftButton, {},
                      QPoint(6, Find<QCheckBox>(box).height() / 2));
  }
  Advance(500ms);
  EXPECT_FALSE(Wish().voice.compress || Wish().duck.on || Wish().swift);
  EXPECT_FALSE(Find<Knob>("MicrophoneRatio").isEnabled() || Find<Knob>("MicrophoneDuckHold").isEnabled());
  Turn("MicrophoneLowCut", -40);
  EXPECT_EQ(Wish().voice.low_cut, 0);
  OpenPanel();
  EXPECT_EQ(Find<Knob>("MicrophoneGain").value(), 7) << "in a window that is made anew";
  EXPECT_FALSE(Find<QCheckBox>("MicrophoneDuck").isChecked());
}

TEST_F(MicrophoneFormTest, TheInputIsChosenFromAListThatIsMadeAnew) {
  OpenPanel();
  const int looks = microphone.looks;
  EXPECT_EQ(looks, 1) << "when the page is shown";
  Click("MicrophoneLookAgain");
  EXPECT_EQ(microphone.looks, looks + 1);
  auto& device = Find<QComboBox>("MicrophoneDevice");
  EXPECT_EQ(device.count(), 3);
  Choose("MicrophoneDevice", 2);
  Advance(500ms);
  EXPECT_EQ(Wish().device, "lap");
  auto& channel = Find<QComboBox>("MicrophoneChannel");
  EXPECT_EQ(channel.count(), 3) << "two, and all of them";
  Choose("MicrophoneChannel", 2);
  EXPECT_EQ(Wish().channel, 0);
  microphone.state.inputs = std::make_shared<const std::vector<decks::InputInfo>>();
  Advance(500ms);
  EXPECT_EQ(device.currentText(), QStringLiteral("Built-in microphone (not there)"));
}

TEST_F(MicrophoneFormTest, TheLevelIsCheckedOnlyAsLongAsItIsSeen) {
  OpenPanel();
  Click("MicrophoneCheck");
  EXPECT_TRUE(Wish().check);
  EXPECT_FALSE(Wish().on);
  Press(Qt::Key_1, Qt::ControlModifier);
  EXPECT_FALSE(Wish().check);
}

TEST_F(MicrophoneFormTest, ShowsLevelsLatencyAndWhatIsWrong) {
  OpenPanel();
  EXPECT_EQ(State(), QStringLiteral("Off; nothing is recorded."));
  Click("Microphone");
  microphone.state.open = microphone.state.heard = true;
  microphone.state.latency = 23'400us;
  microphone.state.input = -30;
  microphone.state.level = -9;
  microphone.state.ducking = 12;
  Settle();
  EXPECT_EQ(Find<LevelBar>("MicrophoneLevel").Shown(), (std::array{-30.0F, -9.0F}));
  EXPECT_EQ(Find<LevelMeter>("MicrophoneMeter").Shown(), (std::array{-30.0F, -9.0F}));
  EXPECT_TRUE(State().contains(QStringLiteral(" 23 ms")));
  EXPECT_TRUE(TextOf("MicrophoneTurnedDown").contains(QStringLiteral("−12 dB")));
  auto& on = Find<QPushButton>("Microphone");
  const QString heard = on.text();
  microphone.state.trouble = {Sentence::InputMuted, {"Desk microphone"}};
  Settle();
  const QString muted = QStringLiteral("The microphone Desk microphone is muted in the system's mixer.");
  EXPECT_EQ(State(), muted);
  EXPECT_EQ(on.toolTip(), muted);
  EXPECT_NE(on.text(), heard) << "the lamp does not say that somebody is heard";
}

}  // namespace
}  // namespace ui::testing
