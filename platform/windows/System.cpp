// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The words of the other system's header with this system's calls behind them.
#include "platform/files/System.h"

#include <windows.h>

#include <string>
#include <system_error>

namespace platform::files {

std::filesystem::path ExecutableFolder() {
  constexpr std::size_t kLongestPath = 32768;
  std::wstring name(kLongestPath, L'\0');
  const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
  std::error_code error;
  if (length == 0 || length >= name.size()) return std::filesystem::current_path(error);
  return std::filesystem::path(name.substr(0, length)).parent_path();
}

std::filesystem::path ScratchFolder() {
  std::error_code error;
  const std::filesystem::path scratch = std::filesystem::temp_directory_path(error);
  return error ? ExecutableFolder() : scratch;
}

// This system's heap does so by itself.
void ReturnFreedMemory() noexcept {}

}  // namespace platform::files
