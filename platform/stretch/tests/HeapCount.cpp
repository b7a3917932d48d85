// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/stretch/tests/HeapCount.h"

#include <atomic>
#include <cerrno>
#include <cstddef>

namespace platform::stretch {

static std::atomic<long> heap_calls{0};

long HeapCalls() {
  return heap_calls.load();
}

}  // namespace platform::stretch

#if DJ_HEAP_IS_COUNTED
// The C library's own entries, so that the calls of the libraries are counted too.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);

void* malloc(std::size_t bytes) {
  ++platform::stretch::heap_calls;
  return __libc_malloc(bytes);
}
void* calloc(std::size_t count, std::size_t bytes) {
  ++platform::stretch::heap_calls;
  return __libc_calloc(count, bytes);
}
void* realloc(void* old, std::size_t bytes) {
  ++platform::stretch::heap_calls;
  return __libc_realloc(old, bytes);
}
int posix_memalign(void** made, std::size_t alignment, std::size_t bytes) {
  ++platform::stretch::heap_calls;
  *made = __libc_memalign(alignment, bytes);
  return *made == nullptr ? ENOMEM : 0;
}
}
#endif
