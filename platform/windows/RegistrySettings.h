// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/Mutex.h"
#include "support/ports/SettingsStore.h"

namespace platform::windows {

/// The settings of one user in the registry: HKEY_CURRENT_USER\Software\application\section, one text value a
/// key.
///
/// Every program of the user sees a set at once. A value that the registry does not take holds until the
/// program ends. The calls are those of the 8-bit code page, so that text means the same as in our files;
/// letter case of names does not count there. Threads: any.
class RegistrySettings final : public support::SettingsStore {
 public:
  /// The root is a key below HKEY_CURRENT_USER.
  explicit RegistrySettings(std::string root = "Software") : root_(std::move(root)) {}

  [[nodiscard]] std::string Get(std::string_view application, std::string_view section, std::string_view key,
                                std::string_view fallback) const override DJ_EXCLUDES(mutex_);
  void Set(std::string_view application, std::string_view section, std::string_view key,
           std::string_view value) override DJ_EXCLUDES(mutex_);
  void Flush() override;
  [[nodiscard]] std::vector<support::Error> Notices(std::size_t known) const override DJ_EXCLUDES(mutex_);

 private:
  using Name = std::pair<std::string, std::string>;  ///< the registry's key and the value's name

  [[nodiscard]] std::string PathOf(std::string_view application, std::string_view section) const;

  const std::string root_;
  mutable support::Mutex mutex_;
  std::map<Name, std::string> not_taken_ DJ_GUARDED_BY(mutex_);
  std::vector<support::Error> notices_ DJ_GUARDED_BY(mutex_);
};

}  // namespace platform::windows
