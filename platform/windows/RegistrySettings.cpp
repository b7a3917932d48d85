// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/RegistrySettings.h"

#include <windows.h>

#include <algorithm>
#include <optional>

#include "support/Sentences.h"

namespace platform::windows {
namespace {

using support::MutexLock;

std::optional<std::string> ReadValue(const std::string& path, const std::string& name) {
  std::string value(256, '\0');
  LSTATUS status = ERROR_MORE_DATA;
  // Another program may lengthen it between two calls.
  for (int i = 0; i < 8 && status == ERROR_MORE_DATA; ++i) {
    auto size = static_cast<DWORD>(value.size());
    status = RegGetValueA(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, value.data(),
                          &size);
    if (status == ERROR_MORE_DATA) value.resize(size + value.size());
  }
  if (status != ERROR_SUCCESS) return std::nullopt;
  value.resize(value.find('\0'));
  return value;
}

bool WriteValue(const std::string& path, const std::string& name, const std::string& value) {
  HKEY key = nullptr;
  if (RegCreateKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE,
                      nullptr, &key, nullptr) != ERROR_SUCCESS) {
    return false;
  }
  const auto* bytes = reinterpret_cast<const BYTE*>(value.c_str());
  const auto size = static_cast<DWORD>(value.size() + 1);
  const LSTATUS status = RegSetValueExA(key, name.c_str(), 0, REG_SZ, bytes, size);
  RegCloseKey(key);
  return status == ERROR_SUCCESS;
}

}  // namespace

std::string RegistrySettings::Get(std::string_view application, std::string_view section,
                                  std::string_view key, std::string_view fallback) const {
  const Name name(PathOf(application, section), key);
  {
    MutexLock lock(mutex_);
    if (const auto kept = not_taken_.find(name); kept != not_taken_.end()) return kept->second;
  }
  return ReadValue(name.first, name.second).value_or(std::string(fallback));
}

void RegistrySettings::Set(std::string_view application, std::string_view section, std::string_view key,
                           std::string_view value) {
  const Name name(PathOf(application, section), key);
  MutexLock lock(mutex_);
  if (WriteValue(name.first, name.second, std::string(value))) {
    not_taken_.erase(name);
    return;
  }
  not_taken_.insert_or_assign(name, std::string(value));
  if (notices_.empty()) {
    notices_.push_back(support::Failed(support::ErrorCode::Unavailable, support::Sentence::RegistryRefuses));
  }
}

void RegistrySettings::Flush() {
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, root_.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
  RegFlushKey(key);
  RegCloseKey(key);
}

std::vector<support::Error> RegistrySettings::Notices(std::size_t known) const {
  MutexLock lock(mutex_);
  return {notices_.begin() + static_cast<std::ptrdiff_t>(std::min(known, notices_.size())), notices_.end()};
}

std::string RegistrySettings::PathOf(std::string_view application, std::string_view section) const {
  return root_ + "\\" + std::string(application) + "\\" + std::string(section);
}

}  // namespace platform::windows
