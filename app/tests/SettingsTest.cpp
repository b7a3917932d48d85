// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Settings.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "support/SettingsVocabulary.h"
#include "support/testing/MemorySettings.h"

namespace app {
namespace {

class SettingsTest : public ::testing::Test {
 protected:
  support::testing::MemorySettings store_;
  support::Settings settings_{store_, support::ProgramFolder("/dj")};
};

TEST(SettingsVocabularyTest, EveryKeyIsDeclaredOnceWithItsMeaning) {
  std::set<std::string> names;
  for (const support::SettingKey& key : support::SettingsVocabulary()) {
    const std::string name =
        std::string(key.application) + "/" + std::string(key.section) + "/" + std::string(key.key);
    EXPECT_TRUE(names.insert(name).second) << name;
    EXPECT_FALSE(key.meaning.empty()) << name;
  }
}

TEST(SettingsVocabularyTest, EverySectionHasItsKeys) {
  std::map<std::string, int> sizes;
  for (const support::SettingKey& key : support::SettingsVocabulary()) ++sizes[std::string(key.section)];
  const std::map<std::string, int> expected{{"Banks", 3},       {"BanksDAC", 3},      {"CONSTANTDAC", 16},
                                            {"CONSTANTIO", 16}, {"Channels", 32},     {"CompactDecks", 8},
                                            {"DACLO", 17},      {"Devices", 6},       {"EQ", 2},
                                            {"Effects", 2},     {"Eq1", 13},          {"Eq2", 13},
                                            {"IOLO", 17},       {"Karaoke", 19},      {"Lamps", 4},
                                            {"Language", 1},    {"Decks", 1},         {"Microphone", 20},
                                            {"Mixer", 11},      {"Mono", 1},          {"Player1", 33},
                                            {"Player2", 33},    {"Preferences", 1},   {"Recording", 6},
                                            {"Rip", 1},         {"Settings", 25},     {"Setup", 6},
                                            {"Skin", 2},        {"Speakerchoice", 3}, {"Speakers", 3},
                                            {"Stereo", 1},      {"Tags", 5},          {"Visualisation", 2}};
  EXPECT_EQ(sizes, expected);
}

/// A Windows colour value from red, green and blue.
int Colour(int red, int green, int blue) {
  return red + 256 * green + 65536 * blue;
}

TEST_F(SettingsTest, ChannelColoursGoRoundTheCircleAndBackAgain) {
  const std::map<std::string, int> colours{
      {"Color1", Colour(255, 0, 0)},    {"Color2", Colour(255, 100, 0)},   {"Color3", Colour(255, 200, 0)},
      {"Color6", Colour(100, 255, 0)},  {"Color7", Colour(0, 183, 0)},     {"Color8", Colour(0, 255, 150)},
      {"Color9", Colour(0, 255, 220)},  {"Color10", Colour(0, 255, 255)},  {"Color12", Colour(0, 100, 255)},
      {"Color13", Colour(0, 0, 255)},   {"Color14", Colour(200, 0, 255)},  {"Color15", Colour(255, 10, 255)},
      {"Color16", Colour(164, 0, 164)}, {"Color17", Colour(255, 0, 0)},    {"Color18", Colour(255, 200, 0)},
      {"Color22", Colour(0, 200, 255)}, {"Color26", Colour(255, 10, 255)}, {"Color32", Colour(255, 0, 0)}};
  for (const auto& [key, colour] : colours) EXPECT_EQ(settings_.Number("Channels", key), colour) << key;
}

TEST_F(SettingsTest, TheTwoFoldersAreWrittenDifferently) {
  EXPECT_EQ(settings_.Text("Settings", "Directory"), "/dj\\MyMusic");
  EXPECT_EQ(settings_.Text("Rip", "Directory"), "/dj\\my Music");
  EXPECT_EQ(store_.Size(), 0U);
}

TEST_F(SettingsTest, ATextIsReadAsTheTypeThatItsOwnerWants) {
  struct {
    const char* text;
    bool flag;
    int number;
  } const texts[] = {{"True", true, 8},   {"true ", true, 8}, {"False", false, 8},
                     {"1", true, 1},      {"0", false, 0},    {"", false, 8},
                     {"12abc", true, 12}, {" -3", true, -3},  {"9999999999999", false, 8}};
  for (const auto& [text, flag, number] : texts) {
    settings_.SetText("Settings", "BPMPercent", text);
    EXPECT_EQ(settings_.Flag("Settings", "BPMPercent"), flag) << text;
    EXPECT_EQ(settings_.Number("Settings", "BPMPercent"), number) << text;
  }
}

TEST_F(SettingsTest, FlagsAndNumbersAreStoredAsText) {
  settings_.SetFlag("Setup", "UseK8062", true);
  settings_.SetFlag("Setup", "UseK8000", false);
  settings_.SetNumber("Devices", "Device1", 2);
  EXPECT_EQ(settings_.Text("Setup", "UseK8062"), "True");
  EXPECT_EQ(settings_.Text("Setup", "UseK8000"), "False");
  EXPECT_EQ(settings_.Text("Devices", "Device1"), "2");
}

}  // namespace
}  // namespace app
