// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Stands before the allocator and the mutexes of the system's library and ends the program when one of them
// is called inside a RealtimeScope. The sanitizers bring allocators of their own, so it is left out under
// them.

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define DJ_GUARD_OFF
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(__GLIBC__)
#define DJ_GUARD_OFF
#endif

#include "support/testing/RealtimeGuard.h"

#ifndef DJ_GUARD_OFF

#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <string_view>

#include "support/RealtimeScope.h"

extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);
int __pthread_mutex_lock(pthread_mutex_t*);
}

namespace {

void Check(std::string_view call) {
  if (!support::RealtimeScope::Active()) return;
  constexpr std::string_view kText = " was called inside an audio callback\n";
  ssize_t ignored = write(2, call.data(), call.size());
  ignored = write(2, kText.data(), kText.size());
  static_cast<void>(ignored);
  std::abort();
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
  Check("malloc");
  return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
  Check("calloc");
  return __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size) {
  Check("realloc");
  return __libc_realloc(memory, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size) {
  Check("aligned_alloc");
  return __libc_memalign(alignment, size);
}
int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
  Check("posix_memalign");
  *memory = __libc_memalign(alignment, size);
  return *memory == nullptr ? ENOMEM : 0;
}
void free(void* memory) {
  if (memory != nullptr) Check("free");
  __libc_free(memory);
}
int pthread_mutex_lock(pthread_mutex_t* mutex) {
  Check("pthread_mutex_lock");
  return __pthread_mutex_lock(mutex);
}

}  // extern "C"

#endif  // DJ_GUARD_OFF

namespace support::testing {

bool RealtimeGuardWorks() {
#ifdef DJ_GUARD_OFF
  return false;
#else
  return true;
#endif
}

}  // namespace support::testing
