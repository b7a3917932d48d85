// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "support/ProgramFolder.h"
#include "support/SettingsVocabulary.h"
#include "support/ports/SettingsStore.h"

namespace support {

/// The one door to the settings: the store with the declared defaults and the types of its texts.
///
/// Law: only keys of the vocabulary are read or written; an undeclared one is a bug. Threads: any.
class Settings {
 public:
  Settings(SettingsStore& store, ProgramFolder folder);

  [[nodiscard]] std::string Text(std::string_view section, std::string_view key) const;
  /// For a reader with a default of its own.
  [[nodiscard]] std::string TextOr(std::string_view section, std::string_view key,
                                   std::string_view fallback) const;
  /// "True" in any letter case, or a number other than 0.
  [[nodiscard]] bool Flag(std::string_view section, std::string_view key) const;
  /// The declared default where the text begins with no number that fits.
  [[nodiscard]] int Number(std::string_view section, std::string_view key) const;
  /// Number, brought into a range.
  [[nodiscard]] int Number(std::string_view section, std::string_view key, int lowest, int highest) const;
  /// The value of a key that was never stored.
  [[nodiscard]] std::string Default(std::string_view section, std::string_view key) const;

  void SetText(std::string_view section, std::string_view key, std::string_view text);
  /// As "True" or "False".
  void SetFlag(std::string_view section, std::string_view key, bool flag);
  void SetNumber(std::string_view section, std::string_view key, int number);

 private:
  SettingsStore& store_;
  ProgramFolder folder_;
};

}  // namespace support
