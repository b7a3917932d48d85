// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace support::testing {
namespace {

using Lines = std::vector<std::string_view>;

TEST(Text, FoldsAsciiLettersAndLeavesEveryOtherByte) {
  EXPECT_EQ(ToUpper("abc\xC3\xA9z{`"), "ABC\xC3\xA9Z{`");
  EXPECT_TRUE(EqualsIgnoringCase("Tlv.NDX", "tLV.ndx"));
  EXPECT_FALSE(EqualsIgnoringCase("abc", "abcd"));
  EXPECT_FALSE(EqualsIgnoringCase("\xC3\xA9", "\xC3\x89"));
}

TEST(Text, TailOfAShortTextIsTheWholeOfIt) {
  EXPECT_EQ(UpperTail("song.flac", 4), "FLAC");
  EXPECT_EQ(UpperTail("a", 4), "A");
  EXPECT_EQ(UpperTail("", 4), "");
}

TEST(Text, SplitGivesOnePartMoreThanSeparators) {
  EXPECT_EQ(Split("a;b;", ';'), (Lines{"a", "b", ""}));
  EXPECT_EQ(Split("", ';'), (Lines{""}));
}

TEST(Text, TrimTakesBlanksAtBothEndsOnly) {
  EXPECT_EQ(Trim(" \ta b\r\n"), "a b");
  EXPECT_EQ(Trim("   "), "");
}

TEST(Text, ANumberIsTheWholeTextOrNone) {
  EXPECT_EQ(ParseInteger("42"), 42);
  EXPECT_EQ(ParseInteger("+7"), 7);
  EXPECT_EQ(ParseInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  for (const char* bad : {"", "+", "4 ", " 4", "4.0", "0x4", "9223372036854775808", "+-3"}) {
    EXPECT_EQ(ParseInteger(bad), std::nullopt) << bad;
  }
  EXPECT_EQ(ParseReal("-2.5"), -2.5);
  for (const char* bad : {"", "2,5", "1.0x", "."}) EXPECT_EQ(ParseReal(bad), std::nullopt) << bad;
}

TEST(Text, ALeadingNumberIsReadAsFarAsItGoes) {
  EXPECT_EQ(LeadingInteger("  12 ms"), 12);
  EXPECT_EQ(LeadingInteger("none"), 0);
  EXPECT_EQ(LeadingInteger(""), 0);
}

TEST(Text, RealsHaveAPointAndTheDecimalsAskedFor) {
  EXPECT_EQ(FormatReal(1.5, 3), "1.500");
  EXPECT_EQ(FormatReal(-0.126, 2), "-0.13");
  EXPECT_EQ(FormatReal(1e300, 0).size(), 301U);
}

TEST(Text, MinutesMayPassNinetyNine) {
  EXPECT_EQ(FormatMinutes(225), "03:45");
  EXPECT_EQ(FormatMinutes(6000), "100:00");
  EXPECT_EQ(FormatMinutes(-3), "00:00");
}

TEST(Text, LinesEndInAnyOfThreeWays) {
  EXPECT_EQ(SplitLines("a\r\nb\nc\rd"), (Lines{"a", "b", "c", "d"}));
  EXPECT_EQ(SplitLines("a\r\n\r\n"), (Lines{"a", ""}));
  EXPECT_EQ(SplitLines("a\n\rb"), (Lines{"a", "", "b"}));
  EXPECT_EQ(SplitLines(""), Lines{});
}

}  // namespace
}  // namespace support::testing
