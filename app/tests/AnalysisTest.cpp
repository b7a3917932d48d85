// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/WorkstationView.h"
#include "app/sound/AnalysisRows.h"
#include "app/tests/Evening.h"
#include "catalogue/testing/FakeTagWriter.h"
#include "catalogue/testing/MemorySideStore.h"
#include "decks/testing/FakeCommandRunner.h"
#include "decks/testing/FakeFinders.h"

namespace app::testing {
namespace {

namespace track = catalogue::track;

class Analysis : public Evening {
 protected:
  Analysis() {
    std::vector<std::int16_t> clicks(60 * 88'200);
    for (std::size_t i = 0; i < clicks.size(); ++i) {
      const int height = i / 44'100 < 115 ? 9000 : 3000;
      if (i % 44'100 < 1500) clicks[i] = static_cast<std::int16_t>(i % 4 < 2 ? height : -height);
    }
    engine_.AddFile("t.mp3", {.seconds = 60, .samples = clicks});
  }
  void Start() {
    Ports ports{engine_, engine_, tags_, settings_, files_, workers_, clock_, &mixer_, &visualisation_};
    ports.analysis = {&meters_, &trackers_};
    ports.commands = &commands_;
    ports.side_store = &store_;
    ports.tag_writer = &tag_writer_;
    station_.emplace(ports, support::ProgramFolder(folder_), Workstation::Conducting::ByHand);
    station_->StartUp();
    LetWorkersFinish();
  }
  void LetWorkersFinish() {
    workers_.RunAll();
    Settle();
    workers_.RunAll();
    Settle();
    station_->PumpWindow();
  }
  /// Loads without any tempo in the row.
  void LoadPlain(int deck, const std::string& file) {
    catalogue::track_table table(catalogue::TrackColumns());
    table.AddRow(std::vector<std::string_view>{"", "", "", file});
    station_->Decks()[deck].Load(table, 1);
    Settle();
  }
  int Reads() const {
    const auto log = engine_.Log();
    return static_cast<int>(std::count_if(log.begin(), log.end(), [](const std::string& call) {
      return call.rfind("BASS_ChannelGetData", 0) == 0 && call.ends_with(" 262144");
    }));
  }

  decks::testing::FakeLoudnessMeters meters_;
  decks::testing::FakeBeatTrackers trackers_;
  decks::testing::FakeCommandRunner commands_;
  catalogue::testing::MemorySideStore store_;
  catalogue::testing::FakeTagWriter tag_writer_{tags_};
};

TEST_F(Analysis, ShowsLoudnessBeatsAndTheTempoThatTheRowDidNotSay) {
  Start();
  LoadPlain(1, "t.mp3");
  EXPECT_EQ(Deck(1).bpm, 0);
  LetWorkersFinish();
  ASSERT_NE(Deck(1).grid, nullptr);
  EXPECT_NEAR(Deck(1).bpm, 120, 0.05);
  EXPECT_TRUE(Deck(1).loudness.valid);
  Load(1, "t.mp3");
  EXPECT_EQ(Deck(1).bpm, 120.5) << "what the row says";
}

TEST_F(Analysis, TheWaveGrowsWhileTheFileIsRead) {
  Start();
  LoadPlain(1, "t.mp3");
  for (int i = 0; i < 15; ++i) workers_.RunOne();
  Settle();
  ASSERT_NE(Deck(1).wave, nullptr);
  EXPECT_LT(Deck(1).wave->fine.size(), 60U * 150);
  EXPECT_EQ(Deck(1).wave->overview.size(), 1500U) << "as wide as it will be";
}

TEST_F(Analysis, WhatIsKeptIsNotReadAgainNotEvenInTheNextEvening) {
  Start();
  LoadPlain(1, "t.mp3");
  LetWorkersFinish();
  const int reads = Reads();
  EXPECT_GT(reads, 0);
  station_.reset();
  Start();
  LoadPlain(2, "t.mp3");
  LetWorkersFinish();
  EXPECT_EQ(Reads(), reads);
  EXPECT_NEAR(Deck(2).bpm, 120, 0.05);
  EXPECT_TRUE(Deck(2).has_mix_points);
  store_.SetStamp("t.mp3", {2, 2});
  LoadPlain(1, "a.mp3");
  LoadPlain(2, "a.mp3");
  LoadPlain(1, "t.mp3");
  LetWorkersFinish();
  EXPECT_GT(Reads(), reads) << "another file under the same name";
}

TEST_F(Analysis, WhatAnOlderFinderKeptIsShownAtOnceAndReadOnceMoreForKeyAndBars) {
  Start();
  LoadPlain(1, "t.mp3");
  LetWorkersFinish();
  const auto key = catalogue::KeyOf(store_, "t.mp3");
  ASSERT_TRUE(store_.Write(key->path, key->stamp, catalogue::SidePart::Form, "of another version").Ok());
  const int reads = Reads();
  station_.reset();
  Start();
  LoadPlain(1, "t.mp3");
  for (int i = 0; i < 6; ++i) workers_.RunOne();
  Settle();
  ASSERT_NE(Deck(1).wave, nullptr);
  EXPECT_EQ(Deck(1).wave->fine.size(), 60U * 150) << "as it was kept";
  LetWorkersFinish();
  EXPECT_GT(Reads(), reads);
  EXPECT_NE(Deck(1).form, nullptr);
  EXPECT_TRUE(catalogue::ReadAnalysis(store_, key->path, key->stamp)->form);
}

TEST_F(Analysis, AHandSaysWhereABarBeginsAndThatIsKept) {
  Start();
  LoadPlain(1, "t.mp3");
  station_->Decks()[1].Adjust(&DeckStation::BarHere);
  Settle();
  EXPECT_FALSE(Deck(1).bar) << "no beats are known yet";
  LetWorkersFinish();
  EXPECT_FALSE(Deck(1).bar) << "every beat is like the other";
  station_->Decks()[1].Adjust(&DeckStation::Seek, std::chrono::microseconds(10'100'000));
  Settle();
  station_->Decks()[1].Adjust(&DeckStation::BarHere);
  LetWorkersFinish();
  ASSERT_TRUE(Deck(1).bar);
  const music::Seconds bar = *Deck(1).bar;
  EXPECT_NEAR(bar.count(), Deck(1).grid->NearestBeat(bar).count(), 1e-5);
  station_.reset();
  Start();
  LoadPlain(2, "t.mp3");
  LetWorkersFinish();
  EXPECT_EQ(Deck(2).bar, bar);
  station_->Decks()[2].Adjust(&DeckStation::ForgetGrid);
  LetWorkersFinish();
  EXPECT_FALSE(Deck(2).bar);
}

TEST_F(Analysis, AnotherThresholdLooksForMixPointsAloneAndKeepsThem) {
  Start();
  LoadPlain(1, "t.mp3");
  LetWorkersFinish();
  const int reads = Reads();
  const auto wave = Deck(1).wave;
  station_->Decks().SetGainPercent(100);
  Settle();
  LetWorkersFinish();
  EXPECT_EQ(Reads(), reads);
  EXPECT_EQ(Deck(1).wave, wave);
  EXPECT_TRUE(Deck(1).has_mix_points);
}

TEST_F(Analysis, AThresholdThatIsMovedInTheMiddleCountsInTheEnd) {
  Start();
  LoadPlain(1, "t.mp3");
  workers_.RunOne();
  station_->Decks().SetGainPercent(100);
  Settle();
  LetWorkersFinish();
  station_->Decks().SetGainPercent(3);
  Settle();
  LetWorkersFinish();
  EXPECT_EQ(Deck(1).start_mix_point.count(), 0);
}

TEST_F(Analysis, AFullDiskIsToldOnceAndNothingElseIsAmiss) {
  Start();
  store_.SetFull(true);
  LoadPlain(1, "t.mp3");
  LetWorkersFinish();
  EXPECT_TRUE(Deck(1).has_mix_points);
  EXPECT_EQ(station_->View().notice, "There is no room to keep anything.");
}

TEST_F(Analysis, TheRowIsFilledInWhereItSaysNothing) {
  Start();
  catalogue::track_table& table = Music();
  table.AddRow(std::vector<std::string_view>{"", "", "", "t.mp3", "", "", "", "", "", "", "-3.21"});
  station_->Decks()[1].Load(table, table.Rows());
  Settle();
  LetWorkersFinish();
  EXPECT_EQ(table.Cell(table.Rows(), track::kBpm), "120.00");
  EXPECT_EQ(table.Cell(table.Rows(), track::kGain), "-3.21");
  EXPECT_EQ(table.Cell(table.Rows(), track::kStartMixPoint), "0.000");
  EXPECT_EQ(table.Cell(table.Rows(), track::kEndMixPoint).size(), 6U);
}

TEST_F(Analysis, WhatIsKeptGoesAlongWithTheSoundWhereverTheFileIsAndWhoeverWroteItsTag) {
  store_.SetContent("t.mp3", "sound");
  Start();
  LoadPlain(1, "t.mp3");
  LetWorkersFinish();
  station_->Decks()[1].SetMixPoint(MixPoint::Start, std::chrono::seconds(7));
  station_->Decks()[1].Adjust(&DeckTempo::Scale, music::BeatScale::Half);
  Settle();
  LetWorkersFinish();
  const int reads = Reads();
  store_.SetStamp("t.mp3", {2, 2});  // another program wrote its tag
  engine_.AddFile("elsewhere/u.mp3", {.seconds = 60});
  store_.SetContent("elsewhere/u.mp3", "sound");
  for (const char* file : {"t.mp3", "elsewhere/u.mp3"}) {
    station_.reset();
    Start();
    catalogue::track_table& table = Music();
    table.AddRow(std::vector<std::string_view>{"", "", "", file});
    LoadPlain(2, file);
    LetWorkersFinish();
    EXPECT_EQ(Reads(), reads) << file;
    EXPECT_EQ(Deck(2).start_mix_point, std::chrono::seconds(7)) << "its row is new: " << file;
    EXPECT_TRUE(Deck(2).moved.start) << file;
    EXPECT_NEAR(Deck(2).bpm, 60, 0.05) << file;
    EXPECT_EQ(table.Cell(table.Rows(), track::kStartMixPoint), "7.000") << file;
    EXPECT_EQ(table.Cell(table.Rows(), track::kBpm), "60.00") << file;
  }
}

class WrittenTags : public Analysis {
 protected:
  WrittenTags() {
    catalogue::FileTags tags;
    tags.text_block = "a word";
    tags.user_items = {{"SMP", "9.000"}};
    tags_.AddFile("t.mp3", tags);
    Store("Tags", "Write", "True");
    tag_writer_.OnWritten([this](const std::string& path) { store_.SetStamp(path, {2, ++state_}); });
  }
  void LoadRow(int deck) {
    catalogue::track_table& table = Music();
    if (table.Rows() == 0) table.AddRow(std::vector<std::string_view>{"", "", "", "t.mp3"});
    station_->Decks()[deck].Load(table, 1);
    Settle();
    LetWorkersFinish();
    LetWorkersFinish();
  }
  catalogue::MixingTags Block() { return catalogue::ScanTextBlock(tags_.Read("t.mp3").Value().text_block); }
  std::int64_t state_ = 1;
};

TEST_F(WrittenTags, SayWhatWasFoundAndWhereAHandPutAPoint) {
  Start();
  LoadRow(1);
  EXPECT_EQ(Block().start_mix_point, "0.000");
  EXPECT_EQ(Block().bpm, "120.00");
  station_->Decks()[1].SetMixPoint(MixPoint::Start, std::chrono::milliseconds(3250));
  station_->Decks()[1].SetMixPoint(MixPoint::Start, std::chrono::milliseconds(3500));
  LetWorkersFinish();
  const auto tags = tags_.Read("t.mp3").Value();
  EXPECT_EQ(Block().start_mix_point, "3.500");
  EXPECT_EQ(tags.user_items.front().value, "3.500") << "it goes before the block";
  EXPECT_EQ(tags.text_block.substr(0, 8), "a word\r\n");
  EXPECT_EQ(tag_writer_.Writes(), 2);
}

TEST_F(WrittenTags, AreLeftAloneUnlessTheSettingAsksForThemAndWhenTheySayTheSame) {
  Store("Tags", "Write", "False");
  Start();
  LoadRow(1);
  EXPECT_EQ(tag_writer_.Writes(), 0);
  Store("Tags", "Write", "True");
  LoadRow(2);
  LoadPlain(1, "a.mp3");
  LoadRow(1);
  EXPECT_LE(tag_writer_.Writes(), 1);
}

TEST_F(WrittenTags, LeaveTheFileAnalysedThoughItsSizeAndTimeAreOthers) {
  Start();
  LoadRow(1);
  const int reads = Reads();
  station_->Decks().SetGainPercent(100);
  Settle();
  LetWorkersFinish();
  station_.reset();
  Start();
  LoadRow(2);
  EXPECT_EQ(Reads(), reads);
}

TEST_F(WrittenTags, ThatCannotBeWrittenAreToldOnce) {
  Start();
  tag_writer_.SetProtected(true);
  LoadRow(1);
  EXPECT_EQ(station_->View().notice, "\"t.mp3\" is protected.");
  EXPECT_EQ(Music().Cell(1, track::kStartMixPoint), "0.000");
}

class WhatAHandDid : public WrittenTags {
 protected:
  void NextEvening() {
    const catalogue::track_table index = Music();
    station_.reset();
    Start();
    Music() = index;
    LoadRow(1);
  }
};

TEST_F(WhatAHandDid, ToTheBeatsComesBackWithTheFile) {
  Start();
  LoadRow(1);
  station_->Decks()[1].Adjust(&DeckTempo::Scale, music::BeatScale::Half);
  Settle();
  station_->Decks()[1].Adjust(&DeckTempo::Shift, std::chrono::milliseconds(20));
  Settle();
  LetWorkersFinish();
  const auto corrected = Deck(1).grid;
  NextEvening();
  ASSERT_NE(Deck(1).grid, nullptr);
  EXPECT_EQ(Deck(1).grid->Beats().size(), corrected->Beats().size());
  EXPECT_NEAR(Deck(1).grid->Beats()[0].count(), corrected->Beats()[0].count(), 1e-6);
  EXPECT_NEAR(Deck(1).bpm, 60, 0.05);
  station_->Decks()[1].Adjust(&DeckStation::ForgetGrid);
  Settle();
  EXPECT_NEAR(Deck(1).bpm, 120, 0.05);
  LetWorkersFinish();
  NextEvening();
  EXPECT_NEAR(Deck(1).bpm, 120, 0.05);
}

TEST_F(WhatAHandDid, IsNotWhatAnOlderThresholdFound) {
  Start();
  LoadRow(1);
  const auto old_end = Deck(1).end_mix_point;
  station_->Decks()[1].SetMixPoint(MixPoint::Start, std::chrono::seconds(7));
  LetWorkersFinish();
  Store("Settings", "GainPercent", "90");
  NextEvening();
  EXPECT_EQ(Deck(1).start_mix_point, std::chrono::seconds(7));
  EXPECT_TRUE(Deck(1).moved.start);
  EXPECT_NE(Deck(1).end_mix_point, old_end);
  EXPECT_FALSE(Deck(1).moved.end);
  station_->Decks()[1].ResetMixPoint(MixPoint::Start);
  LetWorkersFinish();
  Store("Settings", "GainPercent", "3");
  NextEvening();
  EXPECT_FALSE(Deck(1).moved.start);
  EXPECT_EQ(Deck(1).end_mix_point, old_end);
  EXPECT_NE(Music().Cell(1, track::kStartMixPoint), "7.000");
}

TEST_F(Analysis, TheGainQueryRunsTheProgramOnce) {
  Start();
  LoadPlain(1, "t.mp3");
  std::vector<GainAnswer> answers;
  for (int i = 0; i < 2; ++i) {
    station_->Decks()[1].QueryGain([&](const auto& answer) { answers.push_back(answer); });
    LetWorkersFinish();
  }
  station_->Decks()[2].QueryGain([&](const auto&) { ADD_FAILURE() << "an empty deck"; });
  ASSERT_EQ(answers.size(), 2U);
  EXPECT_EQ(answers[0].shown, "89.0");
  EXPECT_FALSE(answers[0].lacks);
}

}  // namespace
}  // namespace app::testing
