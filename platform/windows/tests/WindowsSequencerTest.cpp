// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/WindowsSequencer.h"

#include <gtest/gtest.h>

#include "karaoke/Karaoke.h"

namespace platform::windows {
namespace {

TEST(WindowsSequencerTest, AFileThatIsNotThereIsRefusedInWords) {
  WindowsSequencer sequencer;
  karaoke::Karaoke karaoke(sequencer);
  karaoke.TakeSong("C:\\nowhere\\gone.mid", {});
  const auto opened = karaoke.KarOpenDevice();
  ASSERT_FALSE(opened);
  EXPECT_NE(opened.Failure().text, "Unknown Error.");
  EXPECT_FALSE(karaoke.Play());
}

}  // namespace
}  // namespace platform::windows
