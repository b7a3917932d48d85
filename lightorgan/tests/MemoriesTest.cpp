// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/Memories.h"

#include <gtest/gtest.h>

namespace lightorgan {
namespace {

TEST(Memories, AFileIsReadWhateverItHolds) {
  using namespace std::string_view_literals;
  const struct {
    std::string_view text;
    std::size_t memories;
  } kFiles[] = {{""sv, 0},
                {"[K80 a\r\nBEAT"sv, 1},
                {"["sv, 0},
                {"[]\n[K80]\n[K8]\n"sv, 1},
                {"x\r[K80]\ry"sv, 1},
                {"[K80]\0\n\0[K80]\n"sv, 1},
                {"[K80 b]]\n\n\n"sv, 1}};
  for (const auto& file : kFiles) {
    const auto memories = ParseMemories(file.text);
    EXPECT_EQ(memories.size(), file.memories) << file.text;
    EXPECT_EQ(ParseMemories(MemoryText(memories)), memories) << file.text;
  }
}

}  // namespace
}  // namespace lightorgan
