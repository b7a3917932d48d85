// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/EndRequests.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <future>

namespace platform::files {
namespace {

using namespace std::chrono_literals;
using ::testing::ExitedWithCode;
using ::testing::KilledBySignal;

constexpr EndRequests::Patience kShort{300ms, 100ms, 200ms};
constexpr EndRequests::Patience kLong{60s, 100ms, 200ms};

void Nothing() {}

/// Each case is a process of its own, which the signals are sent to.
class EndRequestsProcess : public ::testing::Test {
 protected:
  EndRequestsProcess() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(EndRequestsProcess, EachSignalAsksOnceAndTheProgramEndsItself) {
  for (const int number : {SIGTERM, SIGHUP, SIGINT}) {
    EXPECT_EXIT(
        {
          std::promise<void> asked;
          {
            const EndRequests requests([&] { asked.set_value(); }, &std::abort, kLong);
            raise(number);
            asked.get_future().wait();
          }
          std::_Exit(7);
        },
        ExitedWithCode(7), "");
  }
}

TEST_F(EndRequestsProcess, AProgramThatDoesNotEndIsEndedByTheLastResort) {
  EXPECT_EXIT(
      {
        const EndRequests requests(
            &Nothing, [] { std::fputs("dark", stderr); }, kShort);
        raise(SIGTERM);
        while (true) pause();
      },
      ExitedWithCode(128 + SIGTERM), "dark");
}

TEST_F(EndRequestsProcess, AFurtherSignalShortensTheWaitAndALastResortThatHangsHoldsNothingUp) {
  EXPECT_EXIT(
      {
        std::promise<void> asked;
        const EndRequests requests([&] { asked.set_value(); },
                                   [] {
                                     while (true) pause();
                                   },
                                   kLong);
        raise(SIGINT);
        asked.get_future().wait();
        raise(SIGTERM);
        while (true) pause();
      },
      ExitedWithCode(128 + SIGINT), "");
}

TEST_F(EndRequestsProcess, ASignalThatWasIgnoredStaysSoAndAfterwardsAllAreAsBefore) {
  EXPECT_EXIT(
      {
        signal(SIGHUP, SIG_IGN);  // as nohup does
        {
          const EndRequests requests(&std::abort, &std::abort, kShort);
          raise(SIGHUP);
        }
        raise(SIGTERM);
      },
      KilledBySignal(SIGTERM), "");
}

}  // namespace
}  // namespace platform::files
