// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <string_view>

namespace support {

/// One key of the settings store.
struct SettingKey {
  enum class Fallback {
    Text,               ///< as it stands
    BelowProgramFolder  ///< the program folder's path before it
  };

  std::string_view application;
  std::string_view section;
  std::string_view key;
  std::string_view fallback;  ///< the value of a missing key
  std::string_view meaning;
  Fallback kind = Fallback::Text;
};

/// Every key that the program reads or writes, those of a section side by side. A key that is not here does
/// not exist.
[[nodiscard]] std::span<const SettingKey> SettingsVocabulary();

/// Null for a key that is not declared.
[[nodiscard]] const SettingKey* FindSetting(std::string_view section, std::string_view key);

}  // namespace support
