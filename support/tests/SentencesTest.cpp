// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Sentences.h"

#include <gtest/gtest.h>

#include <regex>

#include "support/WordRow.h"
#include "support/Words.h"

namespace support {
namespace {

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
      "%[1-9] ([a-zäöü]+ )?(files|tracks|rows|lines|folders|bestanden|nummers|rijen|regels|mappen|"
      "Dateien|Tracks|Zeilen)");
  for (const WordRow& row : Words()) {
    for (const char* text : row.texts) EXPECT_FALSE(std::regex_search(text, many)) << text;
  }
}

TEST(SentencesTest, AChoiceOfLanguageHoldsForWhatIsSaidNext) {
  Sentences say;
  say.Choose(1000);
  EXPECT_EQ(say(Sentence::NoSound), "geen geluid");
  say.Choose(4000);
  EXPECT_EQ(say(Sentence::FilesLeftOut, {"1"}),
            "1 Datei wurde ausgelassen, weil sie sich nicht abspielen lässt.");
  say.Choose(500);
  EXPECT_EQ(say(Sentence::NoSound), "no sound");
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
