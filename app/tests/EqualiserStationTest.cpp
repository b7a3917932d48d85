// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <fstream>

#include "app/WorkstationView.h"
#include "app/tests/Evening.h"

namespace app::testing {
namespace {

using decks::EqBank;

/// Presets on the disk, saved in memory.
class EqPresetEvening : public Evening {
 protected:
  EqPresetEvening() {
    folder_ = std::filesystem::path(::testing::TempDir()) / "eq-presets";
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  ~EqPresetEvening() override { std::filesystem::remove_all(folder_); }
  void Write(const std::string& text) { std::ofstream(folder_ / "EQ.tlv", std::ios::binary) << text; }
  void Pump() {
    workers_.RunAll();
    station_->PumpWindow();
    Settle();
  }
  PresetKeeper::Done Keep() {
    return [this](const support::Result<void>& result) { told_ = result ? "done" : result.Failure().text; };
  }
  [[nodiscard]] std::string Saved(const char* name) const {
    return files_.Content(folder_ / name).value_or("");
  }

  std::string told_;
};

TEST_F(EqPresetEvening, APresetMovesTheSlidersOfItsBankAndIsRemembered) {
  Write("[Loud]\r\n1;2;3;4;5;6;7;8;9;10;\r\n");
  StartUp();
  Pump();
  ASSERT_EQ(station_->Equaliser().Presets().size(), 1U);
  station_->Equaliser().Apply(EqBank::Second, "Loud");
  EXPECT_EQ(station_->Equaliser().Sliders()[9], 0);
  EXPECT_EQ(station_->Equaliser().Sliders()[10], 1);
  EXPECT_EQ(station_->Equaliser().Sliders()[19], 10);
  EXPECT_EQ(station_->Equaliser().Chosen(EqBank::Second), "Loud");
  EXPECT_EQ(station_->Equaliser().Chosen(EqBank::First), "");
}

TEST_F(EqPresetEvening, SavingTakesTheSlidersAsTheyStandWhenItIsAskedFor) {
  StartUp();
  station_->Equaliser().Set(0, -3);
  station_->Equaliser().Set(9, 4);
  station_->Equaliser().Save(EqBank::First, "Mine", Keep());
  station_->Equaliser().Set(0, 7);
  EXPECT_EQ(told_, "") << "nobody waits for the disk";
  Pump();
  EXPECT_EQ(Saved("EQ.tlv"), "[Mine]\r\n-3;0;0;0;0;0;0;0;0;4;\r\n");
  EXPECT_EQ(told_, "done");
}

TEST_F(EqPresetEvening, WhatWaitsWhenTheProgramEndsIsSaved) {
  StartUp();
  station_->Equaliser().Save(EqBank::First, "Late", Keep());
  station_->ShutDown();
  EXPECT_EQ(Saved("EQ.tlv"), "[Late]\r\n0;0;0;0;0;0;0;0;0;0;\r\n");
}

TEST_F(EqPresetEvening, FailuresAreWholeSentences) {
  StartUp();
  station_->Equaliser().Save(EqBank::First, "", Keep());
  Pump();
  EXPECT_EQ(told_, "A preset needs a name of one line.");
  station_->Equaliser().Delete("Nobody", Keep());
  Pump();
  EXPECT_TRUE(told_.starts_with("The preset \"Nobody\" could not be deleted: ")) << told_;
  station_->Language().Choose(1);
  station_->Equaliser().Delete("Nobody", Keep());
  Pump();
  EXPECT_EQ(told_,
            "De voorinstelling \"Nobody\" kon niet worden verwijderd: \"Nobody\" is niet gevonden; het is "
            "misschien verplaatst of verwijderd.");
  station_->Language().Choose(0);
  files_.SetFull(true);
  station_->Equaliser().Save(EqBank::First, "Full", Keep());
  Pump();
  EXPECT_TRUE(told_.starts_with("The preset \"Full\" could not be saved: ")) << told_;
}

TEST_F(EqPresetEvening, AFileThatCannotBeReadIsToldOnTheStatusLine) {
  std::filesystem::create_directory(folder_ / "EQ.tlv");
  StartUp();
  Pump();
  EXPECT_TRUE(station_->Equaliser().Presets().empty());
  EXPECT_TRUE(station_->View().notice.starts_with("The equaliser's presets cannot be read: "));
}

class MovedMixPoints : public Evening {
 protected:
  void Begin() {
    StartUp();
    Music().AddRow(std::vector<std::string_view>{"A", "T", "01:40", "a.mp3"});
    Playlist(2).AddRow(std::vector<std::string_view>{"A", "T", "01:40", "b.mp3"});
    Playlist(2).AddRow(std::vector<std::string_view>{"A", "T", "01:40", "a.mp3"});
    Load(1, "a.mp3");
    workers_.RunAll();
    Settle();
    (void)station_->View();
  }
  [[nodiscard]] std::string Cell(const catalogue::track_table& table, int row, MixPoint which) const {
    namespace track = catalogue::track;
    return std::string(
        table.Cell(row, which == MixPoint::Start ? track::kStartMixPoint : track::kEndMixPoint));
  }
};

TEST_F(MovedMixPoints, StandInEveryRowThatHoldsTheFileAndInTheIndex) {
  Begin();
  station_->Decks()[1].SetMixPoint(MixPoint::Start, std::chrono::microseconds(12'345'678));
  Settle();
  EXPECT_EQ(Deck(1).start_mix_point, std::chrono::microseconds(12'345'678));
  EXPECT_TRUE(Deck(1).moved.start);
  EXPECT_FALSE(Deck(1).moved.end);
  EXPECT_EQ(Cell(Music(), 1, MixPoint::Start), "12.346");
  EXPECT_EQ(Cell(Playlist(2), 2, MixPoint::Start), "12.346");
  EXPECT_EQ(Cell(Playlist(2), 1, MixPoint::Start), "");
  workers_.RunAll();
  EXPECT_NE(files_.Content(folder_ / "tlv.ndx").value_or("").find("12.346"), std::string::npos);
}

TEST_F(MovedMixPoints, GoBackToWhereTheyWereFound) {
  Begin();
  const auto found = Deck(1).found.start;
  ASSERT_TRUE(found);
  station_->Decks()[1].SetMixPoint(MixPoint::Start, std::chrono::seconds(30));
  Settle();
  station_->Decks()[1].ResetMixPoint(MixPoint::Start);
  Settle();
  EXPECT_EQ(Deck(1).start_mix_point, *found);
  EXPECT_FALSE(Deck(1).moved.start);
}

TEST_F(MovedMixPoints, AreRememberedByTheRowThatIsLoaded) {
  Begin();
  station_->Decks()[1].SetMixPoint(MixPoint::End, std::chrono::seconds(77));
  Settle();
  station_->Decks()[2].Load(Music(), 1);
  Settle();
  EXPECT_EQ(Deck(2).end_mix_point, std::chrono::seconds(77));
  EXPECT_TRUE(Deck(2).moved.end);
}

TEST_F(MovedMixPoints, StayWithinTheTrack) {
  Begin();
  station_->Decks()[1].SetMixPoint(MixPoint::End, std::chrono::hours(5));
  Settle();
  EXPECT_LE(Deck(1).end_mix_point, Deck(1).length);
  EXPECT_GT(Deck(1).end_mix_point, Deck(1).length - std::chrono::milliseconds(1));
  station_->Decks()[3].SetMixPoint(MixPoint::End, std::chrono::seconds(5));
  Settle();
  EXPECT_EQ(Deck(3).end_mix_point, std::chrono::seconds(0)) << "nothing is loaded there";
}

}  // namespace
}  // namespace app::testing
