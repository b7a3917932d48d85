// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/WorkstationView.h"
#include "app/testing/AllParts.h"
#include "app/testing/FakeMixer.h"
#include "app/testing/FakeVisualisation.h"
#include "app/testing/FakeWindow.h"
#include "catalogue/testing/FakeTagReader.h"
#include "decks/testing/RecordingDesk.h"
#include "decks/testing/RecordingEffects.h"
#include "decks/testing/RecordingEngine.h"
#include "decks/testing/RecordingLoops.h"
#include "support/Sentences.h"
#include "support/testing/FakeClock.h"
#include "support/testing/ManualExecutor.h"
#include "support/testing/MemoryFiles.h"
#include "support/testing/MemorySettings.h"

namespace app::testing {

using State = DeckView::State;

/// A workstation with two sound outputs, conducted by hand, and the words to use it.
class Evening : public ::testing::Test {
 protected:
  Evening() {
    for (const char* name : {"Main", "Phones"}) engine_.AddDevice(name);
    for (const char* file : {"a.mp3", "b.mp3", "c.flac"}) engine_.AddFile(file, {.seconds = 100});
  }

  void StartUp(karaoke::SynthesiserFactory* synthesisers = nullptr) {
    Ports ports{engine_, engine_, tags_, settings_, files_, workers_, clock_, &mixer_, &visualisation_};
    ports.synthesisers = synthesisers;
    ports.dmx = dmx_;
    ports.boards = boards_;
    ports.images = images_;
    ports.code_pages = code_pages_;
    ports.side_store = side_store_;
    ports.journal = journal_;
    ports.desk = &desk_;
    ports.effects = &effects_;
    ports.loops = &loops_;
    ports.microphone = microphone_;
    ports.local_time = local_time_;
    ports.fixtures = fixtures_;
    station_.emplace(ports, support::ProgramFolder(folder_), Workstation::Conducting::ByHand);
    station_->StartUp();
    workers_.RunAll();  // the mixer is asked
    Settle();
    station_->PumpWindow();
  }
  /// Lets the conductor run what was asked, and what came of that.
  void Settle() {
    for (int i = 0; i < 4; ++i) station_->Tick();
  }
  void Advance(std::chrono::milliseconds time) {
    clock_.Advance(time);
    station_->Tick();
  }
  void Load(int deck, const std::string& file) {
    catalogue::track_table table(catalogue::TrackColumns());
    table.AddRow(
        std::vector<std::string_view>{"Artist of " + file, "Title of " + file, "01:40", file, "120.50"});
    station_->Decks()[deck].Load(table, 1);
    Settle();
  }
  void Play(int deck) {
    station_->Decks()[deck].Do(&DeckStation::Play);
    Settle();
  }
  [[nodiscard]] const DeckView& Deck(int number) {
    return station_->View().decks[static_cast<std::size_t>(number - 1)];
  }
  [[nodiscard]] catalogue::track_table& Music() { return station_->Collections().Music().Table(); }
  [[nodiscard]] catalogue::track_table& Karaoke() { return station_->Collections().Karaoke().Table(); }
  [[nodiscard]] catalogue::track_table& Playlist(int number) {
    return station_->Collections().Playlist(number);
  }
  void Store(std::string_view section, std::string_view key, std::string_view value) {
    settings_.Set(support::kApplication, section, key, value);
  }
  [[nodiscard]] std::string Stored(std::string_view section, std::string_view key) const {
    return settings_.Get(support::kApplication, section, key, "(none)");
  }

  FixtureSources fixtures_;
  std::filesystem::path folder_ = std::filesystem::path(::testing::TempDir()) / "no-such-program-folder";
  support::testing::FakeClock clock_;
  decks::testing::RecordingEngine engine_{clock_};
  decks::testing::RecordingDesk desk_;
  decks::testing::RecordingEffects effects_;
  decks::testing::RecordingLoops loops_{100 * 44'100};
  catalogue::testing::FakeTagReader tags_;
  support::testing::MemorySettings settings_;
  support::testing::MemoryFiles files_;
  support::testing::ManualExecutor workers_;
  FakeMixer mixer_;
  FakeVisualisation visualisation_;
  FakeWindow window_;
  dmx::DmxInterface* dmx_ = nullptr;
  lightorgan::IoBoards* boards_ = nullptr;
  karaoke::DiscImages* images_ = nullptr;
  karaoke::CodePages* code_pages_ = nullptr;
  catalogue::SideStore* side_store_ = nullptr;
  support::Executor* journal_ = nullptr;
  decks::Microphone* microphone_ = nullptr;
  LocalTime local_time_;
  support::Sentences say_;  ///< in English
  std::optional<Workstation> station_;
};

}  // namespace app::testing
