// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WorkstationView.h"
#include "app/work/Conductor.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

#include "app/testing/AllParts.h"
#include "app/work/WorkGate.h"
#include "catalogue/testing/FakeTagReader.h"
#include "decks/testing/RecordingEngine.h"
#include "support/testing/MemoryFiles.h"
#include "support/testing/MemorySettings.h"

namespace app {
namespace {

TEST(ConductorTest, CommandsRunInTheOrderOfPostingBeforeTheTick) {
  std::string order;
  Conductor conductor([&order] { order += "t"; });
  conductor.Post([&order] { order += "1"; });
  conductor.Post([&order] { order += "2"; });
  conductor.ConductOnce();
  EXPECT_EQ(order, "12t");
}

TEST(ConductorTest, ACommandThatPostsIsFollowedInTheNextRound) {
  std::string order;
  Conductor conductor([&order] { order += "t"; });
  conductor.Post([&] { conductor.Post([&order] { order += "2"; }); });
  conductor.ConductOnce();
  conductor.ConductOnce();
  EXPECT_EQ(order, "t2t");
}

TEST(ConductorTest, ItsThreadTicksAndTakesCommandsUntilItIsStopped) {
  std::atomic<int> ticks{0};
  std::promise<void> three;
  Conductor conductor([&] {
    if (++ticks == 3) three.set_value();
  });
  conductor.Start();
  three.get_future().wait();
  std::promise<void> ran;
  conductor.Post([&ran] { ran.set_value(); });
  ran.get_future().wait();
  conductor.Stop();
  const int last = ticks;
  conductor.Post([&ticks] { ticks = -1; });
  EXPECT_EQ(ticks, last);
}

TEST(ConductorTest, AnOrderKeepsWhatItWasGivenUntilItIsCarriedOut) {
  struct Notes {
    void Add(const std::string& word, std::string_view mark) { all += word + std::string(mark); }
    std::string all;
  } notes;
  Conductor conductor([] {});
  {
    std::string word = "a word that no small buffer holds";
    conductor.Box()->Order(notes, &Notes::Add, word, "!");
    conductor.Box()->Order(notes, &Notes::Add, std::move(word), "?");
    word = "another one";
  }
  EXPECT_EQ(notes.all, "");
  conductor.ConductOnce();
  EXPECT_EQ(notes.all, "a word that no small buffer holds!a word that no small buffer holds?");
}

TEST(ConductorTest, AClosedBoxDropsWhatIsPosted) {
  std::shared_ptr<Mailbox> box;
  {
    Conductor conductor([] {});
    box = conductor.Box();
  }
  box->Post([] { FAIL(); });
  EXPECT_TRUE(box->Take().empty());
}

TEST(WorkGateTest, ClosingWaitsForWhoeverIsInside) {
  WorkGate gate;
  std::promise<void> inside;
  std::atomic<bool> finished{false};
  std::thread worker([&] {
    gate.Pass([&] {
      inside.set_value();
      while (!gate.Closed()) std::this_thread::yield();
      finished = true;
    });
  });
  inside.get_future().wait();
  gate.Close();
  EXPECT_TRUE(finished);
  EXPECT_FALSE(gate.Pass([] { FAIL(); }));
  worker.join();
}

TEST(WorkGateTest, ClosingDoesNotWaitForEverForWhoeverIsStuckInside) {
  WorkGate gate;
  bool closed = true;
  gate.Pass([&] { closed = gate.Close(std::chrono::milliseconds(1)); });
  EXPECT_FALSE(closed);
  EXPECT_FALSE(gate.Pass([] { FAIL(); }));
  EXPECT_TRUE(gate.Close()) << "it has come out";
}

/// The whole workstation on its own thread and real workers.
class OwnThreadTest : public ::testing::Test {
 protected:
  OwnThreadTest() {
    for (const char* name : {"Main", "Phones"}) engine_.AddDevice(name);
    engine_.AcceptAnyFile({.seconds = 0.05});
    tags_.AcceptAnyFile();
  }
  template <typename Condition>
  void WaitFor(Workstation& station, Condition condition) {
    while (!condition(station.View())) {
      station.PumpWindow();
      std::this_thread::yield();
    }
  }

  support::SteadyClock clock_;
  decks::testing::RecordingEngine engine_{clock_};
  catalogue::testing::FakeTagReader tags_;
  support::testing::MemorySettings settings_;
  support::testing::MemoryFiles files_;
};

TEST_F(OwnThreadTest, AnEveningOfManyCommandsEndsCleanly) {
  support::ThreadPool workers(2);
  Workstation station({engine_, engine_, tags_, settings_, files_, workers, clock_},
                      support::ProgramFolder("no-such-folder"), Workstation::Conducting::OwnThread);
  station.StartUp();
  int added = 0;
  station.Collections().Intake().Add({.list = ListId::Catalogue, .paths = {"a.mp3", "b.mp3", "c.mp3"}},
                                     [&added](const IntakeOutcome& outcome) { added = outcome.rows; });
  WaitFor(station, [&added](const auto&) { return added == 3; });
  for (int round = 0; round < 20; ++round) {
    const int deck = round % kDecks + 1;
    station.Decks()[deck].Load(station.Collections().Music().Table(), round % 3 + 1);
    station.Decks()[deck].Do(&DeckStation::Play);
    station.Outputs().Set(round % 3 + 1, {round % 3, round % 5});
    station.Collections().Intake().Add(
        {.list = ListId::Catalogue, .paths = {"new" + std::to_string(round) + ".mp3"}}, {});
    station.Decks()[deck].Do(&DeckStation::Seek, std::chrono::milliseconds(10));
    station.PumpWindow();
  }
  WaitFor(station, [](const WorkstationView& view) {
    return std::all_of(view.decks.begin(), view.decks.end(),
                       [](const DeckView& deck) { return deck.state == DeckView::State::Ended; });
  });
  station.ShutDown();
  EXPECT_EQ(engine_.Log().back(), "BASS_Free");
  EXPECT_EQ(engine_.Streams(), 0);
}

}  // namespace
}  // namespace app
