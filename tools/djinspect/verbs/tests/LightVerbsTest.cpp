// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "platform/files/testing/TestFolder.h"
#include "support/Text.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

class LightVerbsTest : public ::testing::Test {
 protected:
  /// A file with a line for each word; "_" is an empty one.
  std::string File(std::string_view words) const {
    std::string text;
    for (const std::string_view word : support::Split(words, ' '))
      text.append(word == "_" ? "" : word).append("\r\n");
    folder_.Write("light", text);
    return (folder_ / "light").string();
  }
  ExitCode Inspect(const std::vector<std::string>& arguments) {
    out_.str("");
    err_.str("");
    return djinspect::Run(arguments, out_, err_);
  }
  [[nodiscard]] nlohmann::json Printed() const { return nlohmann::json::parse(out_.str()); }

  platform::files::testing::TestFolder folder_;
  std::ostringstream out_, err_;
};

TEST_F(LightVerbsTest, PrintsAFixtureWithItsProblems) {
  ASSERT_EQ(Inspect({"fixture",
                     File("Caf\xE9 3 1 2 3 1 Channel1 5 Wheel 2 p 0 1 Red 0 127 2.5 x p 6 2 _ 127 254 7 x")}),
            ExitCode::Read);
  const nlohmann::json wanted = {
      {"name", "Caf\xC3\xA9"},
      {"type", 3},
      {"tilt", 1},
      {"pan", 2},
      {"beam", 3},
      {"channels",
       {{{"function", 5},
         {"label", "Wheel"},
         {"presets",
          {{{"effect", 0}, {"picture", 1}, {"name", "Red"}, {"start", 0}, {"end", 127}, {"third", 2.5}},
           {{"effect", 6}, {"picture", 2}, {"name", ""}, {"start", 127}, {"end", 254}, {"third", 7}}}}}}},
      {"problems",
       {"Channel 1: The DMX level for Preset 1 is overlapping with Preset 2!",
        "Channel 1: The DMX level for Preset 2 is overlapping with Preset 1!",
        "Channel 1: Your last Preset must end on 255!",
        "This Fixture doesn't show any light! You must have a Shutter and/or a Dimmer."}}};
  EXPECT_EQ(Printed(), wanted);
  EXPECT_THAT(err_.str(), IsEmpty());
}

const std::string kShow = "1 par.dmx 7 3 1 1 Walk 2 2 1 00:01.5 00:10.0 255 True 0 -9 _ 0 00:00.0 00:00.1";

TEST_F(LightVerbsTest, PrintsAShowAndWritesItAgainByteForByte) {
  const std::string copy = (folder_ / "copy").string();
  ASSERT_EQ(Inspect({"show", File(kShow), "--rewrite", copy}), ExitCode::Read);
  const nlohmann::json wanted = {
      {"fixtures", {{{"filename", "par.dmx"}, {"startChannel", 7}, {"numberOf", 3}}}},
      {"scenes",
       {{{"name", "Walk"},
         {"loops", 2},
         {"length", "00:11.6"},
         {"steps",
          {{{"fadeTime", "00:01.5"},
            {"waitTime", "00:10.0"},
            {"channels", {{{"value", 255}, {"changed", true}, {"dif", 0}, {"prev", -9}}}}},
           {{"fadeTime", "00:00.0"}, {"waitTime", "00:00.1"}, {"channels", nlohmann::json::array()}}}}}}}};
  EXPECT_EQ(Printed(), wanted);
  EXPECT_EQ(folder_.Read("copy"), folder_.Read("light"));
}

TEST_F(LightVerbsTest, AFileThatEndsEarlyIsReadAndANumberThatIsNoneIsNot) {
  EXPECT_EQ(Inspect({"show", File("0 9 9 Only 1 5")}), ExitCode::Read);
  EXPECT_EQ(Printed()["scenes"].size(), 1u);
  EXPECT_THAT(err_.str(), HasSubstr("ends early"));
  EXPECT_EQ(Inspect({"show", File("0 nine")}), ExitCode::NothingRead);
  EXPECT_EQ(Inspect({"fixture", File("a 1 2 3 4 2")}), ExitCode::Read);
  EXPECT_EQ(Printed()["channels"].size(), 2u);
  EXPECT_EQ(Inspect({"fixture", File("a 1 2 3 4 x")}), ExitCode::NothingRead);
  EXPECT_EQ(Inspect({"fixture", "/nowhere"}), ExitCode::NothingRead);
  EXPECT_EQ(Inspect({"fixture"}), ExitCode::WrongUse);
}

TEST_F(LightVerbsTest, PrintsWhatAModeOfSomebodyElsesFixtureBecomes) {
  folder_.Write(
      "sun.qxf",
      "<FixtureDefinition><Manufacturer>Acme</Manufacturer><Model>Sun</Model><Type>Scanner</Type>"
      "<Channel Name=\"D\" Preset=\"IntensityDimmer\"><Capability Min=\"0\" Max=\"99\">On</Capability>"
      "</Channel><Mode Name=\"A\"><Channel Number=\"0\">D</Channel></Mode><Mode Name=\"B\">"
      "<Channel Number=\"0\">D</Channel><Channel Number=\"1\">D</Channel></Mode></FixtureDefinition>");
  const std::string file = (folder_ / "sun.qxf").string();
  ASSERT_EQ(Inspect({"fixture", file, "--import"}), ExitCode::Read);
  const nlohmann::json wanted = {
      {"maker", "Acme"},
      {"model", "Sun"},
      {"modes", {"A", "B"}},
      {"fixture",
       {{"name", "Acme Sun (A)"},
        {"type", 2},
        {"tilt", 0},
        {"pan", 0},
        {"beam", 0},
        {"channels",
         {{{"function", 3},
           {"label", "D"},
           {"presets",
            {{{"effect", 0}, {"picture", 0}, {"name", "On"}, {"start", 0}, {"end", 99}, {"third", 0}},
             {{"effect", 0},
              {"picture", 0},
              {"name", "Not used"},
              {"start", 100},
              {"end", 255},
              {"third", 0}}}}}}},
        {"problems", nlohmann::json::array()}}},
      {"notes", {"Channel 1: levels that nothing describes were closed with ranges that are not used."}}};
  EXPECT_EQ(Printed(), wanted);
  ASSERT_EQ(Inspect({"fixture", file, "--import", "--mode", "B"}), ExitCode::Read);
  EXPECT_EQ(Printed()["fixture"]["channels"].size(), 2u);
  EXPECT_EQ(Inspect({"fixture", file, "--import", "--mode", "C"}), ExitCode::NothingRead);
  EXPECT_THAT(err_.str(), HasSubstr("no mode \"C\""));
  EXPECT_EQ(Inspect({"fixture", File("no fixture"), "--import"}), ExitCode::NothingRead);
  EXPECT_EQ(Inspect({"fixture", file, "--mode", "A"}), ExitCode::WrongUse);
}

}  // namespace
}  // namespace tools::djinspect
