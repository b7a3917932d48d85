// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Two programs on one program folder.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTest>
#include <QTimer>
#include <cstdlib>
#include <future>

#include "platform/files/FolderLock.h"
#include "platform/files/testing/TestFolder.h"
#include "program/OnlyProgram.h"

namespace {

using namespace std::chrono_literals;
using platform::files::testing::TestFolder;
using program::OnlyProgram;

class SecondStart : public ::testing::Test {
 protected:
  SecondStart() { setenv("XDG_CONFIG_HOME", folder_.Path().c_str(), 1); }
  /// Starts beside the one that runs here, whose events go on meanwhile; what the second one came to.
  struct Outcome {
    bool may_run;
    std::string trouble;
  };
  Outcome Start(const std::filesystem::path& folder, std::chrono::milliseconds patience = 5s) {
    auto second = std::async(std::launch::async, [&] {
      const OnlyProgram other(folder, patience);
      return Outcome{other.MayRun(), other.Trouble()};
    });
    while (second.wait_for(0s) != std::future_status::ready) QTest::qWait(5);
    return second.get();
  }
  TestFolder folder_;
};

TEST_F(SecondStart, TheWindowOfTheFirstComesToTheFrontAndTheSecondEndsInSilence) {
  OnlyProgram first(folder_.Path());
  ASSERT_TRUE(first.MayRun());
  int came = 0;
  first.OnAsked([&came] { ++came; });
  for (int start = 1; start <= 2; ++start) {
    const Outcome second = Start(folder_.Path());
    EXPECT_FALSE(second.may_run);
    EXPECT_EQ(second.trouble, "");
    EXPECT_EQ(came, start);
  }
  std::filesystem::create_directory(folder_ / "sub");
  EXPECT_FALSE(Start(folder_ / "sub/..").may_run) << "the same folder by another way";
  EXPECT_TRUE(Start(folder_ / "sub").may_run) << "another folder is another program's";
}

TEST_F(SecondStart, WhoAsksBeforeTheWindowIsThereIsAnsweredWhenItIs) {
  OnlyProgram first(folder_.Path());
  EXPECT_FALSE(Start(folder_.Path()).may_run);
  int came = 0;
  first.OnAsked([&came] { ++came; });
  EXPECT_EQ(came, 1);
}

TEST_F(SecondStart, OneThatIsEndingIsWaitedFor) {
  auto first = platform::files::FolderLock::Take(folder_ / "tlv.lock");  // it answers nobody any more
  QTimer::singleShot(300, [&first] { first = platform::files::FolderHolder{}; });
  EXPECT_TRUE(Start(folder_.Path()).may_run);
}

TEST_F(SecondStart, OneThatHangsIsNamed) {
  const auto first = platform::files::FolderLock::Take(folder_ / "tlv.lock");
  const Outcome second = Start(folder_.Path(), 200ms);
  EXPECT_FALSE(second.may_run);
  EXPECT_TRUE(second.trouble.ends_with("does not answer. Only one can run.")) << second.trouble;
}

}  // namespace

int main(int count, char** arguments) {
  ::testing::InitGoogleTest(&count, arguments);
  const QCoreApplication application(count, arguments);
  return RUN_ALL_TESTS();
}
