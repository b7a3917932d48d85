// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "app/resume/Journal.h"
#include "dmx/LightGroups.h"
#include "platform/files/testing/TestFolder.h"
#include "singers/RotationFile.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

class JournalVerbTest : public ::testing::Test {
 protected:
  ExitCode Inspect(const std::string& text, const char* verb = "journal") {
    folder_.Write("kept", text);
    out_.str("");
    return djinspect::Run(std::vector<std::string>{verb, (folder_ / "kept").string()}, out_, err_);
  }
  platform::files::testing::TestFolder folder_;
  std::ostringstream out_, err_;
};

TEST_F(JournalVerbTest, PrintsWhatAnEveningWouldGoOnWith) {
  app::Journal journal;
  journal.decks[1].state = app::DeckInHand::State::Playing;
  journal.decks[1].filename = "/caf\xE9.mp3";
  journal.decks[1].position = std::chrono::milliseconds(83'512);
  journal.mixer.mix.leader = 2;
  journal.mixer.mix.next = 1;
  journal.lights.levels[1] = 200;
  journal.suspects["/bad.mp3"] = {1, true};
  ASSERT_EQ(Inspect(app::JournalText(journal)), ExitCode::Read);
  const auto printed = nlohmann::json::parse(out_.str());
  EXPECT_EQ(printed["decks"][0]["state"], "empty");
  EXPECT_EQ(printed["decks"][1]["file"], "/caf\xC3\xA9.mp3");
  EXPECT_EQ(printed["decks"][1]["ms"], 83'512);
  EXPECT_EQ(printed["mixer"]["mix"]["next"], 1);
  EXPECT_EQ(printed["lights"]["levels"][1], 200);
  EXPECT_EQ(printed["suspects"]["/bad.mp3"]["falls"], 1);
}

TEST_F(JournalVerbTest, OneThatIsNotWholeIsNone) {
  const std::string whole = app::JournalText({});
  EXPECT_EQ(Inspect(whole.substr(0, whole.size() / 2)), ExitCode::NothingRead);
  EXPECT_EQ(out_.str(), "");
  EXPECT_NE(err_.str(), "");
}

TEST_F(JournalVerbTest, PrintsWhatIsStillToBeAdded) {
  ASSERT_EQ(Inspect("9 0 opened\r\n\tx\r\n4 7 opened\r\n\t/caf\xE9.m3u\r\n", "adding"), ExitCode::Read);
  EXPECT_EQ(
      nlohmann::json::parse(out_.str())["orders"],
      nlohmann::json::parse(R"([{"list":"playlist3","before":7,"opened":true,"paths":["/caf\u00e9.m3u"]}])"));
}

TEST_F(JournalVerbTest, PrintsGroupsOfLights) {
  ASSERT_EQ(Inspect(dmx::LightGroupsText({{"Front", {{"Par.dmx", 7}}}}), "lightgroups"), ExitCode::Read);
  const auto printed = nlohmann::json::parse(out_.str());
  EXPECT_EQ(printed["groups"][0]["fixtures"][0]["start"], 7);
  EXPECT_EQ(Inspect("shopping list", "lightgroups"), ExitCode::NothingRead);
}

TEST_F(JournalVerbTest, PrintsWhoSingsWhatAfterWhom) {
  singers::Evening evening;
  for (const char* name : {"Anna", "caf\xE9"}) {
    const singers::SingerId id = evening.rotation.Add(name);
    evening.rotation.Ask(id, {"a.kar", "", "", std::chrono::seconds(90), -2, 0, 100, "Ben", 0});
  }
  evening.rotation.Begin();
  ASSERT_EQ(Inspect(singers::RotationText(evening), "rotation"), ExitCode::Read);
  const auto printed = nlohmann::json::parse(out_.str());
  EXPECT_EQ(printed["rule"], "turns");
  EXPECT_EQ(printed["stage"]["wish"]["key"], -2);
  EXPECT_EQ(printed["singers"][1]["name"], "caf\xC3\xA9");
  EXPECT_EQ(printed["waits"].size(), 1U);
  EXPECT_GT(printed["waits"][0]["most"], 90);
  EXPECT_EQ(Inspect("shopping list", "rotation"), ExitCode::NothingRead);
}

}  // namespace
}  // namespace tools::djinspect
