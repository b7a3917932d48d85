// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/EqPresets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "support/testing/MemorySettings.h"

namespace decks {
namespace {

using ::testing::ElementsAre;

/// Saves to the disk, and can be full from the nth save on.
class DiskFiles final : public support::FileSaver {
 public:
  support::Result<void> Save(const std::filesystem::path& path, std::string_view content) override {
    if (--saves_left < 0) return support::Error{support::ErrorCode::Unreadable, "The disk is full."};
    std::ofstream(path, std::ios::binary) << content;
    return {};
  }
  int saves_left = 100;
};

class EqPresetsTest : public ::testing::Test {
 protected:
  EqPresetsTest() { std::filesystem::create_directories(folder_); }
  ~EqPresetsTest() override { std::filesystem::remove_all(folder_); }

  void Write(std::string_view text) { std::ofstream(folder_ / "EQ.tlv", std::ios::binary) << text; }
  std::string Content(const char* name) {
    std::ifstream file(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::vector<std::string> Names() {
    std::vector<std::string> names;
    const auto presets = file_.Read();
    for (const EqPreset& preset : presets.Value()) names.push_back(preset.name);
    return names;
  }

  std::filesystem::path folder_ =
      std::filesystem::path(::testing::TempDir()) /
      ("presets-of-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
  DiskFiles files_;
  EqPresetFile file_{files_, support::ProgramFolder(folder_)};
  static constexpr EqValues kParty{6, 5, 3, 0, -1, -2, 0, 2, 4, 12};
};

TEST_F(EqPresetsTest, APresetIsTwoLinesWithASemicolonBehindEveryValue) {
  ASSERT_TRUE(file_.Save("Party", kParty));
  ASSERT_TRUE(file_.Save("Flat", {}));
  EXPECT_EQ(Content("EQ.tlv"), "[Party]\r\n6;5;3;0;-1;-2;0;2;4;12;\r\n[Flat]\r\n0;0;0;0;0;0;0;0;0;0;\r\n");
  EXPECT_FALSE(std::filesystem::exists(folder_ / "EQ2.tlv"));
}

TEST_F(EqPresetsTest, WhatWasSavedIsReadInItsOrder) {
  EXPECT_THAT(Names(), ElementsAre());
  ASSERT_TRUE(file_.Save("Party", kParty));
  ASSERT_TRUE(file_.Save("a]b[", {}));
  EXPECT_THAT(Names(), ElementsAre("Party", "a]b["));
  EXPECT_EQ(EqValuesOf(file_.Read().Value()[0].value_line), kParty);
}

TEST_F(EqPresetsTest, AnEndWithoutALineEndDoesNotSwallowWhatIsAdded) {
  Write("[Old]\n1;2;3;4;5;6;7;8;9;10;");
  ASSERT_TRUE(file_.Save("New", {}));
  EXPECT_THAT(Names(), ElementsAre("Old", "New"));
}

TEST_F(EqPresetsTest, ANameWithoutValuesDoesNotTakeThoseOfWhatIsAdded) {
  Write("[Old]\n1;\n[Cut off]");
  ASSERT_TRUE(file_.Save("New", kParty));
  EXPECT_THAT(Names(), ElementsAre("Old", "New"));
  EXPECT_EQ(EqValuesOf(file_.Read().Value()[1].value_line), kParty);
}

TEST_F(EqPresetsTest, AnOverwrittenPresetStaysInItsPlaceAndTheOldFileStaysBeside) {
  const std::string old =
      "a note\r\n[A]\r\n1;1;1;1;1;1;1;1;1;1;\r\n[Party]\r\nx\r\n[B]\r\n2;\r\n[Party]\r\ny\r\n";
  Write(old);
  ASSERT_TRUE(file_.Save("Party", kParty));
  EXPECT_EQ(Content("EQ.tlv"),
            "a note\r\n[A]\r\n1;1;1;1;1;1;1;1;1;1;\r\n[Party]\r\n6;5;3;0;-1;-2;0;2;4;12;\r\n[B]\r\n2;\r\n");
  EXPECT_EQ(Content("EQ2.tlv"), old);
}

TEST_F(EqPresetsTest, ADeletedPresetIsGoneAndTheOldFileStaysBeside) {
  Write("[A]\r\n1;\r\n[B]\r\n2;\r\n");
  ASSERT_TRUE(file_.Delete("A"));
  EXPECT_EQ(Content("EQ.tlv"), "[B]\r\n2;\r\n");
  EXPECT_EQ(Content("EQ2.tlv"), "[A]\r\n1;\r\n[B]\r\n2;\r\n");
  EXPECT_EQ(file_.Delete("A").Failure().code, support::ErrorCode::NotFound);
}

TEST_F(EqPresetsTest, AFullDiskLeavesThePresetsAsTheyWere) {
  Write("[A]\r\n1;\r\n");
  for (const int saves : {0, 1}) {
    files_.saves_left = saves;
    EXPECT_FALSE(file_.Save("A", kParty));
    EXPECT_EQ(Content("EQ.tlv"), "[A]\r\n1;\r\n");
  }
  files_.saves_left = 0;
  EXPECT_FALSE(file_.Save("B", kParty));
  EXPECT_EQ(Content("EQ.tlv"), "[A]\r\n1;\r\n");
}

TEST_F(EqPresetsTest, AFileThatCannotBeReadIsNotWrittenOver) {
  std::filesystem::create_directory(folder_ / "EQ.tlv");
  EXPECT_FALSE(file_.Read());
  EXPECT_FALSE(file_.Save("A", kParty));
  EXPECT_FALSE(file_.Delete("A"));
}

TEST_F(EqPresetsTest, ANameThatWouldBreakTheFileIsRefused) {
  for (const std::string& name : {std::string(), std::string("a\r\nb"), std::string("a\0b", 3)}) {
    EXPECT_FALSE(file_.Save(name, kParty));
  }
}

TEST_F(EqPresetsTest, ValuesThatAreMissingOrNoNumbersAreZero) {
  EXPECT_EQ(EqValuesOf("1;x;;3 ;1000000;-5"), (EqValues{1, 0, 0, 3, 1000, -5, 0, 0, 0, 0}));
  EXPECT_EQ(EqValuesOf("1;2;3;4;5;6;7;8;9;10;11;12")[9], 10);
}

TEST_F(EqPresetsTest, ANameAtTheVeryEndIsNoPreset) {
  EXPECT_EQ(ParseEqPresets("[A]\r\n1;\r\n[B]").size(), 1U);
  EXPECT_EQ(ParseEqPresets("\n\n[A\n1;\n")[0].name, "A");
}

TEST_F(EqPresetsTest, ApplyingRemembersTheNameAndThenMovesTheBanksSlidersInOrder) {
  support::testing::MemorySettings store;
  support::Settings settings(store, support::ProgramFolder("/prog"));
  std::vector<std::pair<int, int>> moved;
  const auto move = [&](int slider, int decibels) { moved.emplace_back(slider, decibels); };
  ApplyEqPreset(EqBank::First, {"Party", EqValueLine(kParty)}, settings, move);
  ASSERT_EQ(moved.size(), 10U);
  EXPECT_EQ(moved[0], std::pair(0, 6));
  EXPECT_EQ(moved[9], std::pair(9, 12));
  ApplyEqPreset(EqBank::Second, {"Flat", ""}, settings, move);
  EXPECT_EQ(moved[10].first, 10);
  EXPECT_EQ(moved[19].first, 19);
  EXPECT_THAT(store.Sets(), ElementsAre("QRV/EQ/Preset1=Party", "QRV/EQ/Preset2=Flat"));
}

}  // namespace
}  // namespace decks
