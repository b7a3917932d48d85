// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Settings.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <optional>
#include <utility>

#include "support/Text.h"

namespace support {
namespace {

std::optional<int> NumberAtTheStart(std::string_view text) {
  text = Trim(text);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return std::nullopt;
  return number;
}

const SettingKey& Declared(std::string_view section, std::string_view key) {
  static constexpr SettingKey kUndeclared{kApplication, "", "", "", ""};
  const SettingKey* declared = FindSetting(section, key);
  assert(declared != nullptr && "a key stands in the vocabulary");
  return declared != nullptr ? *declared : kUndeclared;
}

}  // namespace

Settings::Settings(SettingsStore& store, ProgramFolder folder) : store_(store), folder_(std::move(folder)) {}

std::string Settings::Text(std::string_view section, std::string_view key) const {
  return TextOr(section, key, Default(section, key));
}

std::string Settings::TextOr(std::string_view section, std::string_view key,
                             std::string_view fallback) const {
  return store_.Get(Declared(section, key).application, section, key, fallback);
}

bool Settings::Flag(std::string_view section, std::string_view key) const {
  const std::string text = Text(section, key);
  return EqualsIgnoringCase(Trim(text), "True") || NumberAtTheStart(text).value_or(0) != 0;
}

int Settings::Number(std::string_view section, std::string_view key) const {
  const std::optional<int> stored = NumberAtTheStart(Text(section, key));
  return stored ? *stored : NumberAtTheStart(Default(section, key)).value_or(0);
}

int Settings::Number(std::string_view section, std::string_view key, int lowest, int highest) const {
  return std::clamp(Number(section, key), lowest, highest);
}

std::string Settings::Default(std::string_view section, std::string_view key) const {
  const SettingKey& declared = Declared(section, key);
  if (declared.kind == SettingKey::Fallback::BelowProgramFolder) return folder_.TextOf(declared.fallback);
  return std::string(declared.fallback);
}

void Settings::SetText(std::string_view section, std::string_view key, std::string_view text) {
  store_.Set(Declared(section, key).application, section, key, text);
}

void Settings::SetFlag(std::string_view section, std::string_view key, bool flag) {
  SetText(section, key, flag ? "True" : "False");
}

void Settings::SetNumber(std::string_view section, std::string_view key, int number) {
  SetText(section, key, std::to_string(number));
}

}  // namespace support
