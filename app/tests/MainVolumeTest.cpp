// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "app/WorkstationView.h"
#include "app/sound/MasterVolume.h"
#include "app/tests/Evening.h"

namespace app {
namespace {

class MainVolumeTest : public testing::Evening {
 protected:
  [[nodiscard]] int Slider() { return station_->View().main_volume; }
};

TEST(MasterVolumeTest, TheSliderIsLoudestAtTheTop) {
  const std::pair<int, int> cases[] = {{100, 0}, {0, 99}, {50, 49}, {1, 98}, {99, 1}, {150, 0}, {-3, 99}};
  for (const auto& [percent, slider] : cases) EXPECT_EQ(MainVolumeOf(percent), slider) << percent;
}

TEST(MasterVolumeTest, EverySliderPlaceComesBackFromItsPercentage) {
  for (int slider = 0; slider <= 99; ++slider) EXPECT_EQ(MainVolumeOf(PercentOf(slider)), slider);
}

TEST_F(MainVolumeTest, StartsAtTheSystemsVolumeAndFollowsIt) {
  mixer_.Move(50);
  StartUp();
  EXPECT_EQ(Slider(), 49);
  EXPECT_TRUE(station_->View().has_mixer);
  mixer_.Move(100);
  Settle();
  EXPECT_EQ(Slider(), 0);
}

TEST_F(MainVolumeTest, MovesTheSystemsVolume) {
  mixer_.Move(50);
  StartUp();
  station_->Outputs().SetMainVolume(99);
  Settle();
  EXPECT_EQ(mixer_.Volume(), 0);
  EXPECT_EQ(Slider(), 99);
}

TEST_F(MainVolumeTest, IsThatOfTheOutputOfDeckOne) {
  Store("Devices", "Device1", "2");
  StartUp();
  const auto& names = station_->Outputs().DeviceNames();
  ASSERT_GE(names.size(), 2U);
  EXPECT_EQ(mixer_.Chosen(), names[1]);
  station_->Outputs().Set(2, {1, 0});
  EXPECT_EQ(mixer_.Chosen(), names[1]);
  station_->Outputs().Set(1, {1, 0});
  EXPECT_EQ(mixer_.Chosen(), names[0]);
  station_->Outputs().Set(1, {0, 0});
  EXPECT_EQ(mixer_.Chosen(), "") << "no sound: the system's usual output";
}

TEST_F(MainVolumeTest, WhatWasToldBeforeAMoveOfTheSliderDoesNotTakeItBack) {
  mixer_.Move(50);
  StartUp();
  station_->Outputs().SetMainVolume(20);
  mixer_.Move(60);  // an echo that waits behind the move
  Settle();
  EXPECT_EQ(Slider(), 20);
  mixer_.Move(60);
  Settle();
  EXPECT_EQ(Slider(), MainVolumeOf(60));
}

TEST_F(MainVolumeTest, WithoutASoundSystemItStillScalesTheLevels) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  const float loud = Deck(1).left_db;
  station_->Outputs().SetMainVolume(50);
  Settle();
  EXPECT_FALSE(station_->View().has_mixer);
  EXPECT_NEAR(Deck(1).left_db, loud / 0.5, 0.01);
}

TEST_F(MainVolumeTest, ANoticeAfterShutDownIsDropped) {
  mixer_.Move(50);
  StartUp();
  station_.reset();
  mixer_.Move(10);
  EXPECT_EQ(mixer_.Openings(), 1);
}

}  // namespace
}  // namespace app
