// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "karaoke/testing/DiscBytes.h"
#include "platform/codec/testing/MediaMaker.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using karaoke::testing::DiscBytes;

class DiscVerbTest : public ::testing::Test {
 protected:
  nlohmann::json Inspect(const DiscBytes& bytes) {
    const auto& content = bytes.Content();
    const std::string path = media_.WriteBytes("a.cdg", std::string(content.begin(), content.end()));
    std::ostringstream out;
    exit_ = djinspect::Run(std::vector<std::string>{"cdg", path}, out, err_);
    return out.str().empty() ? nlohmann::json() : nlohmann::json::parse(out.str());
  }

  platform::codec::testing::MediaMaker media_;
  std::ostringstream err_;
  ExitCode exit_ = ExitCode::Read;
};

TEST_F(DiscVerbTest, ADiscIsToldWhole) {
  DiscBytes disc;
  disc.Colours(0, {0, 0, 0xF80, 0, 0, 0, 0, 0}).Until(3).Clear(2).Clear(2, 1).Packet(5, {}).Until(4);
  nlohmann::json told = Inspect(disc);
  const auto picture = told["lastPicture"];
  told.erase("lastPicture");
  EXPECT_EQ(told, nlohmann::json::parse(R"({"packets": 1200, "seconds": 4.0, "unknown": 1,
                                            "graphicsEnd": 3.0, "background": "#ff8800"})"));
  EXPECT_EQ(Inspect(disc.Until(5))["lastPicture"], picture);
  EXPECT_NE(Inspect(disc.Draw(5, 5, 2, 1, {1}))["lastPicture"], picture);
  EXPECT_EQ(exit_, ExitCode::Read);
}

TEST_F(DiscVerbTest, WhatIsNoDiscIsSaid) {
  EXPECT_TRUE(Inspect(DiscBytes().Until(1)).empty());
  EXPECT_EQ(exit_, ExitCode::NothingRead);
  EXPECT_EQ(err_.str(), "The disc image of a.cdg holds no graphics.\n");
  EXPECT_TRUE(Inspect(DiscBytes()).empty());
  EXPECT_EQ(exit_, ExitCode::NothingRead);
}

}  // namespace
}  // namespace tools::djinspect
