// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/RealtimeScope.h"

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <thread>

#include "support/testing/RealtimeGuard.h"

namespace support::testing {
namespace {

TEST(Realtime, ScopesNestAndBelongToTheirThread) {
  EXPECT_FALSE(RealtimeScope::Active());
  const RealtimeScope outer;
  { const RealtimeScope inner; }
  EXPECT_TRUE(RealtimeScope::Active());
}

TEST(Realtime, AnotherThreadIsNotInTheScope) {
  bool active = true;
  std::thread other([&] { active = RealtimeScope::Active(); });
  other.join();
  EXPECT_FALSE(active);
}

/// Kept out of the optimiser's sight, which may leave out memory that nobody uses.
int* volatile seen;

TEST(RealtimeDeathTest, MemoryAndLocksInsideAScopeEndTheProgram) {
  if (!RealtimeGuardWorks()) return;  // a sanitizer brings its own allocator
  std::mutex mutex;
  const auto take_memory = [] {
    const RealtimeScope realtime;
    seen = new int(1);
  };
  const auto give_memory_back = [] {
    seen = new int(1);
    const RealtimeScope realtime;
    delete seen;
  };
  const auto lock = [&] {
    const RealtimeScope realtime;
    mutex.lock();
  };
  EXPECT_EQ(CountRealtimeFaults(take_memory), 1);
  EXPECT_DEATH(take_memory(), "malloc was called inside an audio callback");
  EXPECT_DEATH(give_memory_back(), "free was called inside an audio callback");
  EXPECT_DEATH(lock(), "pthread_mutex_lock was called inside an audio callback");
}

}  // namespace
}  // namespace support::testing
