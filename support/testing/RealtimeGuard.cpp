// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Stands before the allocator and the mutexes of the system's library and ends the program when one of them
// is called inside a RealtimeScope. The sanitizers bring allocators of their own, so it is left out under
// them.

#include "support/testing/RealtimeGuard.h"

#if DJ_REALTIME_GUARD

#include <dlfcn.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
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
}

namespace {

std::atomic<bool> counting{false};
std::atomic<long> counted{0};

void Check(std::string_view call) {
  if (!support::RealtimeScope::Active()) return;
  if (counting.load(std::memory_order_relaxed)) {
    counted.fetch_add(1, std::memory_order_relaxed);
    return;
  }
  constexpr std::string_view kText = " was called inside an audio callback\n";
  ssize_t ignored = write(2, call.data(), call.size());
  ignored = write(2, kText.data(), kText.size());
  static_cast<void>(ignored);
  std::abort();
}

using MutexLockFunction = int (*)(pthread_mutex_t*);

/// The system library's own; looked up at the first call, which comes long before any callback.
MutexLockFunction NextMutexLock() {
  static std::atomic<MutexLockFunction> next{nullptr};
  MutexLockFunction function = next.load(std::memory_order_acquire);
  if (function == nullptr) {
    function = reinterpret_cast<MutexLockFunction>(dlsym(RTLD_NEXT, "pthread_mutex_lock"));
    next.store(function, std::memory_order_release);
  }
  return function;
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
  return NextMutexLock()(mutex);
}

}  // extern "C"

#endif  // DJ_REALTIME_GUARD

namespace support::testing {

bool RealtimeGuardWorks() {
  return DJ_REALTIME_GUARD != 0;
}

long CountRealtimeFaults(const std::function<void()>& work) {
#if DJ_REALTIME_GUARD
  counted = 0;
  counting = true;
  work();
  counting = false;
  return counted;
#else
  work();
  return 0;
#endif
}

}  // namespace support::testing
