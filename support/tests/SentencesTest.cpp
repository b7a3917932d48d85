// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Sentences.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

namespace support {
namespace {

TEST(SentencesTest, EverySentenceStandsInBothLanguagesWithTheSamePlaces) {
  int found = 0;
  for (int number = 1; number <= 999; ++number) {
    const std::string_view english = SentenceText(number);
    const std::string_view dutch = SentenceText(number + 1000);
    ASSERT_EQ(english.empty(), dutch.empty()) << number;
    EXPECT_EQ(std::count(english.begin(), english.end(), '%'), std::count(dutch.begin(), dutch.end(), '%'))
        << number;
    if (!english.empty()) ++found;
  }
  EXPECT_GE(found, 14);
}

TEST(SentencesTest, PartsFillTheirPlacesWhateverTheyHold) {
  const Sentences say;
  EXPECT_EQ(say(Sentence::FileNotDeleted, {"100 %1.mp3"}), "\"100 %1.mp3\" could not be deleted.");
  EXPECT_EQ(say(Sentence::FileNotDeleted), "\"\" could not be deleted.");
}

TEST(SentencesTest, WhatIsCountedAgreesWithItsNumber) {
  Sentences say;
  EXPECT_EQ(say(Sentence::FilesLeftOut, {"1"}), "1 file was left out, because it cannot be played.");
  EXPECT_EQ(say(Sentence::FilesLeftOut, {"0"}), "0 files were left out, because they cannot be played.");
  EXPECT_EQ(say(Sentence::FilesLeftOut, {"21"}), "21 files were left out, because they cannot be played.");
  EXPECT_EQ(say(Sentence::PlaylistLinesLeftOut, {"{a|b}", "1"}),
            "1 line of \"{a|b}\" was left out, because it is no track.");
  say.Choose(1000);
  EXPECT_EQ(say(Sentence::RowsGone, {"1"}), "1 rij is verwijderd, omdat haar bestand er niet meer is.");
  EXPECT_EQ(say(Sentence::RowsGone, {"2"}),
            "2 rijen zijn verwijderd, omdat hun bestanden er niet meer zijn.");
}

TEST(SentencesTest, NothingIsCountedInOneFormAlone) {
  const std::regex many(
      "%[1-9] ([a-z]+ )?(files|tracks|rows|lines|folders|bestanden|nummers|rijen|regels|mappen)");
  for (int number = 1; number <= 1999; ++number) {
    const std::string text(SentenceText(number));
    EXPECT_FALSE(std::regex_search(text, many)) << text;
  }
}

TEST(SentencesTest, AChoiceOfLanguageHoldsForWhatIsSaidNext) {
  Sentences say;
  say.Choose(1000);
  EXPECT_EQ(say(Sentence::NoSound), "geen geluid");
  say.Choose(0);
  EXPECT_EQ(say(Sentence::NoSound), "no sound");
}

TEST(SentencesTest, AFailureIsSaidInTheLanguageOfWhoShowsIt) {
  const Error failure = Failed(ErrorCode::NotFound, Sentence::FolderMissing, {"/a"});
  EXPECT_EQ(failure.text, "There is no folder \"/a\".");
  Sentences say;
  say.Choose(1000);
  EXPECT_EQ(say(failure), "Er is geen map \"/a\".");
  EXPECT_EQ(say({ErrorCode::NotFound, "As it stands."}), "As it stands.");
}

}  // namespace
}  // namespace support
