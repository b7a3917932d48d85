// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/System.h"

#include <malloc.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <system_error>

namespace platform::files {

std::filesystem::path ExecutableFolder() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::filesystem::current_path(error) : program.parent_path();
}

std::filesystem::path ScratchFolder() {
  std::error_code error;
  const std::filesystem::path scratch = std::filesystem::temp_directory_path(error);
  return error ? ExecutableFolder() : scratch;
}

void LowerThreadPriority() noexcept {
  constexpr int kNice = 15;
  constexpr int kThread = 1, kLowestOfNormal = (2 << 13) | 7;  // as the system's call counts them
  setpriority(PRIO_PROCESS, 0, kNice);
  syscall(SYS_ioprio_set, kThread, 0, kLowestOfNormal);
}

void ReturnFreedMemory() noexcept {
#ifdef __GLIBC__
  // Left to itself it raises both limits with each large block that is freed, up to 32 and 64 MB a thread.
  constexpr int kLimit = 4 << 20;
  mallopt(M_MMAP_THRESHOLD, kLimit);
  mallopt(M_TRIM_THRESHOLD, kLimit);
#endif
}

}  // namespace platform::files
