// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCheckBox>
#include <QLabel>
#include <fstream>

#include "app/resume/Journal.h"
#include "dmx/ShowFile.h"
#include "ui/forms/MessageBox.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/Fader.h"

namespace ui::testing {
namespace {

/// The end of an evening, and its going on after one that nobody wanted.
class LeavingTest : public Booth {
 protected:
  LeavingTest() { std::filesystem::create_directories(folder); }
  ~LeavingTest() override { std::filesystem::remove_all(folder); }
  [[nodiscard]] QString Asked() {
    const auto* box = window->findChild<MessageBox*>(QStringLiteral("LeaveBox"));
    return box == nullptr ? QString() : box->Text();
  }
  /// As by the button of the window's frame.
  void CloseWindow() {
    window->close();
    Settle();
  }
};

TEST_F(LeavingTest, ClosingAsksOnceWhileMusicPlays) {
  Open();
  LoadAndPlay(1, 1);
  CloseWindow();
  EXPECT_EQ(Asked(), QStringLiteral("Music is playing. Close all the same?"));
  Click("LeaveBoxNo");
  Advance(1s);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(Deck(1).state, State::Playing);
  CloseWindow();
  Click("LeaveBoxYes");
  EXPECT_FALSE(window->isVisible());
}

TEST_F(LeavingTest, InSilenceNobodyIsAsked) {
  Open();
  LoadAndPlay(1, 1);
  Click("deck1Stop");
  CloseWindow();
  EXPECT_FALSE(window->isVisible());
}

TEST_F(LeavingTest, AShowThatPlaysIsAskedForInDutchToo) {
  Open();
  Press(Qt::Key_8, Qt::ControlModifier);
  Choose("Language", 1);
  dmx::Show show;
  show.scenes.Add().Steps.Add({"00:00.0", "01:00.0", {}});
  std::ofstream(folder / "walk.shw", std::ios::binary) << dmx::ShowText(show);
  station->Lights().OpenShow(folder / "walk.shw", nullptr);
  workers.RunAll();
  Settle();
  station->Lights().PlayShow();
  Settle();
  CloseWindow();
  EXPECT_EQ(Asked(), QStringLiteral("Er loopt een lichtshow. Toch sluiten?"));
}

TEST_F(LeavingTest, AnEndBySignalOrSessionAsksNobody) {
  Open();
  LoadAndPlay(1, 1);
  QEvent quit(QEvent::Quit);
  QApplication::sendEvent(qApp, &quit);
  Settle();
  EXPECT_EQ(Asked(), QString());
  EXPECT_FALSE(window->isVisible());
}

TEST_F(LeavingTest, TheMixerStandsWhereItDidWhenTheProgramFell) {
  app::Journal journal;
  journal.mixer.hands = {{70, 40}, 25};
  journal.decks[0].state = app::DeckInHand::State::Playing;
  journal.decks[0].filename = "one.mp3";
  journal.decks[0].position = 20s;
  std::ofstream(folder / "tlv.night", std::ios::binary) << app::JournalText(journal);
  station.reset();
  app::Ports ports{engine, engine, tags, settings, files, workers, clock};
  ports.journal = &workers;
  station = std::make_unique<app::Workstation>(ports, support::ProgramFolder(folder),
                                               app::Workstation::Conducting::ByHand);
  station->StartUp();
  Open();
  workers.RunAll();
  Settle();
  EXPECT_EQ(Find<Fader>("deck1Volume").value(), 70);
  EXPECT_EQ(Find<Fader>("deck2Volume").value(), 40);
  EXPECT_EQ(Find<Fader>("Crossfader").value(), 25);
  EXPECT_EQ(Deck(1).state, State::Playing);
  EXPECT_EQ(Deck(1).volume, 53) << "fader times crossfader";
  EXPECT_EQ(Deck(2).volume, 40);
  EXPECT_NEAR(std::chrono::duration<double>(Deck(1).position).count(), 20, 1);
}

TEST_F(LeavingTest, TheSettingsPageKeepsTheSwitch) {
  Open();
  Press(Qt::Key_8, Qt::ControlModifier);
  auto& resume = Find<QCheckBox>("Resume");
  EXPECT_TRUE(resume.isChecked());
  resume.click();
  EXPECT_EQ(settings.Get("TLVG", "Settings", "Resume", ""), "False");
}

}  // namespace
}  // namespace ui::testing
