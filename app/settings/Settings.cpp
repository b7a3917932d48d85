// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/settings/Settings.h"

#include <cassert>
#include <charconv>
#include <optional>
#include <utility>

#include "support/Text.h"

namespace app {
namespace {

std::optional<int> NumberAtTheStart(std::string_view text) {
  text = support::Trim(text);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return std::nullopt;
  return number;
}

}  // namespace

Settings::Settings(support::SettingsStore& store, support::ProgramFolder folder)
    : store_(store), folder_(std::move(folder)) {}

std::string Settings::Text(std::string_view section, std::string_view key) const {
  return store_.Get(support::kApplication, section, key, Default(section, key));
}

bool Settings::Flag(std::string_view section, std::string_view key) const {
  const std::string text = Text(section, key);
  return support::EqualsIgnoringCase(support::Trim(text), "True") || NumberAtTheStart(text).value_or(0) != 0;
}

int Settings::Number(std::string_view section, std::string_view key) const {
  const std::optional<int> stored = NumberAtTheStart(Text(section, key));
  return stored ? *stored : NumberAtTheStart(Default(section, key)).value_or(0);
}

void Settings::SetText(std::string_view section, std::string_view key, std::string_view text) {
  assert(FindSetting(support::kApplication, section, key) != nullptr && "a key stands in the vocabulary");
  store_.Set(support::kApplication, section, key, text);
}

void Settings::SetFlag(std::string_view section, std::string_view key, bool flag) {
  SetText(section, key, flag ? "True" : "False");
}

void Settings::SetNumber(std::string_view section, std::string_view key, int number) {
  SetText(section, key, std::to_string(number));
}

std::string Settings::Default(std::string_view section, std::string_view key) const {
  const SettingKey* declared = FindSetting(support::kApplication, section, key);
  assert(declared != nullptr && "a key stands in the vocabulary");
  if (declared == nullptr) return {};
  if (declared->kind == SettingKey::Fallback::BelowProgramFolder) return folder_.TextOf(declared->fallback);
  return std::string(declared->fallback);
}

}  // namespace app
