// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/settings/SettingsText.h"

#include <gtest/gtest.h>

#include <ostream>
#include <random>
#include <string>

namespace platform::settings {
namespace {

SettingName In(std::string_view section, std::string_view key) {
  return {"TLVG", section, key};
}

SettingsText Read(std::string_view text) {
  auto parsed = SettingsText::Parse(text);
  EXPECT_TRUE(parsed.has_value()) << text;
  return parsed.value_or(SettingsText());
}

TEST(SettingsText, StandsUnderItsHeadingWithCrLf) {
  SettingsText text;
  text.Set(In("Mixer", "MixTime"), "8");
  text.Set(In("Setup", "UseK8000"), "True");
  text.Set(In("Mixer", "Volume"), "99");
  EXPECT_EQ(text.Text(), "[TLVG/Mixer]\r\nMixTime=8\r\nVolume=99\r\n\r\n[TLVG/Setup]\r\nUseK8000=True\r\n");
}

struct Entry {
  std::string key;
  std::string value;
  friend void PrintTo(const Entry& entry, std::ostream* out) {
    *out << '"' << entry.key << "=" << entry.value << '"';
  }
};

class EverySetting : public ::testing::TestWithParam<Entry> {};

TEST_P(EverySetting, ComesBackAsItWasSet) {
  SettingsText text;
  text.Set(In("S", "before"), "1");
  text.Set(In("S", GetParam().key), GetParam().value);
  const SettingsText back = Read(text.Text());
  EXPECT_EQ(back.Get(In("S", GetParam().key)), GetParam().value);
  EXPECT_EQ(back.Get(In("S", "before")), "1");
  EXPECT_EQ(back.Text(), text.Text());
}

INSTANTIATE_TEST_SUITE_P(Values, EverySetting,
                         ::testing::Values(Entry{"a", ""}, Entry{"a", "C:\\music\\new\\"},
                                           Entry{"a", "1\r\n2\n3\r"}, Entry{"a", "x=y"},
                                           Entry{"a", "[TLVG/S]"}, Entry{"a", "  spaces  "},
                                           Entry{"a", "\\r\\n"}, Entry{"a", "Caf\xE9 \xC3\xA9"},
                                           Entry{"", "x"}, Entry{"[a", "b]"}, Entry{";a", "b"},
                                           Entry{"#a", "b"}, Entry{"\\[a", "b"}, Entry{" a ", "b"},
                                           Entry{"a\\b", "c"}, Entry{" [indented heading", "]"},
                                           Entry{"\t;indented remark", "b"}, Entry{"\\ [a", "b]"}));

TEST(SettingsText, KeepsWhatItCannotReadWhereItStands) {
  const std::string garbage =
      "stray=1\r\n\xFF\xFE half a line\r\n[TLVG/Mixer]\r\n; a "
      "remark\r\nMixTime=8\r\n???\r\n[open\r\n\r\n[Other]\r\nx=1\r\n";
  SettingsText text = Read(garbage);
  EXPECT_EQ(text.Text(), garbage);
  text.Set(In("Mixer", "New"), "n");
  text.Set(In("Mixer", "MixTime"), "9");
  EXPECT_EQ(text.Text(),
            "stray=1\r\n\xFF\xFE half a line\r\n[TLVG/Mixer]\r\n; a "
            "remark\r\nMixTime=9\r\n???\r\n[open\r\nNew=n\r\n\r\n"
            "[Other]\r\nx=1\r\n");
}

TEST(SettingsText, TakesAnyLineEndAndTheLastOfTwoEqualKeys) {
  SettingsText text = Read("\xEF\xBB\xBF[TLVG/A]\nk=1\rk=2\n[TLVG/B]\n[TLVG/A]\nk=3\nlast=no end");
  EXPECT_EQ(text.Get(In("A", "k")), "3");
  EXPECT_EQ(text.Get(In("A", "last")), "no end");
  text.Set(In("A", "k"), "4");
  EXPECT_EQ(Read(text.Text()).Get(In("A", "k")), "4");
}

TEST(SettingsText, WithASecondByteOrderMarkReadsTheSameWhenWritten) {
  const SettingsText text = Read("\xEF\xBB\xBF\xEF\xBB\xBF[TLVG/A]\r\nk=1\r\n");
  EXPECT_EQ(text.Get(In("A", "k")), "1");
  EXPECT_EQ(Read(text.Text()).Text(), text.Text());
}

TEST(SettingsText, OfAnotherKindIsNone) {
  EXPECT_FALSE(SettingsText::Parse("{\"a\": 1}").has_value());
  EXPECT_FALSE(SettingsText::Parse(std::string(4096, '\0')).has_value());
  EXPECT_TRUE(SettingsText::Parse("").has_value());
  EXPECT_TRUE(SettingsText::Parse("\r\n \r\n").has_value());
}

TEST(SettingsText, OfAnyBytesTakesASettingAndGivesItBack) {
  std::mt19937 seed(1);
  const std::string alphabet("[]=/\\\r\n;#aT \0\xFF", 15);
  for (int round = 0; round < 2000; ++round) {
    std::string bytes = "[TLVG/S]\r\n";
    for (int i = 0; i < 60; ++i) bytes += alphabet[seed() % alphabet.size()];
    SettingsText text = Read(bytes);
    std::erase(bytes, '\0');  // values hold none
    text.Set(In("S", "k"), bytes);
    const SettingsText back = Read(text.Text());
    ASSERT_EQ(back.Get(In("S", "k")), bytes);
    ASSERT_EQ(back.Text(), text.Text());
  }
}

}  // namespace
}  // namespace platform::settings
