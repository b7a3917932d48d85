// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/codec/testing/MediaMaker.h"
#include "platform/files/testing/HundredKills.h"
#include "platform/tags/TagFileEditor.h"

namespace {

using catalogue::TagEdit;
using catalogue::TagField;
using catalogue::TagUndo;
using platform::codec::testing::MediaMaker;
using platform::files::testing::Death;
using platform::files::testing::FaultyDisk;
using platform::files::testing::KillHundredTimes;
using platform::tags::TagFileEditor;

/// A program that edits a file's tag, takes every second edit back, and renames the file between the two.
class KilledTags : public ::testing::TestWithParam<const char*> {
 protected:
  [[nodiscard]] std::string Other() const { return path_ + "2"; }
  [[nodiscard]] std::string Present() const { return std::filesystem::exists(path_) ? path_ : Other(); }

  void EditForEver(FaultyDisk& disk) const {
    TagFileEditor editor(disk);
    for (int i = 0;; ++i) {
      const std::string path = Present();
      TagEdit edit;
      edit[TagField::Artist] = "Artist " + std::to_string(i % 2 == 0 ? i : i * 1'000'000);
      edit[TagField::Title] = *edit[TagField::Artist];
      const auto written = editor.Write(path, edit);
      if (!written) return;
      if (i % 2 == 1 && !editor.Undo(path, written.Value())) return;
      if (!editor.Rename(path, path == path_ ? Other() : path_)) return;
    }
  }
  /// One file, under one of its names, with all of its sound and fields that belong together.
  void ExpectWhole() const {
    ASSERT_NE(std::filesystem::exists(path_), std::filesystem::exists(Other()));
    const auto read = TagFileEditor().Read(Present());
    ASSERT_TRUE(read) << read.Failure().text;
    EXPECT_EQ(read.Value()[TagField::Artist], read.Value()[TagField::Title]);
    EXPECT_EQ(read.Value()[TagField::Album], "stays");
  }

  MediaMaker media_;
  const std::string path_ =
      media_.Write(GetParam(), platform::codec::testing::Tone(std::chrono::milliseconds(500)));
};

TEST_P(KilledTags, LeaveEveryFileWhole) {
  TagEdit edit;
  edit[TagField::Album] = "stays";
  ASSERT_TRUE(TagFileEditor().Write(path_, edit));
  KillHundredTimes(
      2000, static_cast<int>(std::filesystem::file_size(path_) / 2000),
      [&](FaultyDisk& disk) { EditForEver(disk); }, [&](const Death&) { ExpectWhole(); });
}

INSTANTIATE_TEST_SUITE_P(Formats, KilledTags, ::testing::Values("a.mp3", "a.ogg"));

}  // namespace
