// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/Strings.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <set>

#include "ui/strings/BankWords.h"
#include "ui/strings/ListWords.h"

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

TEST(Strings, WhatIsCountedAgreesWithItsNumber) {
  const Strings english(Strings::Language::English);
  EXPECT_EQ(english.Count(Say::Tracks, 1), QStringLiteral("1 track"));
  EXPECT_EQ(english.Count(Say::Tracks, 0), QStringLiteral("0 tracks"));
  EXPECT_EQ(english.Count(Say::Tracks, 21), QStringLiteral("21 tracks"));
  EXPECT_EQ(english.Count(ListWord::Total, 1).arg(QStringLiteral("3:00")), QStringLiteral("1 track, 3:00"));
  const Strings dutch(Strings::Language::Dutch);
  EXPECT_EQ(dutch.Count(BankWord::BankItem, 1, 2), QStringLiteral("Bank 1: 2 stappen"));
  EXPECT_EQ(dutch.Count(BankWord::BankItem, 2, 1), QStringLiteral("Bank 2: 1 stap"));
}

TEST(Strings, NothingIsCountedInOneFormAlone) {
  const QRegularExpression many(QStringLiteral(
      "%[1-9] ([a-z]+ )?(files|tracks|songs|rows|steps|frames|packets|bestanden|nummers|rijen|stappen|"
      "pakketten)"));
  for (const auto table : Strings::Tables()) {
    for (const auto& row : table) {
      // A single file is asked for by its name.
      if (row.number == static_cast<int>(Say::AskDelete) ||
          row.number == static_cast<int>(Say::AskDeleteSongs)) {
        continue;
      }
      EXPECT_FALSE(QString::fromUtf8(row.english).contains(many)) << row.english;
      EXPECT_FALSE(QString::fromUtf8(row.dutch).contains(many)) << row.dutch;
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
