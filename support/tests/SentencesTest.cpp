// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Sentences.h"

#include <gtest/gtest.h>

#include <algorithm>

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
  EXPECT_EQ(found, 26);
}

TEST(SentencesTest, PartsFillTheirPlacesWhateverTheyHold) {
  const Sentences say;
  EXPECT_EQ(say(Sentence::FileNotDeleted, {"100 %1.mp3"}), "\"100 %1.mp3\" could not be deleted.");
  EXPECT_EQ(say(Sentence::FileNotDeleted), "\"\" could not be deleted.");
}

TEST(SentencesTest, AChoiceOfLanguageHoldsForWhatIsSaidNext) {
  Sentences say;
  say.Choose(1000);
  EXPECT_EQ(say(Sentence::NoSound), "geen geluid");
  say.Choose(0);
  EXPECT_EQ(say(Sentence::NoSound), "no sound");
}

}  // namespace
}  // namespace support
