// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/Strings.h"

#include <gtest/gtest.h>

#include <set>

namespace ui {
namespace {

int Places(const char* text) {
  const QString decoded = QString::fromUtf8(text);
  int places = 0;
  while (decoded.contains(QStringLiteral("%%1").arg(places + 1))) ++places;
  return places;
}

TEST(Strings, EveryNumberIsThereOnceInOrderAndInItsRange) {
  std::set<int> numbers;
  for (const auto table : Strings::Tables()) {
    int last = 2000;
    for (const auto& row : table) {
      EXPECT_GT(row.number, last);
      EXPECT_TRUE(numbers.insert(row.number).second) << row.number;
      last = row.number;
    }
    EXPECT_LE(last, 2999);
  }
}

TEST(Strings, BothLanguagesSayTheSame) {
  for (const auto table : Strings::Tables()) {
    for (const auto& row : table) {
      EXPECT_STRNE(row.english, "") << row.number;
      EXPECT_STRNE(row.dutch, "") << row.number;
      EXPECT_EQ(Places(row.english), Places(row.dutch)) << row.english;
    }
  }
}

TEST(Strings, EveryNameHasItsText) {
  const Strings english(Strings::Language::English);
  for (const Say number : {Say::Caption, Say::Tempo, Say::CueNoDevice, Say::SkinLight}) {
    EXPECT_FALSE(english(number).isEmpty());
  }
  EXPECT_EQ(Strings(Strings::Language::Dutch)(Say::Music), QStringLiteral("Muziek"));
  EXPECT_EQ(english(Say{2999}), QString());
}

}  // namespace
}  // namespace ui
