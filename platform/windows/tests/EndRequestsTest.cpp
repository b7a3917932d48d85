// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/EndRequests.h"

#include <gtest/gtest.h>
#include <windows.h>
#undef DrawText  // the sources beside this one mean their own

#include <cstdlib>
#include <future>
#include <thread>

namespace platform::files {
namespace {

TEST(EndRequests, TheEndOfTheSessionAsksAndWaitsForTheProgramsEnd) {
  std::promise<void> asked;
  std::thread system;
  {
    const EndRequests requests([&] { asked.set_value(); }, &std::abort);
    const HWND window = FindWindowW(L"djTolvenEndOfSession", nullptr);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), TRUE);
    EXPECT_EQ(SendMessageW(window, WM_ENDSESSION, FALSE, 0), 0) << "another program refused";
    system = std::thread([window] { SendMessageW(window, WM_ENDSESSION, TRUE, 0); });
    asked.get_future().wait();
  }
  system.join();
  EXPECT_EQ(FindWindowW(L"djTolvenEndOfSession", nullptr), nullptr);
}

}  // namespace
}  // namespace platform::files
