// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <thread>

#include "support/HistoryRing.h"
#include "support/SpscRing.h"
#include "support/TripleBuffer.h"

namespace support::testing {
namespace {

struct Pair {
  std::int64_t a = 0;
  std::int64_t b = 0;
};

TEST(Ring, RefusesMoreThanItHolds) {
  SpscRing<int, 4> ring;
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(ring.Push(i));
  EXPECT_FALSE(ring.Push(4));
  EXPECT_EQ(ring.Back(), nullptr);
  int value = -1;
  EXPECT_TRUE(ring.Pop(value));
  EXPECT_EQ(value, 0);
  EXPECT_TRUE(ring.Push(4));
  EXPECT_EQ(ring.Size(), 4U);
}

TEST(Ring, GivesNothingWhenEmpty) {
  SpscRing<int, 4> ring;
  int value = 7;
  EXPECT_FALSE(ring.Pop(value));
  EXPECT_EQ(value, 7);
  EXPECT_EQ(ring.Front(), nullptr);
  EXPECT_TRUE(ring.Empty());
}

TEST(Ring, KeepsTheOrderBetweenTwoThreads) {
  constexpr int kCount = 100'000;
  SpscRing<int, 64> ring;
  std::thread pusher([&] {
    for (int i = 0; i < kCount; ++i) {
      while (!ring.Push(i)) std::this_thread::yield();
    }
  });
  for (int expected = 0; expected < kCount;) {
    int value = -1;
    if (!ring.Pop(value)) {
      std::this_thread::yield();
      continue;
    }
    ASSERT_EQ(value, expected++);
  }
  pusher.join();
}

TEST(History, KeepsTheLastEntriesAndForgetsTheRest) {
  HistoryRing<Pair, 4> history;
  EXPECT_FALSE(history.Newest().has_value());
  for (std::int64_t i = 0; i < 6; ++i) history.Write({i, -i});
  EXPECT_EQ(history.Written(), 6U);
  EXPECT_EQ(history.Newest()->a, 5);
  EXPECT_EQ(history.Read(2)->b, -2);
  EXPECT_FALSE(history.Read(1).has_value());
  EXPECT_FALSE(history.Read(6).has_value());
}

TEST(History, NeverShowsHalfAnEntry) {
  HistoryRing<Pair, 4> history;
  std::thread writer([&] {
    for (std::int64_t i = 0; i < 200'000; ++i) history.Write({i, -i});
  });
  while (history.Written() < 200'000) {
    const auto entry = history.Newest();
    ASSERT_EQ(entry ? entry->a + entry->b : 0, 0);
  }
  writer.join();
}

TEST(Triple, GivesTheNewestAndKeepsItUntilThereIsANewerOne) {
  TripleBuffer<int> buffer;
  buffer.Write(1);
  buffer.Write(2);
  EXPECT_EQ(buffer.Read(), 2);
  EXPECT_EQ(buffer.Read(), 2);
  buffer.Write(3);
  EXPECT_EQ(buffer.Read(), 3);
}

TEST(Triple, NeverShowsHalfAValueNorAnOlderOne) {
  TripleBuffer<std::array<int, 64>> buffer;
  constexpr int kLast = 50'000;
  std::thread writer([&] {
    for (int i = 1; i <= kLast; ++i) {
      buffer.Draft().fill(i);
      buffer.Publish();
    }
  });
  for (int last = 0; last < kLast;) {
    const auto& value = buffer.Read();
    ASSERT_EQ(value.front(), value.back());
    ASSERT_GE(value.front(), last);
    last = value.front();
  }
  writer.join();
}

}  // namespace
}  // namespace support::testing
