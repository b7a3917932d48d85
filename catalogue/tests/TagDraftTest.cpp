// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/TagDraft.h"

#include <gtest/gtest.h>

#include "catalogue/NamePattern.h"
#include "catalogue/TagText.h"

namespace catalogue {
namespace {

TagSheet Sheet(const std::string& artist, const std::string& title, const std::string& cover = {}) {
  TagSheet sheet;
  sheet[TagField::Artist] = artist;
  sheet[TagField::Title] = title;
  sheet.cover.bytes = cover;
  return sheet;
}

TEST(TagDraftTest, AFieldThatDiffersStaysUntilItIsTouched) {
  TagDraft draft;
  draft.Add("a.mp3", Sheet("Anna", "One"));
  draft.Add("b.mp3", Sheet("Bert", "Two"));
  EXPECT_TRUE(draft.All(TagField::Artist).differs);
  draft.SetAll(TagField::Album, "Both");
  EXPECT_EQ(draft.Touched(), 2U);
  EXPECT_FALSE(draft.At(0).edit[TagField::Artist]);
  draft.SetAll(TagField::Artist, "Bert");
  EXPECT_FALSE(draft.At(1).edit[TagField::Artist]) << "it says so already";
  EXPECT_FALSE(draft.All(TagField::Artist).differs);
  draft.Revert(TagField::Artist);
  draft.SetAll(TagField::Album, "");
  EXPECT_EQ(draft.Touched(), 0U) << "as the disk has it";
}

TEST(TagDraftTest, ACoverIsWrittenOnlyWhereItIsAnotherOne) {
  TagDraft draft;
  draft.Add("a.mp3", Sheet("", "", "red"));
  draft.Add("b.mp3", Sheet("", "", "blue"));
  EXPECT_TRUE(draft.CoversDiffer());
  draft.SetCover({"image/png", "red"});
  EXPECT_FALSE(draft.IsTouched(0));
  EXPECT_TRUE(draft.IsTouched(1));
  draft.RevertCover();
  EXPECT_EQ(draft.Cover().bytes, "red");
  draft.Clear();
  draft.Add("c.mp3", Sheet("", ""));
  draft.SetCover({});
  EXPECT_EQ(draft.Touched(), 0U) << "nothing to take away";
}

TEST(TagDraftTest, TheBlockOfMixingTagsStaysOutOfSightAndBehindTheComment) {
  const std::string block = "Great\r\nsmp\r\n1.000\r\nend\r\nBPM\r\n120.00";
  EXPECT_EQ(VisibleComment(block), "Great\nend");
  const std::string made = WithVisibleComment(block, "New\nwords");
  EXPECT_EQ(made, "New\r\nwords\r\nsmp\r\n1.000\r\nBPM\r\n120.00");
  EXPECT_EQ(VisibleComment(made), "New\nwords");
  EXPECT_EQ(WithVisibleComment("plain", "x"), "x");
  EXPECT_EQ(VisibleComment("SMP"), "") << "a key without its value";
  EXPECT_EQ(WithVisibleComment(block, ""), "smp\r\n1.000\r\nBPM\r\n120.00");
}

TEST(TagTextTest, LettersWithAccentsHaveCaseTooAndForeignBytesStay) {
  const struct {
    LetterCase letters;
    const char* text;
    const char* made;
  } kCases[] = {
      {LetterCase::Title, "don't STOP (the édith)", "Don't Stop (The Édith)"},
      {LetterCase::Title, "élan-vital ÇA", "Élan-Vital Ça"},
      {LetterCase::Sentence, "  HELLO World", "  Hello world"},
      {LetterCase::Upper, "straße łódź ÿ привет ας", "STRAßE ŁÓDŹ Ÿ ПРИВЕТ ΑΣ"},
      {LetterCase::Lower, "ŁÓDŹ ŸÀ ΆΣ ЁЖ Ở", "łódź ÿà άσ ёж ở"},
      {LetterCase::Upper, "caf\xE9 x\xC3", "CAF\xE9 X\xC3"},
      {LetterCase::Upper, "愛 4you", "愛 4YOU"},
  };
  for (const auto& [letters, text, made] : kCases) EXPECT_EQ(InCase(text, letters), made) << text;
  EXPECT_EQ(WithCleanSpaces("  a__b \t c "), "a b c");
  EXPECT_EQ(Replaced("aXbX", "X", "XX"), "aXXbXX");
  EXPECT_EQ(Replaced("a", "", "x"), "a");
}

TEST(NamePatternTest, ANameIsReadOnlyWhereItIsMadeLikeThat) {
  const auto read = [](const char* pattern, const char* name) {
    std::string text;
    const auto fields = NamePattern(pattern).Read(name);
    if (!fields) return std::string("none");
    for (const auto& [field, value] : *fields) text += std::string(NameOf(field)) + "=" + value + ";";
    return text;
  };
  EXPECT_EQ(read("%artist% - %title%", "A - B - C"), "artist=A;title=B - C;");
  EXPECT_EQ(read("%TRACK%. %title% [%bpm%]", "03. Up [128]"), "track=03;title=Up;bpm=128;");
  EXPECT_EQ(read("%artist% - %title%", "no dash"), "none");
  EXPECT_EQ(read("%artist% - %title%", " - B"), "none");
  EXPECT_EQ(read("%artist%%title%", "ab"), "none") << "nothing between them";
  EXPECT_EQ(read("100%-%title%", "100%-x"), "title=x;");
  EXPECT_EQ(read("fixed", "fixed"), "none");
}

TEST(NamePatternTest, ANameIsOneThatEveryFileSystemTakes) {
  const auto name = [](const std::string& title) { return NamePattern("%title%").NameFor(Sheet("", title)); };
  EXPECT_EQ(name("AC/DC: what?"), "AC_DC_ what_");
  EXPECT_EQ(name("..hidden. "), "hidden");
  EXPECT_EQ(name("con"), "_con");
  EXPECT_EQ(name(""), "");
  std::string longest;
  for (int i = 0; i < 200; ++i) longest += "é";
  EXPECT_EQ(name(longest).size(), 240U);
  EXPECT_EQ(name("x" + longest).size(), 239U) << "cut between letters";
  TagSheet third = Sheet("", "T");
  third[TagField::Track] = "3/12";
  EXPECT_EQ(NamePattern("%track% %title%").NameFor(third), "03 T");
}

TEST(NamePatternTest, TwoFilesNeverGetOneNameAndLetterCaseAloneIsAChange) {
  TagDraft draft;
  draft.Add("/m/x.mp3", Sheet("", "Same"));
  draft.Add("/m/y.mp3", Sheet("", "sAME"));
  draft.Add("/m/none.mp3", Sheet("", ""));
  draft.Add("/m/case.mp3", Sheet("", "Case"));
  draft.Add("/m/Right.mp3", Sheet("", "Right"));
  draft.Add("/n/z.mp3", Sheet("", "Same"));
  const auto names = PlanNames(draft, NamePattern("%title%"));
  using State = PlannedName::State;
  const State kStates[] = {State::Renamed, State::Taken, State::Empty,
                           State::Renamed, State::Stays, State::Renamed};
  for (std::size_t i = 0; i < std::size(kStates); ++i) EXPECT_EQ(names[i].state, kStates[i]) << names[i].from;
  EXPECT_EQ(names[3].to, "/m/Case.mp3");
  EXPECT_EQ(names[5].to, "/n/Same.mp3") << "another folder";
}

}  // namespace
}  // namespace catalogue
