// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "karaoke/testing/MidiBytes.h"
#include "platform/codec/testing/MediaMaker.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using karaoke::testing::FileBytes;
using karaoke::testing::TrackBytes;
using karaoke::testing::UsualHead;

class KaraokeVerbTest : public ::testing::Test {
 protected:
  nlohmann::json Inspect(const std::string& bytes) {
    std::ostringstream out, err;
    exit_ = djinspect::Run(std::vector<std::string>{"karaoke", media_.WriteBytes("a.kar", bytes)}, out, err);
    told_ = err.str();
    return out.str().empty() ? nlohmann::json() : nlohmann::json::parse(out.str());
  }

  platform::codec::testing::MediaMaker media_;
  std::string told_;  ///< of what went wrong
  ExitCode exit_ = ExitCode::Read;
};

TEST_F(KaraokeVerbTest, ASongIsToldWhole) {
  const TrackBytes words = TrackBytes()
                               .Name("Words")
                               .Text(0, "@TOne")
                               .Text(0, "@TTwo")
                               .Text(0, "@GPop")
                               .Text(480, "\\Caf\xE9")
                               .End();
  EXPECT_EQ(Inspect(FileBytes({UsualHead().End(), words})), nlohmann::json::parse(R"({
    "isLyric": true, "titles": "One\r\nTwo", "genre": "Pop", "timeSignature": "4/4", "tempo": 500000,
    "midiBPM": 120.0, "quarterNote": 480, "textLyric": "   \r\nCafé", "lines": ["   ", "Café"],
    "syllables": [{"ms": 500.0, "line": 1, "text": "Café"}]})"));
  EXPECT_EQ(exit_, ExitCode::Read);
}

TEST_F(KaraokeVerbTest, WhatIsUnsetIsAbsent) {
  EXPECT_EQ(Inspect(FileBytes({TrackBytes().Signature(3, 0).End()})),
            nlohmann::json::parse(R"({"isLyric": false, "timeSignature": "3/0"})"));
  EXPECT_EQ(Inspect(FileBytes({})), nlohmann::json::parse(R"({"isLyric": false})"));
  EXPECT_EQ(exit_, ExitCode::Read);
}

TEST_F(KaraokeVerbTest, WhatIsNoMidiFileIsSaidToBeNone) {
  const std::string picture = "\xFF\xD8\xFF\xE0 JFIF \xFF\x58 12 \xFF\x51 123 @T";
  for (const std::string& bytes : {std::string(), std::string("no song"), picture}) {
    EXPECT_TRUE(Inspect(bytes).empty()) << bytes;
    EXPECT_EQ(exit_, ExitCode::NothingRead) << bytes;
    EXPECT_EQ(std::count(told_.begin(), told_.end(), '\n'), 1) << told_;
  }
}

}  // namespace
}  // namespace tools::djinspect
