// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Pads, loops and jumps of a deck, by mouse and by key.

#include <QLineEdit>
#include <QPushButton>
#include <set>

#include "music/Cues.h"
#include "ui/models/KeyMap.h"
#include "ui/tests/Booth.h"

namespace ui::testing {
namespace {

class CueToolsTest : public Booth {
 protected:
  CueToolsTest() {
    Open();
    workers.RunAll();
    Settle();
  }
  [[nodiscard]] bool Marked(int deck, int slot) {
    const auto& marked = Deck(deck).cues.marked;
    return marked != nullptr && marked->hot[static_cast<std::size_t>(slot)].has_value();
  }
  QPushButton& Button(const char* name) { return Find<QPushButton>(name); }
};

TEST_F(CueToolsTest, APadIsSetNamedColouredAndDeleted) {
  EXPECT_FALSE(Button("deck1Pad3").isEnabled());
  LoadAndPlay(1, 1);
  Click("deck1Pad3");
  ASSERT_TRUE(Marked(1, 2));
  EXPECT_FALSE(Button("deck1Pad3").styleSheet().isEmpty());
  AskForMenu(Button("deck1Pad3"), {5, 5});
  auto* name = QApplication::activePopupWidget()->findChild<QLineEdit*>();
  ASSERT_NE(name, nullptr);
  QTest::keyClicks(name, QStringLiteral("Refrain"));
  QTest::keyClick(name, Qt::Key_Return);
  Settle();
  EXPECT_EQ(Button("deck1Pad3").text(), QStringLiteral("3 Refrain"));
  EXPECT_TRUE(Button("deck1Pad3").accessibleName().endsWith(QStringLiteral("Refrain")));
  QTest::mouseClick(&Button("deck1Pad3"), Qt::LeftButton, Qt::ShiftModifier);
  Settle();
  EXPECT_FALSE(Marked(1, 2));
  EXPECT_TRUE(Button("deck1Pad3").styleSheet().isEmpty());
}

TEST_F(CueToolsTest, KeysAreHeldAndLetGoAndTypeNothing) {
  LoadAndPlay(2, 1);
  Press(Qt::Key_U, Qt::AltModifier);
  EXPECT_TRUE(Marked(2, 0));
  Press(Qt::Key_U, Qt::AltModifier | Qt::ShiftModifier);
  EXPECT_FALSE(Marked(2, 0));
  QTest::keyPress(window.get(), Qt::Key_N, Qt::AltModifier);
  Settle();
  EXPECT_EQ(Deck(2).state, app::DeckView::State::Paused) << "back to the cue";
  QTest::keyRelease(window.get(), Qt::Key_N);
  Settle();
  Press(Qt::Key_C, Qt::AltModifier);
  EXPECT_EQ(Deck(1).state, app::DeckView::State::Empty);
}

TEST_F(CueToolsTest, NoKeyDoesTwoThings) {
  std::set<QString> keys;
  int count = 0;
  for (const int deck : {1, 2}) {
    for (int slot = 0; slot < music::kHotCues; ++slot, ++count) keys.insert(KeyText(KeyOfPad(slot, deck)));
    for (int act = 0; act < kCueActs; ++act, ++count) {
      keys.insert(KeyText(KeyOf(static_cast<CueAct>(act), deck)));
    }
  }
  EXPECT_EQ(static_cast<int>(keys.size()), count);
}

TEST_F(CueToolsTest, TheLoopButtonIsLitWhileItLoopsAndSaysWhyItCannot) {
  LoadAndPlay(1, 1);
  EXPECT_EQ(Button("deck1Loop").text(), QStringLiteral("4"));
  Click("deck1LoopHalve");
  EXPECT_EQ(Button("deck1Loop").text(), QStringLiteral("2"));
  Click("deck1Loop");
  EXPECT_TRUE(Deck(1).cues.looping);
  EXPECT_TRUE(Button("deck1Loop").isChecked());
  Click("deck1Loop");
  EXPECT_FALSE(Button("deck1Loop").isChecked());
  Click("deck1JumpOn");
  EXPECT_EQ(loops.jumps.size(), 1U);
  Click("deck1Slip");
  EXPECT_TRUE(Button("deck1Slip").isChecked());
  Click("deck1Quantise");
  EXPECT_EQ(settings.Get("TLVG", "Decks", "Quantise", ""), "False");
  EXPECT_FALSE(Button("deck2Quantise").isChecked()) << "of both decks";
}

}  // namespace
}  // namespace ui::testing
