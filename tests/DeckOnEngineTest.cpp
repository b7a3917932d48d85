// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The deck player on the real engine and decoders, heard on virtual outputs.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "decks/TempoSliders.h"
#include "decks/clsBassPlayer.h"
#include "engine/SoundEngine.h"
#include "engine/VirtualOutputs.h"
#include "engine/testing/SoundStage.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/stretch/LibraryStretcherFactory.h"
#include "support/testing/ManualExecutor.h"

namespace {

using namespace std::chrono_literals;
using engine::testing::EightChannelOutput;
using platform::codec::testing::Format;
using platform::codec::testing::MediaMaker;
using platform::codec::testing::Noise;
using platform::codec::testing::Sound;
using platform::codec::testing::Tone;

/// A deck whose main output is "hall" and whose head-phones are "desk", both with four pairs.
class DeckOnEngine {
 public:
  DeckOnEngine() {
    for (const char* id : {"hall", "desk"}) {
      outputs_.Listen(id, [this, id](std::span<const float> block) {
        for (std::size_t i = 0; i < block.size(); ++i) {
          float& peak = peaks_[id][i % 8];
          finite_ = finite_ && std::isfinite(block[i]);
          peak = std::max(peak, std::abs(block[i]));
        }
      });
    }
    outputs_.BeforeBlock([this] {
      workers_.RunAll();
      engine_.Pump();
    });
    for (const int device : {1, 2}) engine_.BASS_Init(device, 44100, decks::kInitSpeakers);
    deck_.device(1);
  }
  ~DeckOnEngine() { engine_.BASS_Free(); }
  /// From Render to ear, and by how many millionths the head-phones' clock is too fast. Opens both outputs
  /// anew.
  void SetLatencies(support::Duration hall, support::Duration desk, double millionths) {
    engine_.BASS_Free();
    outputs_.SetLatency("hall", hall);
    outputs_.SetLatency("desk", desk);
    outputs_.SetClock("desk", millionths);
    for (const int device : {1, 2}) engine_.BASS_Init(device, 44100, decks::kInitSpeakers);
  }
  /// Milliseconds by which the head-phones are ahead of the hall, as heard.
  double Ahead() {
    const auto hall = engine_.Heard(deck_.STRM());
    const auto desk = engine_.Heard(deck_.PreSTRM());
    return 1000 * static_cast<double>(desk.frame.value - hall.frame.value) / std::max(hall.sample_rate, 1);
  }
  void SetTempo(double percent, decks::KeyLock lock) {
    decks::TempoSliders sliders;
    sliders.percent = percent;
    sliders.key_lock = lock;
    for (const auto stream : {deck_.STRM(), deck_.PreSTRM()}) {
      decks::SetTempo(engine_, stream, sliders, 1, 48000);
    }
  }

  bool Open(const std::string& path) {
    deck_.Filename(path);
    deck_.OpenFile();
    workers_.RunAll();
    return deck_.STRM() != 0;
  }
  void Advance(support::Duration by) { outputs_.Advance(by); }
  /// One for each pair that sounds within the time, "1" or "134".
  std::string Sounding(const char* id, support::Duration within = 300ms) {
    Advance(100ms);  // what was faded out is gone
    peaks_.clear();
    Advance(within);
    std::string pairs;
    for (std::size_t pair = 0; pair < 4; ++pair) {
      // Of an eight-channel output: front, rear, centre and LFE, side.
      constexpr std::array<std::size_t, 4> kFirst{0, 2, 4, 6};
      const auto& peaks = peaks_[id];
      if (std::max(peaks[kFirst[pair]], peaks[kFirst[pair] + 1]) > 0.01F) pairs += std::to_string(pair + 1);
    }
    return pairs;
  }
  [[nodiscard]] bool Finite() const { return finite_; }
  [[nodiscard]] decks::HeardStream Heard() { return engine_.Heard(deck_.STRM()); }
  [[nodiscard]] double Seconds() {
    return static_cast<double>(Heard().frame.value) / std::max(Heard().sample_rate, 1);
  }

 private:
  engine::VirtualTime time_;
  engine::VirtualOutputs outputs_{time_, {EightChannelOutput("hall"), EightChannelOutput("desk")}};
  platform::codec::FfmpegDecoderFactory decoders_;
  platform::stretch::LibraryStretcherFactory stretchers_;
  support::testing::ManualExecutor workers_;
  engine::SoundEngine engine_{{outputs_, decoders_, stretchers_, workers_, time_},
                              engine::SoundEngine::Feeding::ByHand};
  decks::MasterControls controls_;
  std::map<std::string, std::array<float, 8>> peaks_;
  bool finite_ = true;

 public:
  decks::clsBassPlayer deck_{engine_, controls_};
};

using Case = std::tuple<const char*, int, bool>;
class EveryTypeAndPair : public ::testing::TestWithParam<Case> {};

TEST_P(EveryTypeAndPair, IsHeardWhereItShouldAndNowhereElse) {
  const auto [extension, code, phones] = GetParam();
  const MediaMaker media;
  const std::string path = media.Write("t." + std::string(extension), Tone(6s, {440, 0.4}));
  DeckOnEngine on;
  auto& deck = on.deck_;
  const std::string pairs = code == 0 ? "1234" : std::to_string(code);
  deck.Speaker(static_cast<std::int16_t>(code));
  if (phones) deck.PreDevice(2);
  deck.PreSpeaker(static_cast<std::int16_t>(code));
  ASSERT_TRUE(on.Open(path));
  EXPECT_EQ(on.Sounding("hall"), "");
  deck.Play();
  const std::string heard = on.Sounding("hall");
  EXPECT_EQ(code == 0 ? heard.substr(0, 1) : heard, pairs.substr(0, 1));
  EXPECT_EQ(on.Sounding("desk"), "") << "the head-phones begin silent";
  deck.PreVolume(100);
  EXPECT_EQ(on.Sounding("desk").substr(0, 1), phones ? pairs.substr(0, 1) : "");
  deck.PausePlay();
  EXPECT_EQ(on.Sounding("hall") + on.Sounding("desk"), "");
  const double place = on.Seconds();
  EXPECT_GT(place, 1);
  deck.ResumePlay();
  EXPECT_NE(on.Sounding("hall"), "");
  EXPECT_NEAR(on.Seconds(), place + 0.4, 0.1);
  ASSERT_TRUE(on.Open(path));
  EXPECT_EQ(on.Sounding("hall") + on.Sounding("desk"), "") << "a second file stands still";
  deck.Play();
  deck.StopPlay();
  EXPECT_EQ(on.Sounding("hall") + on.Sounding("desk"), "");
  EXPECT_EQ(deck.STRM(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Table, EveryTypeAndPair,
                         ::testing::Combine(::testing::Values("mp3", "flac", "wma"), ::testing::Range(0, 5),
                                            ::testing::Bool()));

/// What a deck does, at the same place in the hall and in the head-phones, as two outputs are heard.
TEST(TwoOutputs, HearADeckAtTheSamePlaceWhateverItDoes) {
  const MediaMaker media;
  const std::string path = media.Write("long.flac", Tone(120s, {440, 0.4}, {48000, 2}));
  for (const auto& [hall, desk] : {std::pair{60ms, 180ms}, std::pair{180ms, 60ms}, std::pair{20ms, 300ms}}) {
    DeckOnEngine on;
    auto& deck = on.deck_;
    on.SetLatencies(hall, desk, 200);
    deck.PreDevice(2);
    ASSERT_TRUE(on.Open(path));
    const auto expect_together = [&](const char* after, support::Duration settled = 700ms) {
      on.Advance(settled);
      for (int i = 0; i < 20; ++i) {
        on.Advance(50ms);
        EXPECT_LT(std::abs(on.Ahead()), 1) << after;
      }
    };
    deck.PlayPrelisten();
    deck.PreVolume(100);
    EXPECT_NE(on.Sounding("desk"), "") << "alone, before Play";
    EXPECT_EQ(on.Sounding("hall"), "");
    deck.Play();
    expect_together("Play");
    deck.StreamTime({30LL * 48000 * 4});
    expect_together("StreamTime");
    EXPECT_NEAR(on.Seconds(), 31.6, 0.4);
    deck.PausePlay();
    on.Advance(500ms);
    deck.ResumePlay();
    expect_together("ResumePlay");
    for (const auto lock : {decks::KeyLock::On, decks::KeyLock::Off}) {
      on.SetTempo(6, lock);
      expect_together("faster", 3s);
    }
    deck.ClosePrelisten();
    on.Advance(2s);
    deck.OpenPrelisten();
    deck.PlayPrelisten();
    expect_together("late");
    deck.OpenMain();
    deck.StreamTime({60LL * 48000 * 4});
    deck.PlayMain();
    expect_together("main output anew", 1s);
  }
}

/// Bad and strange files: each plays to its end and leaves nothing behind.
class StrangeFile : public ::testing::Test {
 protected:
  /// Seconds that the deck was heard to play, up to the limit.
  double Length(const std::string& path, std::chrono::seconds limit = 20s) {
    if (!on_.Open(path)) return -1;
    on_.deck_.Play();
    for (int i = 0; i < 10 * limit.count() && !on_.Heard().ended; ++i) on_.Advance(100ms);
    EXPECT_TRUE(on_.Heard().ended) << path;
    EXPECT_TRUE(on_.Finite()) << path;
    return on_.Seconds();
  }
  static std::string Bytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::string Spoilt(const std::string& name, const std::string& bytes) const {
    std::ofstream(media_.PathOf(name), std::ios::binary) << bytes;
    return media_.PathOf(name);
  }
  MediaMaker media_;
  DeckOnEngine on_;
};

TEST_F(StrangeFile, RatesChannelsAndLengthsPlayToTheirEnd) {
  EXPECT_NEAR(Length(media_.Write("mono8.wav", Noise(2s, 0.3, {8000, 1}))), 2, 0.01);
  EXPECT_NEAR(Length(media_.Write("six192.wav", Noise(2s, 0.3, {192'000, 6}))), 2, 0.01);
  EXPECT_NEAR(Length(media_.Write("jingle.wav", Noise(200ms, 0.3))), 0.2, 0.01);
}

TEST_F(StrangeFile, BrokenFramesAndJunkAreLeftOut) {
  std::string bytes = Bytes(media_.Write("good.mp3", Noise(5s, 0.3)));
  EXPECT_NEAR(Length(Spoilt("junk.mp3", std::string(5000, '\x55') + bytes)), 5, 0.2);
  for (std::size_t at = bytes.size() / 2; at < bytes.size() / 2 + 3000; ++at) bytes[at] = '\x7F';
  EXPECT_NEAR(Length(Spoilt("broken.mp3", bytes)), 5, 0.5);
}

TEST_F(StrangeFile, SamplesThatAreNoNumbersAreSilent) {
  // A WAV file of 32-bit floats, most of which are NaN or infinite.
  std::string bytes = "RIFF    WAVEfmt ";
  const auto put = [&bytes](std::uint64_t value, int size) {
    for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i));
  };
  constexpr std::uint32_t kFrames = 44100;
  put(16, 4), put(3, 2), put(1, 2), put(44100, 4), put(4 * 44100, 4), put(4, 2), put(32, 2);
  bytes += "data";
  put(4 * kFrames, 4);
  for (std::uint32_t i = 0; i < kFrames; ++i)
    put(std::array{0x7FC00000U, 0x7F800000U, 0x3E000000U}[i % 3], 4);
  EXPECT_NEAR(Length(Spoilt("nan.wav", bytes)), 1, 0.01);
}

TEST_F(StrangeFile, ThatIsDeletedOrReplacedWhilePlayingPlaysToItsEnd) {
  const std::string path = media_.Write("gone.mp3", Noise(4s, 0.3));
  ASSERT_TRUE(on_.Open(path));
  on_.deck_.Play();
  on_.Advance(1s);
  std::filesystem::remove(path);
  on_.Advance(1s);
  std::ofstream(path) << "something else";
  EXPECT_NE(on_.Sounding("hall", 1s), "");
  on_.Advance(3s);
  EXPECT_TRUE(on_.Heard().ended);
  EXPECT_NEAR(on_.Seconds(), 4, 0.1);
}

TEST_F(StrangeFile, ThreeHoursAreOneFileLikeAnother) {
  constexpr std::uint32_t kSeconds = 3 * 3600;
  const std::string path = media_.Write("mix.wav", Noise(1s, 0.3, {4000, 1}));
  std::string bytes = Bytes(path);
  const std::size_t data = bytes.find("data") + 4;
  const std::uint32_t size = kSeconds * 4000 * 2;
  for (std::size_t i = 0; i < 4; ++i) bytes[data + i] = static_cast<char>(size >> (8 * i));
  const std::string mix = Spoilt("long.wav", bytes);
  std::filesystem::resize_file(mix, data + 4 + size);  // the rest is a hole in the disk
  ASSERT_TRUE(on_.Open(mix));
  on_.deck_.Play();
  on_.Advance(1s);
  on_.deck_.StreamTime({2LL * 4000 * (kSeconds - 1)});
  on_.Advance(2s);
  EXPECT_TRUE(on_.Heard().ended);
  EXPECT_NEAR(on_.Seconds(), kSeconds, 0.1);
}

TEST_F(StrangeFile, OrNoFileAtAllLeavesADeckThatDoesNothing) {
  EXPECT_FALSE(on_.Open(media_.PathOf("none.mp3")));
  auto& deck = on_.deck_;
  deck.Play();
  deck.volume(50);
  deck.PreVolume(50);
  deck.StreamTime({1000});
  deck.PausePlay();
  deck.ResumePlay();
  EXPECT_EQ(deck.StreamTime().value, 0);
  EXPECT_EQ(on_.Sounding("hall"), "");
  deck.StopPlay();
}

}  // namespace
