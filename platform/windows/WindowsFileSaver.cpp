// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/WindowsFileSaver.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cwchar>
#include <string>
#include <system_error>

#include "support/Sentences.h"

namespace platform::windows {
namespace {

namespace fs = std::filesystem;
using support::Error;
using support::ErrorCode;
using support::Failed;
using support::Result;
using support::Sentence;

constexpr std::wstring_view kDraftMark = L".saving-";

Error SaveError(const fs::path& path, DWORD reason) {
  const std::string name = path.string();
  switch (reason) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return Failed(ErrorCode::Unavailable, Sentence::DiskFull, {name});
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
      return Failed(ErrorCode::Unreadable, Sentence::NoWriteRight, {name});
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
      return Failed(ErrorCode::Unavailable, Sentence::HeldByOther, {name});
    case ERROR_PATH_NOT_FOUND:
    case ERROR_FILE_NOT_FOUND:
      return Failed(ErrorCode::NotFound, Sentence::FolderOfFileMissing, {name});
    case ERROR_DIRECTORY:
      return Failed(ErrorCode::Unsupported, Sentence::NotReplaceable, {name});
    default:
      return Failed(ErrorCode::Unavailable, Sentence::NotSaved, {name, "Windows " + std::to_string(reason)});
  }
}

std::wstring DraftPrefix(const fs::path& target) {
  // A name may have 255 characters; the mark and the numbers need some of them.
  return L"." + target.filename().wstring().substr(0, 200) + std::wstring(kDraftMark);
}

fs::path DraftName(const fs::path& target) {
  static std::atomic<unsigned> saves{0};
  return target.parent_path() / (DraftPrefix(target) + std::to_wstring(GetCurrentProcessId()) + L"-" +
                                 std::to_wstring(saves.fetch_add(1)));
}

bool IsRunning(DWORD process) {
  const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, process);
  if (handle == nullptr) return GetLastError() == ERROR_ACCESS_DENIED;
  const bool running = WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
  CloseHandle(handle);
  return running;
}

/// Drafts carry the number of the process that writes them; those of dead ones are litter.
void RemoveLitter(const fs::path& target) {
  const std::wstring prefix = DraftPrefix(target);
  std::error_code error;
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(L".");
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const std::wstring name = entry->path().filename().wstring();
    if (!name.starts_with(prefix)) continue;
    const DWORD process = wcstoul(name.c_str() + prefix.size(), nullptr, 10);
    if (!IsRunning(process)) DeleteFileW(entry->path().c_str());
  }
}

enum class Flush { ToDisk, Later };

/// 0, or why the file could not be written and flushed.
DWORD WriteNewFile(const fs::path& path, std::string_view content, Flush flush) {
  constexpr std::size_t kMost = std::size_t{1} << 30;
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return GetLastError();
  DWORD reason = 0;
  while (reason == 0 && !content.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(content.size(), kMost));
    if (!WriteFile(file, content.data(), size, &written, nullptr)) reason = GetLastError();
    if (reason == 0 && written == 0) reason = ERROR_HANDLE_DISK_FULL;
    content.remove_prefix(written);
  }
  if (reason == 0 && flush == Flush::ToDisk && !FlushFileBuffers(file)) reason = GetLastError();
  CloseHandle(file);
  return reason;
}

/// 0, or why the draft could not take the target's place.
DWORD SwapIn(const fs::path& draft, const fs::path& target, Flush flush) {
  const DWORD through = flush == Flush::ToDisk ? MOVEFILE_WRITE_THROUGH : 0;
  constexpr int kTries = 25;
  constexpr DWORD kPauseMs = 20;
  DWORD reason = 0;
  for (int i = 0; i < kTries; ++i) {
    if (MoveFileExW(draft.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | through)) return 0;
    reason = GetLastError();
    if (reason != ERROR_SHARING_VIOLATION && reason != ERROR_ACCESS_DENIED) break;
    Sleep(kPauseMs);
  }
  return reason;
}

Result<void> Put(const fs::path& path, std::string_view content, Flush flush) {
  const DWORD old = GetFileAttributesW(path.c_str());
  const bool replaces = old != INVALID_FILE_ATTRIBUTES;
  if (replaces && (old & FILE_ATTRIBUTE_DIRECTORY) != 0) return SaveError(path, ERROR_DIRECTORY);
  if (replaces && (old & FILE_ATTRIBUTE_READONLY) != 0) return SaveError(path, ERROR_ACCESS_DENIED);
  RemoveLitter(path);
  const fs::path draft = DraftName(path);
  DWORD reason = WriteNewFile(draft, content, flush);
  if (reason == 0) reason = SwapIn(draft, path, flush);
  if (reason == 0) return {};
  DeleteFileW(draft.c_str());
  return SaveError(path, reason);
}

}  // namespace

Result<void> WindowsFileSaver::Save(const fs::path& path, std::string_view content) {
  return Put(path, content, Flush::ToDisk);
}

Result<void> WindowsFileSaver::SaveSwiftly(const fs::path& path, std::string_view content) {
  return Put(path, content, Flush::Later);
}

}  // namespace platform::windows
