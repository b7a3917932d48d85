// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "platform/codec/testing/MediaMaker.h"
#include "tools/djinspect/verbs/DecodingEngine.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using namespace std::chrono_literals;
using platform::codec::testing::Silence;
using platform::codec::testing::Tone;

class DeckVerbsTest : public ::testing::Test {
 protected:
  ExitCode Inspect(const std::vector<std::string>& arguments) {
    out_.str("");
    err_.str("");
    return djinspect::Run(arguments, out_, err_);
  }
  nlohmann::ordered_json Printed() const { return nlohmann::ordered_json::parse(out_.str()); }

  platform::codec::testing::MediaMaker media_;
  std::ostringstream out_, err_;
};

TEST_F(DeckVerbsTest, MixPointsAreBytesAndSeconds) {
  const std::string path = media_.Write("a.wav", Silence(1s) + Tone(2s) + Silence(500ms));
  ASSERT_EQ(Inspect({"mixpoints", path, "--gain-percent", "3"}), ExitCode::Read);
  EXPECT_NEAR(Printed()["startSeconds"].get<double>(), 1, 0.001);
  EXPECT_NEAR(Printed()["endSeconds"].get<double>(), 3, 0.001);
  EXPECT_NEAR(Printed()["startBytes"].get<double>(), 176'400, 20);
  EXPECT_NEAR(Printed()["endBytes"].get<double>(), 3 * 176'400, 20);
  EXPECT_EQ(Printed()["lengthBytes"], 3.5 * 176'400);
  const std::string of_three = out_.str();
  ASSERT_EQ(Inspect({"mixpoints", "--gain-percent", "60", path}), ExitCode::Read);
  EXPECT_NE(out_.str(), of_three);
  ASSERT_EQ(Inspect({"mixpoints", path}), ExitCode::Read);
  EXPECT_EQ(out_.str(), of_three);
}

TEST_F(DeckVerbsTest, MixPointsNeedAFileAndAPercentage) {
  EXPECT_EQ(Inspect({"mixpoints", "gone.mp3", "--gain-percent", "3"}), ExitCode::NothingRead);
  EXPECT_THAT(err_.str(), ::testing::HasSubstr("gone.mp3"));
  for (const char* wrong : {"x", "-1", "101", "3.5", ""}) {
    EXPECT_EQ(Inspect({"mixpoints", "gone.mp3", "--gain-percent", wrong}), ExitCode::WrongUse);
  }
  EXPECT_EQ(Inspect({"mixpoints", "gone.mp3", "--percent", "3"}), ExitCode::WrongUse);
  EXPECT_EQ(Inspect({"mixpoints", "--gain-percent", "3"}), ExitCode::WrongUse);
  EXPECT_THAT(err_.str(), ::testing::HasSubstr("djinspect mixpoints FILE"));
}

TEST_F(DeckVerbsTest, AnAnalysisTellsBeatsLoudnessAndMixPoints) {
  const std::string path = media_.Write("a.flac", Silence(1s) + Tone(4s) + Silence(1s));
  ASSERT_EQ(Inspect({"analyse", path}), ExitCode::Read);
  const nlohmann::ordered_json told = Printed();
  std::vector<std::string> keys;
  for (const auto& item : told.items()) keys.push_back(item.key());
  EXPECT_THAT(keys,
              ::testing::ElementsAre("bpm", "confidence", "beats", "loudness", "truePeak", "startSeconds",
                                     "endSeconds", "key", "keyConfidence", "downbeats", "sections"));
  EXPECT_NEAR(told["startSeconds"].get<double>(), 1, 0.001);
  EXPECT_NEAR(told["endSeconds"].get<double>(), 5, 0.001);
  EXPECT_LT(told["loudness"].get<double>(), told["truePeak"].get<double>());
  EXPECT_EQ(told["key"], "") << "a single tone";
  EXPECT_TRUE(told["downbeats"].empty() && told["sections"].empty());
  ASSERT_EQ(Inspect({"analyse", media_.Write("silent.wav", Silence(2s))}), ExitCode::Read);
  EXPECT_EQ(Printed()["key"], "");
  EXPECT_EQ(Printed()["keyConfidence"], 0);
  EXPECT_EQ(Printed()["bpm"], nullptr);
  EXPECT_EQ(Printed()["loudness"], nullptr);
  EXPECT_EQ(Printed()["beats"], nlohmann::ordered_json::array());
  EXPECT_EQ(Inspect({"analyse", media_.Text("notes.mp3")}), ExitCode::NothingRead);
  EXPECT_NE(err_.str(), "");
  EXPECT_EQ(Inspect({"analyse"}), ExitCode::WrongUse);
}

TEST_F(DeckVerbsTest, WhatADeckRefusesIsRefusedWithItsSentence) {
  const std::string whole = media_.Write("whole.mp3", Tone(1s));
  for (const std::string& path :
       {media_.Text("notes.mp3"), media_.Empty("empty.ogg"), media_.Write("nothing.wav", Silence(0s)),
        media_.FirstBytes(whole, "head.mp3", 40), media_.PathOf("gone.flac"), media_.PathOf("")}) {
    DecodingEngine deck;
    const auto prepared = deck.Prepare(path);
    ASSERT_FALSE(prepared) << path;
    for (const char* verb : {"analyse", "mixpoints"}) {
      EXPECT_EQ(Inspect({verb, path}), ExitCode::NothingRead) << verb << ' ' << path;
      EXPECT_EQ(err_.str(), prepared.Failure().text + "\n") << verb;
    }
  }
}

TEST_F(DeckVerbsTest, GainIsReadWhateverTheLineEnds) {
  for (const std::string end : {"\r\n", "\n", "\r"}) {
    const std::string path = media_.WriteBytes(
        "gain.txt", "File\tMP3 gain\tdB gain\tMax Amplitude\tMax global_gain\tMin global_gain" + end +
                        "a.mp3\t2\t3.7\t3899.187\t152\t127" + end);
    ASSERT_EQ(Inspect({"mp3gain", path}), ExitCode::Read);
    EXPECT_EQ(out_.str(),
              "{\n  \"RadiodBGain\": 3.7,\n  \"CurrMaxAmp\": 3899.187,\n  \"CurrMaxGain\": 152,\n"
              "  \"CurrMinGain\": 127\n}\n");
  }
}

TEST_F(DeckVerbsTest, AnOutputWithoutAGainEndsWithOne) {
  EXPECT_EQ(Inspect({"mp3gain", media_.WriteBytes("gain.txt", "a.mp3 is no mp3 file\n")}),
            ExitCode::NothingRead);
  EXPECT_EQ(Inspect({"mp3gain", media_.PathOf("gone.txt")}), ExitCode::NothingRead);
}

TEST_F(DeckVerbsTest, PresetsAreNamesWithTenNumbers) {
  const std::string path =
      media_.WriteBytes("EQ.tlv", "[Caf\xE9]\r\n1;2;3;4;5;6;7;8;9;-10;\r\n[Short]\r\n1;\r\n[End]");
  ASSERT_EQ(Inspect({"presets", path}), ExitCode::Read);
  EXPECT_EQ(Printed().size(), 2U);
  EXPECT_EQ(Printed()[0]["name"], "Caf\xC3\xA9");
  EXPECT_EQ(Printed()[0]["values"], (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, -10}));
  EXPECT_EQ(Printed()[1]["values"], (std::vector<int>{1, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(DeckVerbsTest, AnEmptyPresetFileIsAnEmptyListAndAMissingOneEndsWithOne) {
  EXPECT_EQ(Inspect({"presets", media_.WriteBytes("EQ.tlv", "")}), ExitCode::Read);
  EXPECT_EQ(Printed(), nlohmann::ordered_json::array());
  EXPECT_EQ(Inspect({"presets", media_.PathOf("gone.tlv")}), ExitCode::NothingRead);
}

}  // namespace
}  // namespace tools::djinspect
