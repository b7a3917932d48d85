// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Executor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include "support/testing/FakeClock.h"
#include "support/testing/ManualExecutor.h"

namespace support::testing {
namespace {

TEST(Pool, RunsEveryJobOnce) {
  std::atomic<int> ran = 0;
  ThreadPool pool(3);
  for (int i = 0; i < 1000; ++i) pool.Post([&] { ++ran; });
  while (ran < 1000) std::this_thread::yield();
  EXPECT_EQ(ran, 1000);
}

TEST(Pool, OfOneThreadKeepsTheOrder) {
  std::vector<int> order;
  std::promise<void> last;
  ThreadPool pool(1);
  for (int i = 0; i < 100; ++i) pool.Post([&order, i] { order.push_back(i); });
  pool.Post([&] { last.set_value(); });
  last.get_future().wait();
  for (int i = 0; i < 100; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
}

TEST(Pool, DropsAtItsEndWhatHasNotStarted) {
  std::promise<void> running;
  std::promise<void> go_on;
  bool second_ran = false;
  auto second = std::make_shared<int>();
  auto pool = std::make_unique<ThreadPool>(1);
  pool->Post([&] {
    running.set_value();
    go_on.get_future().wait();
  });
  pool->Post([&second_ran, second] { second_ran = true; });
  running.get_future().wait();
  std::thread ending([&] { pool.reset(); });
  while (second.use_count() > 1) std::this_thread::yield();
  go_on.set_value();
  ending.join();
  EXPECT_FALSE(second_ran);
}

/// A job that a dead disk holds, until it is let go.
class StuckJob {
 public:
  explicit StuckJob(Executor& executor) {
    std::promise<void> running;
    executor.Post([&running, go_on = go_on_.get_future().share()] {
      running.set_value();
      go_on.wait();
    });
    running.get_future().wait();
  }
  void LetGo() { go_on_.set_value(); }

 private:
  std::promise<void> go_on_;
};

TEST(Pool, LeavesAStuckJobBehindWhenPatienceEnds) {
  auto pool = std::make_unique<ThreadPool>(2);
  StuckJob stuck(*pool);
  EXPECT_FALSE(pool->Finish(std::chrono::milliseconds(1)));
  pool.reset();
  stuck.LetGo();
}

TEST(Pool, FinishesAtOnceWhenNothingIsStuck) {
  ThreadPool pool(2);
  EXPECT_TRUE(pool.Finish(std::chrono::hours(1)));
  pool.Post([] { FAIL() << "it has ended"; });
}

TEST(Pool, PutsAnotherThreadInThePlaceOfAStuckOne) {
  FakeClock clock;
  ThreadPool pool(1, ThreadPool::StuckJobs::Replace, clock);
  StuckJob stuck(pool);
  std::promise<void> second;
  std::atomic<bool> ran = false;
  pool.Post([&] {
    ran = true;
    second.set_value();
  });
  clock.Advance(ThreadPool::kStuck + std::chrono::seconds(1));
  EXPECT_FALSE(ran);
  pool.Post([] {});
  second.get_future().wait();
  stuck.LetGo();
}

TEST(ByHand, JobsRunWhenTheTestSaysThoseIncludedThatJobsPost) {
  ManualExecutor executor;
  int ran = 0;
  executor.Post([&] {
    ++ran;
    executor.Post([&] { ++ran; });
  });
  EXPECT_EQ(ran, 0);
  executor.RunAll();
  EXPECT_EQ(ran, 2);
  EXPECT_FALSE(executor.RunOne());
}

}  // namespace
}  // namespace support::testing
