// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FileNames.h"

#include <gtest/gtest.h>

namespace support {
namespace {

TEST(FileNames, AreGoodForEverySystemAndStick) {
  const struct {
    std::string_view text, name;
  } cases[] = {{"Anna Berg - Morning", "Anna Berg - Morning"},
               {"AC/DC: \"Live\" <1> | a*b?\\", "AC-DC- 'Live' -1- - a-b--"},
               {"Wait...", "Wait"},
               {"  dots . . ", "dots"},
               {"line\nend\tand\x7F", "line-end-and-"},
               {"con", "_con"},
               {"NUL.tar", "_NUL.tar"},
               {"Lpt9", "_Lpt9"},
               {"COM10", "COM10"},
               {"Console", "Console"},
               {"..", "_"},
               {"", "_"},
               {"Beyonc\xC3\xA9", "Beyonc\xC3\xA9"},
               {"Beyonc\xE9 - Halo", "Beyonc\xC3\xA9 - Halo"},
               {"\xC3", "\xC3\x83"},
               {"a\xED\xA0\x80z", "a\xC3\xAD\xC2\xA0_z"},
               {"\xF0\x9F\x8E\xB5 song", "\xF0\x9F\x8E\xB5 song"}};
  for (const auto& each : cases) EXPECT_EQ(CleanFileName(each.text), each.name);
}

TEST(FileNames, AreCutBetweenTwoCharacters) {
  EXPECT_EQ(CleanFileName("ab\xC3\xA9z", 3), "ab");
  EXPECT_EQ(CleanFileName("ab\xC3\xA9z", 4), "ab\xC3\xA9");
  EXPECT_EQ(CleanFileName("abc. def", 4), "abc");
}

}  // namespace
}  // namespace support
