// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace engine {

/// While it lives, numbers too small to be heard count as 0 on this thread.
///
/// A filter or an echo that dies away would else reckon with ever smaller ones, each of which costs as much
/// as a hundred others. On processors other than x86 it does nothing. Threads: any, each for itself.
class NoDenormals {
 public:
#if defined(__SSE2__)
  NoDenormals() noexcept : before_(__builtin_ia32_stmxcsr()) {
    __builtin_ia32_ldmxcsr(before_ | kFlushToZero | kDenormalsAreZero);
  }
  ~NoDenormals() {
    __builtin_ia32_ldmxcsr(before_);
  }
#else
  NoDenormals() noexcept {}
  ~NoDenormals() {}
#endif
  NoDenormals(const NoDenormals&) = delete;
  NoDenormals& operator=(const NoDenormals&) = delete;

#if defined(__SSE2__)
 private:
  static constexpr unsigned kFlushToZero = 0x8000;
  static constexpr unsigned kDenormalsAreZero = 0x0040;
  const unsigned before_;
#endif
};

}  // namespace engine
