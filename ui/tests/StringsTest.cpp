// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/Strings.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include "support/Languages.h"
#include "ui/strings/BankWords.h"
#include "ui/strings/ListWords.h"
#include "ui/strings/OrganWords.h"
#include "ui/strings/Words.h"

namespace ui {
namespace {

using Language = Strings::Language;

TEST(Strings, WhatIsCountedAgreesWithItsNumber) {
  const Strings english(Language::English);
  EXPECT_EQ(english.Count(Say::Tracks, 1), QStringLiteral("1 track"));
  EXPECT_EQ(english.Count(Say::Tracks, 0), QStringLiteral("0 tracks"));
  EXPECT_EQ(english.Count(Say::Tracks, 21), QStringLiteral("21 tracks"));
  EXPECT_EQ(english.Count(ListWord::Total, 1).arg(QStringLiteral("3:00")), QStringLiteral("1 track, 3:00"));
  const Strings dutch(Language::Dutch);
  EXPECT_EQ(dutch.Count(BankWord::BankItem, 1, 2), QStringLiteral("Bank 1: 2 stappen"));
  EXPECT_EQ(dutch.Count(BankWord::BankItem, 2, 1), QStringLiteral("Bank 2: 1 stap"));
  EXPECT_EQ(Strings(Language::German).Count(BankWord::BankItem, 3, 2), QStringLiteral("Bank 3: 2 Schritte"));
}

TEST(Strings, NothingIsCountedInOneFormAlone) {
  const QRegularExpression many(QStringLiteral(
      "%[1-9] ([a-zäöü]+ )?(files|tracks|songs|rows|steps|frames|packets|bestanden|nummers|rijen|stappen|"
      "pakketten|Dateien|Tracks|Songs|Zeilen|Schritte|Frames|Pakete)"));
  for (const auto& row : Words()) {
    // A single file is asked for by its name.
    if (row.number == static_cast<int>(Say::AskDelete) ||
        row.number == static_cast<int>(Say::AskDeleteSongs)) {
      continue;
    }
    for (const char* text : row.texts) EXPECT_FALSE(QString::fromUtf8(text).contains(many)) << text;
  }
}

TEST(Strings, AWordAndItsTipAreSaidInTheLanguageChosen) {
  EXPECT_EQ(Strings(Language::Dutch)(Say::Music), QStringLiteral("Muziek"));
  EXPECT_EQ(Strings(Language::Dutch).Tip(OrganWord::Bank), QStringLiteral("De patroonbank die speelt"));
  EXPECT_EQ(Strings(Language::English)(OrganWord::BankTip), QStringLiteral("The pattern bank that plays"));
  EXPECT_EQ(Strings(Language::English)(Say{2999}), QString());
}

}  // namespace
}  // namespace ui
