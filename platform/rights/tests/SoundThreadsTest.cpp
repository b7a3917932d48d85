// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/rights/SoundThreads.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <thread>

#include "platform/rights/testing/FakeKit.h"

namespace platform::rights {
namespace {

using namespace std::chrono_literals;
using Duty = SoundThreads::Duty;
using Level = app::SoundPriority::Level;
using testing::FakeKit;
using testing::PrivateBus;
using Asked = FakeKit::Asked;
using SteadyClock = std::chrono::steady_clock;

bool IsRealTime(pid_t thread) {
  const int policy = sched_getscheduler(thread) & ~SCHED_RESET_ON_FORK;
  return policy == SCHED_FIFO || policy == SCHED_RR;
}

/// A thread that carries sound, so to say, until this object ends.
class SoundThread {
 public:
  SoundThread(SoundThreads& rights, Duty duty)
      : thread_([this, &rights, duty] {
          rights.Join(duty);
          support::MutexLock lock(mutex_);
          id_ = gettid();
          changed_.notify_all();
          while (!ending_) lock.Wait(changed_);
        }) {
    support::MutexLock lock(mutex_);
    while (id_ == 0) lock.Wait(changed_);
  }
  ~SoundThread() {
    {
      support::MutexLock lock(mutex_);
      ending_ = true;
    }
    changed_.notify_all();
    thread_.join();
  }
  [[nodiscard]] pid_t Id() {
    support::MutexLock lock(mutex_);
    return id_;
  }

 private:
  support::Mutex mutex_;
  std::condition_variable changed_;
  pid_t id_ DJ_GUARDED_BY(mutex_) = 0;
  bool ending_ DJ_GUARDED_BY(mutex_) = false;
  std::thread thread_;
};

const Asked* Of(const std::vector<Asked>& asked, pid_t thread) {
  const auto found =
      std::find_if(asked.rbegin(), asked.rend(), [&](const Asked& one) { return one.thread == thread; });
  return found == asked.rend() ? nullptr : &*found;
}

bool Eventually(const std::function<bool()>& holds) {
  for (const auto until = SteadyClock::now() + 10s; SteadyClock::now() < until; std::this_thread::yield()) {
    if (holds()) return true;
  }
  return false;
}

class SoundThreadsAtAKit : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(bus_.Address(), "") << "dbus-daemon is needed"; }
  SoundThreads::Options AtTheBus(std::chrono::milliseconds look = 60s) const {
    return {.bus = bus_.Address(), .by_ourselves = false, .look = look};
  }

  PrivateBus bus_;
};

TEST_F(SoundThreadsAtAKit, AreAskedForWithinItsLimitsTheCallbackBeforeTheFeeder) {
  FakeKit kit(bus_.Address(), {});
  SoundThreads rights(AtTheBus());
  SoundThread callback(rights, Duty::Callback), feeder(rights, Duty::Feeding), timing(rights, Duty::Timing);
  ASSERT_TRUE(kit.Await([&](const auto& asked) {
    return Of(asked, callback.Id()) && Of(asked, feeder.Id()) && Of(asked, timing.Id());
  }));
  kit.Await([&](const std::vector<Asked>& asked) {
    const Asked &first = *Of(asked, callback.Id()), &second = *Of(asked, feeder.Id());
    EXPECT_TRUE(first.real_time && second.real_time);
    EXPECT_GT(first.level, second.level);
    EXPECT_GE(second.level, 1);
    EXPECT_LE(first.level, 20);
    EXPECT_LE(first.hard_us, 200'000);
    EXPECT_LT(first.soft_us, first.hard_us) << "a warning comes before the end";
    EXPECT_GT(first.soft_us, 0);
    EXPECT_FALSE(Of(asked, timing.Id())->real_time);
    EXPECT_GE(Of(asked, timing.Id())->level, -15);
    return true;
  });
}

TEST_F(SoundThreadsAtAKit, AKitWithLowLimitsIsAskedForNoMore) {
  FakeKit kit(bus_.Address(), {.priority = 2, .time_us = 50'000, .nice = -3});
  SoundThreads rights(AtTheBus());
  SoundThread callback(rights, Duty::Callback), timing(rights, Duty::Timing);
  EXPECT_TRUE(kit.Await([&](const auto& asked) {
    const Asked *first = Of(asked, callback.Id()), *second = Of(asked, timing.Id());
    return first && second && first->level == 2 && first->hard_us <= 50'000 && second->level == -3;
  }));
}

TEST_F(SoundThreadsAtAKit, ARefusalIsKnownAndTheLesserRightIsAskedFor) {
  FakeKit kit(bus_.Address(), {.grants = false});
  SoundThreads rights(AtTheBus());
  EXPECT_EQ(rights.Now(), Level::Asked) << "nobody plays yet";
  SoundThread callback(rights, Duty::Callback);
  ASSERT_TRUE(kit.Await(
      [&](const auto& asked) { return asked.size() == 2 && asked[0].real_time && !asked[1].real_time; }));
  EXPECT_TRUE(Eventually([&] { return rights.Now() == Level::Normal; }));
}

TEST_F(SoundThreadsAtAKit, AThreadThatHoldsAProcessorTooLongLosesItsRightsAndGetsThemAgain) {
  if (geteuid() != 0) return;  // the fake kit may not give what it grants
  FakeKit kit(bus_.Address(), {.time_us = 60'000});
  SoundThreads rights(AtTheBus(100ms));
  std::atomic<bool> greedy{true}, started{false}, lost{false};
  std::thread thread([&] {
    rights.Join(Duty::Feeding);
    const pid_t id = gettid();
    while (!IsRealTime(id)) sched_yield();
    started = true;
    const auto until = SteadyClock::now() + 2s;
    while (IsRealTime(id) && SteadyClock::now() < until) {
    }
    lost = !IsRealTime(id);
    greedy.wait(true);
  });
  EXPECT_TRUE(Eventually([&] { return lost.load(); })) << "and the process is alive";
  EXPECT_TRUE(Eventually([&] { return rights.Now() == Level::RealTime; }));
  greedy = false;
  greedy.notify_all();
  thread.join();
}

TEST_F(SoundThreadsAtAKit, AThreadThatEndedIsForgotten) {
  FakeKit kit(bus_.Address(), {.grants = false});
  SoundThreads rights(AtTheBus());
  { SoundThread callback(rights, Duty::Callback); }
  EXPECT_EQ(rights.Now(), Level::Asked);
}

TEST_F(SoundThreadsAtAKit, ABusThatHangsHoldsNobodyUp) {
  bus_.Freeze();
  const auto begin = SteadyClock::now();
  {
    SoundThreads rights(AtTheBus());
    SoundThread callback(rights, Duty::Callback);
    EXPECT_LT(SteadyClock::now() - begin, 1s);
  }
  EXPECT_LT(SteadyClock::now() - begin, 5s);
}

TEST(SoundThreadsAlone, WithoutABusTheyHaveWhatTheUserMayTake) {
  SoundThreads rights({.bus = "unix:path=/nonexistent/bus"});
  SoundThread callback(rights, Duty::Callback);
  EXPECT_TRUE(Eventually([&] { return rights.Now() != Level::Asked; }));
  EXPECT_EQ(rights.Now() == Level::RealTime, IsRealTime(callback.Id()));
  EXPECT_FALSE(IsRealTime(gettid())) << "other threads stay as they are";
}

}  // namespace
}  // namespace platform::rights
