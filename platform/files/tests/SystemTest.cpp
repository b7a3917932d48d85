// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/System.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/resource.h>

#include <cstdlib>
#include <filesystem>
#include <limits>
#include <memory>
#include <thread>

#include "platform/files/MappedSampleMemory.h"
#include "platform/files/testing/TestFolder.h"

namespace platform::files {
namespace {

TEST(Scratch, IsThereEvenWhenTheNamedFolderIsNot) {
  ::setenv("TMPDIR", "/no/such/folder", 1);
  const auto scratch = ScratchFolder();
  ::unsetenv("TMPDIR");
  EXPECT_TRUE(std::filesystem::is_directory(scratch)) << scratch;
}

TEST(MappedSamples, HoldWhatIsWrittenAndStartSilent) {
  const testing::TestFolder folder;
  MappedSampleMemory memory(folder.Path());
  const auto block = memory.Allocate(1'000'000);
  ASSERT_NE(block, nullptr);
  ASSERT_EQ(block->Samples().size(), 1'000'000U);
  EXPECT_EQ(block->Samples()[999'999], 0);
  block->Samples()[999'999] = -5;
  memory.Warm(*block);
  EXPECT_EQ(block->Samples()[999'999], -5);
  EXPECT_TRUE(folder.Names().empty()) << "nothing that a crash could leave";
}

TEST(MappedSamples, AreRefusedWhereThereIsNoRoom) {
  const testing::TestFolder folder;
  EXPECT_EQ(MappedSampleMemory(folder / "none").Allocate(10), nullptr);
  MappedSampleMemory memory(folder.Path());
  EXPECT_EQ(memory.Allocate(std::numeric_limits<std::size_t>::max()), nullptr);
  EXPECT_EQ(memory.Allocate(std::size_t{1} << 58), nullptr);
  testing::RunInChild([&] {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{1000, 1000};
    setrlimit(RLIMIT_FSIZE, &limit);
    if (memory.Allocate(10'000) == nullptr) std::filesystem::create_directory(folder / "refused");
  });
  EXPECT_TRUE(std::filesystem::exists(folder / "refused"));
}

TEST(MappedSamples, OfNoLengthAreABlockToo) {
  const testing::TestFolder folder;
  MappedSampleMemory memory(folder.Path());
  const auto block = memory.Allocate(0);
  ASSERT_NE(block, nullptr);
  EXPECT_TRUE(block->Samples().empty());
  memory.Warm(*block);
}

TEST(System, KnowsTheFolderOfTheProgram) {
  EXPECT_TRUE(std::filesystem::exists(ExecutableFolder() / "platform_files_tests"));
}

}  // namespace
}  // namespace platform::files
