// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// What the window shows of a karaoke song that lamps and visualisers follow.
#include <fstream>

#include "karaoke/testing/MidiBytes.h"
#include "support/testing/TemporaryFolder.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/VisualSurface.h"

namespace ui::testing {
namespace {

class HeardSongShown : public Booth {
 protected:
  void Sing(karaoke::testing::TrackBytes track) {
    const auto song = songs.Path() / "song.kar";
    std::ofstream(song, std::ios::binary)
        << karaoke::testing::FileBytes({track.Event(4800, {0x90, 60, 100}).End()});
    station->Songs().Play({song.string(), "", "A song"});
    Settle();
    workers.RunAll();
    Advance(500ms);
  }

  support::testing::TemporaryFolder songs;
};

TEST_F(HeardSongShown, TheLightOrganSaysThatItFollowsItsBeats) {
  Open();
  Press(Qt::Key_5, Qt::ControlModifier);
  Click("cmdK80005");
  Settle();
  EXPECT_EQ(TextOf("BeatState"), QStringLiteral("Waits for music that is heard."));
  Sing(karaoke::testing::UsualHead());
  EXPECT_EQ(TextOf("BeatState"), QStringLiteral("Follows the beats of the karaoke song: 120.0 BPM."));
  station->Songs().SetTempo(10);
  Settle();
  EXPECT_EQ(TextOf("BeatState"), QStringLiteral("Follows the beats of the karaoke song: 132.0 BPM."));
}

TEST_F(HeardSongShown, WhatIsToBeToldOfItStandsUnderItsTitle) {
  Open();
  Click("Page3");
  Sing(karaoke::testing::UsualHead());
  EXPECT_EQ(TextOf("SongNote"), QStringLiteral("This song brings no words for the singers."));
  Sing(karaoke::testing::UsualHead().Name("Words").Text(480, "/la"));
  EXPECT_EQ(TextOf("SongNote"), QString());
}

}  // namespace
}  // namespace ui::testing
