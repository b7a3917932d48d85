// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

class BankVerbTest : public ::testing::Test {
 protected:
  BankVerbTest() { std::ofstream(path_) << "[1]\r\n1:0:0\r\n0:300:1\r\n[2]\r\n1\r\n"; }
  ~BankVerbTest() override { std::filesystem::remove(path_); }

  ExitCode Inspect(std::vector<std::string> options) {
    out_.str("");
    options.insert(options.begin(), {"bank", path_});
    return djinspect::Run(options, out_, err_);
  }
  nlohmann::json Printed() const { return nlohmann::json::parse(out_.str()); }

  std::string path_ = ::testing::TempDir() + "/bank-verb.txt";
  std::ostringstream out_, err_;
};

TEST_F(BankVerbTest, ShowsRowsAndWhatIsPlayed) {
  ASSERT_EQ(Inspect({"--number", "1", "--outputs", "8", "--play", "3"}), ExitCode::Read);
  EXPECT_EQ(Printed()["rows"],
            nlohmann::json::parse("[[1,0,0,0,0,0,0,0],[0,300,1,0,0,0,0,0],[0,0,0,0,0,0,0,0]]"));
  EXPECT_EQ(Printed()["played"], nlohmann::json::parse("[[1,0],[4,0],[1,0]]"));
  ASSERT_EQ(Inspect({"--side", "dac", "--number", "2", "--outputs", "16", "--play", "1"}), ExitCode::Read);
  EXPECT_EQ(Printed()["played"], nlohmann::json::parse("[[1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0]]"));
}

TEST_F(BankVerbTest, AMissingBankIsEmptyAndWrongUseIsTold) {
  ASSERT_EQ(Inspect({"--number", "9", "--outputs", "8", "--play", "3"}), ExitCode::Read);
  EXPECT_EQ(Printed(), nlohmann::json::parse(R"({"rows":[],"played":[]})"));
  EXPECT_EQ(Inspect({"--number", "1"}), ExitCode::WrongUse);
  EXPECT_EQ(Inspect({"--number", "1", "--outputs", "12"}), ExitCode::WrongUse);
  EXPECT_EQ(Inspect({"--number", "1", "--outputs", "8", "--side", "x"}), ExitCode::WrongUse);
}

TEST_F(BankVerbTest, MemoriesAreShownAsTheyAreRecalled) {
  std::ofstream(path_) << "[K80 slow]\r\nBEAT\r\n50\r\n1\r\n[no memory]\r\nx\r\n[K80]\r\n";
  ASSERT_EQ(djinspect::Run(std::vector<std::string>{"memories", path_, "--outputs", "8"}, out_, err_),
            ExitCode::Read);
  ASSERT_EQ(Printed().size(), 2U);
  EXPECT_EQ(Printed()[0]["name"], "K80 slow");
  EXPECT_EQ(Printed()[0]["io"],
            nlohmann::json::parse(R"({"mode":"BEAT","speed":50,"levels":[1,0,0,0,0,0,0,0]})"));
  EXPECT_EQ(Printed()[1], nlohmann::json::parse(R"({"name":"K80"})"));
  EXPECT_EQ(djinspect::Run(std::vector<std::string>{"memories", path_}, out_, err_), ExitCode::WrongUse);
}

}  // namespace
}  // namespace tools::djinspect
