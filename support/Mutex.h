// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

// Clang's thread safety analysis follows these; other compilers see nothing.
#if defined(__clang__)
#define DJ_THREAD_ANNOTATION(x) __attribute__((x))
#else
#define DJ_THREAD_ANNOTATION(x)
#endif
#define DJ_CAPABILITY(x) DJ_THREAD_ANNOTATION(capability(x))
#define DJ_SCOPED_CAPABILITY DJ_THREAD_ANNOTATION(scoped_lockable)
#define DJ_GUARDED_BY(x) DJ_THREAD_ANNOTATION(guarded_by(x))
#define DJ_REQUIRES(...) DJ_THREAD_ANNOTATION(requires_capability(__VA_ARGS__))
#define DJ_EXCLUDES(...) DJ_THREAD_ANNOTATION(locks_excluded(__VA_ARGS__))
#define DJ_ACQUIRE(...) DJ_THREAD_ANNOTATION(acquire_capability(__VA_ARGS__))
#define DJ_RELEASE(...) DJ_THREAD_ANNOTATION(release_capability(__VA_ARGS__))
#define DJ_NO_THREAD_SAFETY_ANALYSIS DJ_THREAD_ANNOTATION(no_thread_safety_analysis)

namespace support {

/// A std::mutex that the compiler can check. Never taken on an audio callback.
class DJ_CAPABILITY("mutex") Mutex {
 public:
  void Lock() DJ_ACQUIRE() { mutex_.lock(); }
  void Unlock() DJ_RELEASE() { mutex_.unlock(); }

 private:
  friend class MutexLock;
  std::mutex mutex_;
};

/// Holds a Mutex for a scope, and can wait in it.
class DJ_SCOPED_CAPABILITY MutexLock {
 public:
  explicit MutexLock(Mutex& mutex) DJ_ACQUIRE(mutex) : lock_(mutex.mutex_) {}
  ~MutexLock() DJ_RELEASE() = default;
  MutexLock(const MutexLock&) = delete;
  MutexLock& operator=(const MutexLock&) = delete;

  /// Waits until notified or, once, spuriously; the caller loops over its condition.
  void Wait(std::condition_variable& condition) { condition.wait(lock_); }
  /// As Wait, but not beyond the deadline.
  template <typename Clock, typename Span>
  void WaitUntil(std::condition_variable& condition, std::chrono::time_point<Clock, Span> deadline) {
    condition.wait_until(lock_, deadline);
  }

 private:
  std::unique_lock<std::mutex> lock_;
};

}  // namespace support
