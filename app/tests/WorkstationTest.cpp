// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Workstation.h"

#include <gtest/gtest.h>

#include "catalogue/testing/FakeTagReader.h"
#include "decks/testing/RecordingEngine.h"
#include "support/testing/FakeClock.h"
#include "support/testing/ManualExecutor.h"
#include "support/testing/MemoryFiles.h"
#include "support/testing/MemorySettings.h"

namespace app {
namespace {

TEST(WorkstationTest, AFilePlaysAndMoves) {
  support::testing::FakeClock clock;
  decks::testing::RecordingEngine engine(clock);
  engine.AddDevice("Main");
  engine.AcceptAnyFile();
  support::testing::ManualExecutor workers;
  catalogue::testing::FakeTagReader tags;
  tags.AcceptAnyFile();
  support::testing::MemorySettings settings;
  support::testing::MemoryFiles files;
  Workstation station({engine, engine, tags, settings, files, workers, clock}, support::ProgramFolder("x"),
                      Workstation::Conducting::ByHand);
  station.StartUp();
  station.AddFiles({"a.mp3"}, {});
  station.PumpWindow();
  station.LoadDeck(1, station.Catalogue(), 1);
  station.Play(1);
  station.Tick();
  station.Tick();
  clock.Advance(std::chrono::seconds(2));
  station.Tick();
  EXPECT_EQ(station.View().decks[0].state, DeckView::State::Playing);
  EXPECT_EQ(station.View().decks[0].position, std::chrono::seconds(2));
}

}  // namespace
}  // namespace app
