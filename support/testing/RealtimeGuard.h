// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define DJ_SANITIZER_ALLOCATES 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define DJ_SANITIZER_ALLOCATES 1
#endif
#if defined(__linux__) && !defined(DJ_SANITIZER_ALLOCATES)
#define DJ_REALTIME_GUARD 1
#else
#define DJ_REALTIME_GUARD 0
#endif

namespace support::testing {

/// True where memory and locks inside a RealtimeScope end the program; false under a sanitizer, which brings
/// an allocator of its own. Calling it links the guard into the program.
[[nodiscard]] bool RealtimeGuardWorks();

/// Runs the work and counts the calls that would have ended the program; 0 where the guard does not work.
/// Threads: one at a time; what other threads do meanwhile is counted too.
[[nodiscard]] long CountRealtimeFaults(const std::function<void()>& work);

}  // namespace support::testing
