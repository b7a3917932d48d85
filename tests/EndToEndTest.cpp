// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The whole program as a user has it: the real window, driven by events on its widgets, the real engine, and
// a real sound server of the test's own whose sinks are recorded.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "catalogue/IndexFile.h"
#include "platform/audio/testing/MonitorRecorder.h"
#include "platform/audio/testing/SoundServer.h"
#include "platform/codec/testing/Measure.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/files/DiskFileSaver.h"
#include "tests/testing/ProgramUser.h"
#include "ui/widgets/LevelMeter.h"

namespace {

namespace fs = std::filesystem;
using platform::audio::testing::kEightChannels;
using platform::audio::testing::MonitorRecorder;
using platform::audio::testing::SinkSpec;
using platform::audio::testing::SoundServer;
using platform::codec::testing::Channel;
using platform::codec::testing::LevelAt;
using platform::codec::testing::MediaMaker;
using platform::codec::testing::Peak;
using platform::codec::testing::Seconds;
using platform::codec::testing::Tones;
using platform::codec::testing::Voice;

constexpr double kLeftHz = 997, kRightHz = 1511;
constexpr double kLeftLevel = 0.2, kRightLevel = 0.4;

/// With a tone to play.
class EndToEnd : public tests::testing::ProgramUser {
 protected:
  void SetUp() override {
    ProgramUser::SetUp();
    const Voice voices[] = {{kLeftHz, kLeftLevel}, {kRightHz, kRightLevel}};
    track_ = media_.Write("tone.flac", Tones(Seconds(30), voices));
  }

  /// Drops the tone on the catalogue and loads it on deck 1 by a double click.
  void LoadTheTone() {
    DropFiles({track_}, "Catalogue");
    ASSERT_TRUE(Eventually([&] { return Rows("Catalogue") == 1; }));
    DoubleClickRow("Catalogue", 0);
    ASSERT_TRUE(Eventually([&] { return Elapsed() == "00:00 / 00:30"; })) << Elapsed();
  }
  void WriteIndex(const std::vector<std::string>& paths) {
    catalogue::track_table table(catalogue::TrackColumns());
    for (const std::string& path : paths) {
      table.SetCell(table.AddRow(), catalogue::track::kFilename, path);
    }
    platform::files::DiskFileSaver saver;
    ASSERT_TRUE(catalogue::SaveIndex(saver, home_ / "tlv.ndx", table));
  }
  /// Row from 0.
  void Load(int row, int deck) {
    ClickRow("Catalogue", row);
    Click(deck == 1 ? "LoadOnDeck1" : "LoadOnDeck2");
  }
  /// The line below the title, where the deck says why it is empty.
  std::string Sentence(const char* deck) { return TextOf((std::string(deck) + "Artist").c_str()); }
  std::string Elapsed() { return TextOf("deck1Elapsed"); }
  /// Whole seconds that deck 1 shows as heard.
  int Second() { return std::atoi(Elapsed().substr(3, 2).c_str()); }
  /// How far the deck is from real time after so many seconds of play, in seconds.
  double ErrorAfter(int seconds) {
    const int first = Second() + 1;
    if (!Eventually([&] { return Second() >= first; })) return 1e9;
    const auto begin = std::chrono::steady_clock::now();
    if (!Eventually([&] { return Second() >= first + seconds; })) return 1e9;
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    return took.count() - seconds;
  }
  /// The meter of deck 1 shows the tone's two levels.
  bool MeterShowsTheTone() {
    const auto [left, right] = Find<ui::LevelMeter>("deck1Level").Shown();
    return std::abs(left - 20 * std::log10(kLeftLevel)) < 1 &&
           std::abs(right - 20 * std::log10(kRightLevel)) < 1;
  }

  /// A channel of a sink, where the left tone comes out.
  struct Ear {
    const char* sink;
    int channels, channel;
  };
  /// Level of the left tone in the newest third of a second.
  static double LevelNow(const MonitorRecorder& recorder, const Ear& ear) {
    const auto samples = recorder.Samples();
    const std::size_t third = 14'700 * static_cast<std::size_t>(ear.channels);
    if (samples.size() < third) return 0;
    return LevelAt({std::span(samples).last(third), ear.channels, ear.channel}, kLeftHz, 44100);
  }
  /// Deck 1 plays; its fader and its cue button each move what they belong to and nothing else.
  void ExpectTwoIndependentOutputs(const SoundServer& server, const Ear& main, const Ear& phones) {
    const MonitorRecorder main_sound(server.Address(), main.sink, main.channels);
    const MonitorRecorder phones_sound(server.Address(), phones.sink, phones.channels);
    const auto heard = [&](bool wanted_main, bool wanted_phones) {
      return Eventually([&] {
        const double main_level = LevelNow(main_sound, main), phones_level = LevelNow(phones_sound, phones);
        return std::abs(main_level - (wanted_main ? kLeftLevel : 0)) < 0.005 &&
               (wanted_phones ? phones_level > kLeftLevel / 4 : phones_level < 0.001);
      });
    };
    Click("deck1Play");
    EXPECT_TRUE(heard(true, false));
    ASSERT_TRUE(Eventually([&] { return Find("deck1Cue").isEnabled(); })) << "no head-phones";
    Click("deck1Cue");
    EXPECT_TRUE(heard(true, true));
    QTest::keyClick(&Find("deck1Volume"), Qt::Key_Home);
    EXPECT_TRUE(heard(false, true));
  }

  MediaMaker media_;
  std::string track_;
};

TEST_F(EndToEnd, ALoadedTrackIsHeardOnTheChosenPairOfTheChosenDeviceOnly) {
  SoundServer server({{"main", "Main Out"}, {"surround", "Surround", kEightChannels}});
  ASSERT_TRUE(server.Running());
  Start(server.Address());
  Click("Page2");
  Choose("Device1", "Surround");
  Choose("Speaker1", "Rear");
  Click("Page1");
  LoadTheTone();
  MonitorRecorder surround(server.Address(), "surround", 8);
  MonitorRecorder main(server.Address(), "main", 2);
  Click("deck1Play");
  ASSERT_TRUE(surround.AwaitSound(3 * 44100));

  const auto samples = surround.Samples();
  // The second before the last: the whole of it sounds.
  const auto heard = std::span(samples).last(2 * 44100 * 8).first(44100 * 8);
  const auto level = [&](int channel, double frequency) {
    return LevelAt({heard, 8, channel}, frequency, 44100);
  };
  EXPECT_NEAR(level(2, kLeftHz), kLeftLevel, 0.01);
  EXPECT_NEAR(level(3, kRightHz), kRightLevel, 0.01);
  EXPECT_LT(level(2, kRightHz), 0.001);
  EXPECT_LT(level(3, kLeftHz), 0.001);
  for (const int silent : {0, 1, 4, 5, 6, 7}) EXPECT_EQ(Peak({heard, 8, silent}), 0) << "channel " << silent;
  const auto elsewhere = main.Samples();
  EXPECT_EQ(Peak({elsewhere, 2, 0}), 0);
  EXPECT_TRUE(Eventually([&] { return MeterShowsTheTone(); }));
}

TEST_F(EndToEnd, MainAndHeadPhonesAreIndependentOnTwoDevices) {
  SoundServer server({{"main", "Main Out"}, {"phones", "Phones"}});
  ASSERT_TRUE(server.Running());
  Start(server.Address());
  Click("Page2");
  Choose("Device3", "Phones");
  Click("Page1");
  LoadTheTone();
  ExpectTwoIndependentOutputs(server, {"main", 2, 0}, {"phones", 2, 0});
}

TEST_F(EndToEnd, MainAndHeadPhonesAreIndependentOnTwoPairsOfOneDevice) {
  SoundServer server(std::vector<SinkSpec>{{"surround", "Surround", kEightChannels}});
  ASSERT_TRUE(server.Running());
  Start(server.Address());
  Click("Page2");
  Choose("Speaker1", "Front");
  Choose("Device3", "Surround");
  Choose("Speaker3", "Rear");
  Click("Page1");
  LoadTheTone();
  ExpectTwoIndependentOutputs(server, {"surround", 8, 0}, {"surround", 8, 2});
}

TEST_F(EndToEnd, WithoutASoundServerPositionKeepsRealTimeAndLevelsMove) {
  StartWithoutServer();
  LoadTheTone();
  EXPECT_FALSE(MeterShowsTheTone());
  Click("deck1Play");
  EXPECT_TRUE(Eventually([&] { return MeterShowsTheTone(); }));
  EXPECT_NEAR(ErrorAfter(4), 0, 0.2);
  Click("deck1Play");
  EXPECT_TRUE(Eventually([&] { return !MeterShowsTheTone(); }));
}

TEST_F(EndToEnd, AServerThatDiesInMidPlayStopsNoDeckAndIsUsedAgainWhenItIsBack) {
  SoundServer server(std::vector<SinkSpec>{{"main", "Main Out"}});
  ASSERT_TRUE(server.Running());
  Start(server.Address());
  LoadTheTone();
  Click("deck1Play");
  ASSERT_TRUE(Eventually([&] { return Second() >= 2; }));
  server.Kill();
  EXPECT_NEAR(ErrorAfter(4), 0, 0.3);
  EXPECT_TRUE(MeterShowsTheTone());
  ASSERT_TRUE(server.Start());
  MonitorRecorder main(server.Address(), "main", 2);
  ASSERT_TRUE(main.AwaitSound(2 * 44100));
  const auto samples = main.Samples();
  EXPECT_NEAR(LevelAt({std::span(samples).last(44100), 2, 0}, kLeftHz, 44100), kLeftLevel, 0.01);
}

TEST_F(EndToEnd, AFileThatCannotBePlayedLeavesItsDeckEmptyWithASentenceAndStopsNothingElse) {
  const std::string whole = media_.Write("whole.wav", Tones(Seconds(1), std::array{Voice{}, Voice{}}));
  const std::string broken[] = {
      media_.PathOf("missing.mp3"),
      media_.Empty("empty.ogg"),
      media_.FirstBytes(whole, "cut.wav", 30),
      media_.WriteBytes("zero.mp3", std::string(5000, '\0')),
      media_.Renamed(track_, "other.mp3"),
      media_.Text("letter.flac"),
      media_.Random("noise.wma", 20'000),
  };
  WriteIndex({track_, broken[0], broken[1], broken[2], broken[3], broken[4], broken[5], broken[6]});
  StartWithoutServer();
  Load(0, 1);
  ASSERT_TRUE(Eventually([&] { return Elapsed() == "00:00 / 00:30"; }));
  Click("deck1Play");
  for (int i = 0; i < std::ssize(broken); ++i) {
    const std::string name = fs::path(broken[i]).filename().string();
    Load(i + 1, 2);
    EXPECT_TRUE(Eventually([&] { return Sentence("deck2").starts_with(name + " "); })) << Sentence("deck2");
    EXPECT_FALSE(Find("deck2Play").isEnabled()) << name;
  }
  EXPECT_NEAR(ErrorAfter(2), 0, 0.2);
}

}  // namespace

int main(int argc, char* argv[]) {
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
