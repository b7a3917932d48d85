// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Sanitizers have an allocator of their own that must not be stepped in front of.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define DJ_HEAP_IS_COUNTED 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define DJ_HEAP_IS_COUNTED 0
#endif
#endif
#ifndef DJ_HEAP_IS_COUNTED
#define DJ_HEAP_IS_COUNTED 1
#endif

namespace platform::stretch {

/// Calls of malloc, calloc, realloc and posix_memalign in this program so far, the libraries' own included.
[[nodiscard]] long HeapCalls();

}  // namespace platform::stretch
