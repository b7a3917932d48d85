// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/MemoryFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <array>
#include <csignal>
#include <string_view>

namespace platform::files {
namespace {

TEST(MemoryFileTest, WhatWasAppendedIsReadFromItsStart) {
  MemoryFile memory;
  for (const std::string_view part : {"so", "und"}) EXPECT_TRUE(memory.Append(part));
  const auto file = memory.Take();
  ASSERT_TRUE(file);
  EXPECT_EQ(file->size, 5);
  std::array<char, 8> read{};
  EXPECT_EQ(std::fread(read.data(), 1, read.size(), file->file.get()), 5U);
  EXPECT_STREQ(read.data(), "sound");
}

TEST(MemoryFileTest, AFileThatDidNotFindRoomIsNoFile) {
  // What a file may be is limited as memory is: a write ends with an error.
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit little{1000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &little);
  MemoryFile memory;
  const bool took = memory.Append(std::array<char, 4000>{});
  const bool more = memory.Append(std::array<char, 1>{});
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_FALSE(took);
  EXPECT_FALSE(more);
  EXPECT_FALSE(memory.Take());
}

}  // namespace
}  // namespace platform::files
