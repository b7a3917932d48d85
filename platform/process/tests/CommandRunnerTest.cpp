// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <functional>
#include <memory>

#include "decks/GainAnalysis.h"
#include "decks/testing/FakeCommandRunner.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/process/basCommandOutput.h"

namespace platform::process {
namespace {

using namespace std::chrono_literals;
using Made = std::function<std::unique_ptr<decks::CommandRunner>()>;

std::unique_ptr<decks::CommandRunner> MakeFake() {
  auto fake = std::make_unique<decks::testing::FakeCommandRunner>();
  fake->Add("printf", "a\tb\nc\n");
  fake->Add("true", "");
  return fake;
}

/// What the port promises, of the real runner and of the fake.
class CommandRunnerTest : public ::testing::TestWithParam<Made> {};

TEST_P(CommandRunnerTest, LineEndsAreHandedOverAsCrLf) {
  const auto text = GetParam()()->Run({"printf", {"a\\tb\\nc\\n"}});
  ASSERT_TRUE(text);
  EXPECT_EQ(text.Value(), "a\tb\r\nc\r\n");
}

TEST_P(CommandRunnerTest, AProgramMayPrintNothing) {
  const auto text = GetParam()()->Run({"true", {}});
  ASSERT_TRUE(text);
  EXPECT_EQ(text.Value(), "");
}

TEST_P(CommandRunnerTest, AMissingProgramIsNotFound) {
  const auto text = GetParam()()->Run({"no-such-program-here", {}});
  ASSERT_FALSE(text);
  EXPECT_EQ(text.Failure().code, support::ErrorCode::NotFound);
  EXPECT_THAT(text.Failure().text, ::testing::HasSubstr("no-such-program-here"));
}

INSTANTIATE_TEST_SUITE_P(Runners, CommandRunnerTest,
                         ::testing::Values(Made([] { return std::make_unique<basCommandOutput>(); }),
                                           Made(MakeFake)));

support::Result<std::string> Shell(const std::string& script, std::chrono::milliseconds limit = 10s) {
  return basCommandOutput().Run({"sh", {"-c", script}, limit});
}

TEST(basCommandOutputTest, ArgumentsReachTheProgramAsTheyAre) {
  const auto text = basCommandOutput().Run({"printf", {"%s", "a b \"c\" $HOME ; * '\xE9"}});
  EXPECT_EQ(text.Value(), "a b \"c\" $HOME ; * '\xE9");
}

TEST(basCommandOutputTest, EveryKindOfLineEndBecomesOneCrLf) {
  EXPECT_EQ(Shell("printf 'a\\r\\nb\\rc\\n\\nd'").Value(), "a\r\nb\r\nc\r\n\r\nd");
}

TEST(basCommandOutputTest, OnlyTheStandardOutputIsCaughtWhateverTheStatus) {
  EXPECT_EQ(Shell("echo heard; echo dropped >&2; exit 3").Value(), "heard\r\n");
}

TEST(basCommandOutputTest, TheProgramReadsNothing) {
  EXPECT_EQ(Shell("cat; echo end").Value(), "end\r\n");
}

TEST(basCommandOutputTest, AProgramThatTakesTooLongIsEndedWithWhatItStarted) {
  for (const char* script :
       {"sleep 60", "sleep 60 & sleep 60; true", "exec >&-; sleep 60", "trap '' TERM; sleep 60"}) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(Shell(script, 100ms)) << script;
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 20s);
  }
}

TEST(basCommandOutputTest, AProgramThatPrintsTooMuchIsEnded) {
  const auto text = Shell("yes");
  ASSERT_FALSE(text);
  EXPECT_THAT(text.Failure().text, ::testing::HasSubstr("printed too much"));
}

TEST(basCommandOutputTest, NothingIsLeftBehind) {
  static_cast<void>(Shell("echo a"));
  static_cast<void>(Shell("sleep 60", 50ms));
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST(basCommandOutputTest, AWordWithANulIsRefused) {
  EXPECT_FALSE(basCommandOutput().Run({"echo", {std::string("a\0b", 3)}}));
  EXPECT_FALSE(basCommandOutput().Run({"", {}}));
}

/// The analyser itself, from wherever the system has it.
TEST(GainOfAFile, IsWhatMp3gainFinds) {
  const codec::testing::MediaMaker media;
  basCommandOutput runner;
  decks::GainAnalysis analysis(runner, support::ProgramFolder(media.PathOf("")));
  const auto gain = [&](std::string_view name, double level) {
    decks::clsMp3Info info;
    const std::string path = media.Write(name, codec::testing::Tone(3s, {440, level}));
    EXPECT_TRUE(analysis.Analyse(path, info)) << path;
    EXPECT_NEAR(info.CurrMaxAmp, level * 32768, 0.1 * level * 32768);
    return info.RadiodBGain;
  };
  EXPECT_NEAR(gain("soft \"song\" $1.mp3", 0.1) - gain("loud one.mp3", 0.4), 12.04, 0.2);
}

TEST(GainOfAFile, ThatIsNoMp3LeavesTheRecordReset) {
  const codec::testing::MediaMaker media;
  basCommandOutput runner;
  decks::GainAnalysis analysis(runner, support::ProgramFolder(media.PathOf("")));
  decks::clsMp3Info info;
  EXPECT_FALSE(analysis.Analyse(media.PathOf("gone.mp3"), info));
  EXPECT_EQ(analysis.Query(media.Random("noise.mp3", 9999), info), "89.0");
}

}  // namespace
}  // namespace platform::process
