// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/settings/SettingsText.h"
#include "support/Text.h"

namespace {

using platform::settings::SettingName;
using platform::settings::SettingsText;

void Require(bool holds) {
  if (!holds) abort();
}

/// A text without the characters that a name must not hold.
std::string Take(FuzzedDataProvider& bytes, std::string_view forbidden) {
  std::string text = bytes.ConsumeRandomLengthString(64);
  std::erase_if(text, [&](char c) { return forbidden.find(c) != std::string_view::npos; });
  return text;
}

SettingName TakeName(FuzzedDataProvider& bytes) {
  const std::string section = Take(bytes, std::string_view("\0\r\n]", 4));
  return {"TLVG", section, Take(bytes, std::string_view("\0\r\n=", 4))};
}

/// A new setting adds up to three lines in one place (blank, heading, value); another one changes its line.
void RequireOtherLinesKept(const std::string& before, const std::string& after, bool was_there) {
  const auto old_lines = support::SplitLines(before), lines = support::SplitLines(after);
  const auto differ = std::mismatch(old_lines.begin(), old_lines.end(), lines.begin(), lines.end());
  const auto kept_front = differ.first - old_lines.begin();
  const auto from_end = std::mismatch(old_lines.rbegin(), old_lines.rend(), lines.rbegin(), lines.rend());
  const auto kept_back = from_end.first - old_lines.rbegin();
  const auto count = static_cast<std::ptrdiff_t>(old_lines.size());
  Require(kept_front + kept_back >= count - (was_there ? 1 : 0));
  const auto more = static_cast<std::ptrdiff_t>(lines.size()) - count;
  Require(was_there ? more == 0 : more >= 1 && more <= 3);
}

void SetAndCheck(SettingsText& text, const SettingName& name, const std::string& value) {
  const std::string before = text.Text();
  const bool was_there = text.Get(name).has_value();
  text.Set(name, value);
  RequireOtherLinesKept(before, text.Text(), was_there);
  const auto again = SettingsText::Parse(text.Text());
  Require(again && again->Get(name) == value && again->Text() == text.Text());
}

}  // namespace

/// Whatever a settings file holds: what is set is read again, and no other line or key changes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider bytes(data, size);
  const SettingName name = TakeName(bytes), other = TakeName(bytes);
  const std::string value = Take(bytes, std::string_view("\0", 1));
  const auto parsed = SettingsText::Parse(bytes.ConsumeRemainingBytesAsString());
  if (!parsed) return 0;
  SettingsText text = *parsed;
  const auto other_value = text.Get(other);
  SetAndCheck(text, name, value);
  if (name == other) return 0;
  Require(text.Get(other) == other_value && SettingsText::Parse(text.Text())->Get(other) == other_value);
  SetAndCheck(text, other, value + "!");
  Require(SettingsText::Parse(text.Text())->Get(name) == value);
  return 0;
}
