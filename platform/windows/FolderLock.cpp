// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The words of the other system's header with this system's calls behind them.
#include "platform/files/FolderLock.h"

#include <windows.h>

#include <array>
#include <cstdio>

namespace platform::files {
namespace {

constexpr DWORD kMostBytes = 512;
constexpr DWORD kFarBehind =
    1U << 30;  // a locked byte cannot be read, and who holds the lock stands before it

class HeldLock final : public FolderLock {
 public:
  explicit HeldLock(HANDLE file) : file_(file) {}
  ~HeldLock() override {
    if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
  }
  HeldLock(const HeldLock&) = delete;
  HeldLock& operator=(const HeldLock&) = delete;

 private:
  HANDLE file_;  ///< invalid where the folder takes no lock
};

std::string UserName() {
  std::array<char, 256> name{};
  auto size = static_cast<DWORD>(name.size());
  return GetUserNameA(name.data(), &size) ? std::string(name.data()) : std::string();
}

std::string LocalTime() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04u-%02u-%02u %02u:%02u", unsigned{now.wYear},
                unsigned{now.wMonth}, unsigned{now.wDay}, unsigned{now.wHour}, unsigned{now.wMinute});
  return text.data();
}

HANDLE Open(const std::filesystem::path& file, DWORD rights, DWORD how) {
  return CreateFileW(file.c_str(), rights, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                     how, FILE_ATTRIBUTE_NORMAL, nullptr);
}

FolderHolder WhoHolds(HANDLE file) {
  std::array<char, kMostBytes> bytes{};
  DWORD size = 0;
  if (!ReadFile(file, bytes.data(), kMostBytes, &size, nullptr)) return {};
  const std::string text(bytes.data(), size);
  const std::size_t end = text.find('\n');
  if (end == std::string::npos) return {};
  FolderHolder holder;
  holder.user = text.substr(0, end);
  holder.since = text.substr(end + 1, text.find('\n', end + 1) - end - 1);
  holder.same_user = !holder.user.empty() && holder.user == UserName();
  return holder;
}

}  // namespace

FolderLock::Claim FolderLock::Take(const std::filesystem::path& file) {
  HANDLE opened = Open(file, GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS);
  const bool ours = opened != INVALID_HANDLE_VALUE;
  if (!ours) opened = Open(file, GENERIC_READ, OPEN_EXISTING);
  OVERLAPPED place{};
  place.Offset = kFarBehind;
  const bool asked = opened != INVALID_HANDLE_VALUE;
  if (asked && !LockFileEx(opened, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place)) {
    const DWORD reason = GetLastError();
    if (reason == ERROR_LOCK_VIOLATION || reason == ERROR_IO_PENDING) {
      FolderHolder holder = WhoHolds(opened);
      CloseHandle(opened);
      return holder;
    }
  }
  if (ours) {
    const std::string text = UserName() + "\n" + LocalTime() + "\n";
    DWORD written = 0;
    WriteFile(opened, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    SetEndOfFile(opened);
  }
  return std::make_unique<HeldLock>(opened);
}

}  // namespace platform::files
