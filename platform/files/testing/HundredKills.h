// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <functional>
#include <random>
#include <string_view>
#include <vector>

#include "platform/files/testing/FaultyDisk.h"
#include "platform/files/testing/TestFolder.h"

namespace platform::files::testing {

/// Kills a program that saves one file after another a hundred times: by turns while it writes, while it
/// flushes and while it swaps in, each time before or after one of the calls. The job runs in a process of
/// its own until it is killed; the check looks at what is left.
inline void KillHundredTimes(std::size_t most_bytes_a_write, int writes_a_save,
                             const std::function<void(FaultyDisk&)>& job,
                             const std::function<void(const Death&)>& check) {
  constexpr int kKills = 100;
  constexpr int kSaves = 3;
  static const std::array<std::vector<std::string_view>, 3> kPhases{
      {{"Create", "Write", "Write", "Write"}, {"CopyRights", "Sync"}, {"Rename", "SyncFolder"}}};
  std::mt19937 seed(1);
  const auto below = [&seed](std::size_t end) {
    return std::uniform_int_distribution<std::size_t>(0, end - 1)(seed);
  };
  for (int kill = 0; kill < kKills; ++kill) {
    const auto& phase = kPhases[static_cast<std::size_t>(kill) % kPhases.size()];
    Death death{std::string(phase[below(phase.size())]), 1, below(2) == 0 ? Death::Before : Death::After};
    const int times = death.call == "Write" ? kSaves * writes_a_save : kSaves;
    death.nth += static_cast<int>(below(static_cast<std::size_t>(times)));
    SCOPED_TRACE((death.moment == Death::Before ? "before " : "after ") + death.call + " " +
                 std::to_string(death.nth));
    const int signal = RunInChild([&] {
      FaultyDisk disk(most_bytes_a_write);
      disk.DieAt(death);
      job(disk);
    });
    ASSERT_EQ(signal, SIGKILL);
    check(death);
    if (::testing::Test::HasFatalFailure()) return;
  }
}

}  // namespace platform::files::testing
