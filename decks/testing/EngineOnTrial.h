// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <memory>
#include <span>
#include <string>
#include <utility>

#include "decks/ports/AudioEngine.h"
#include "decks/ports/SoundControl.h"

namespace decks::testing {

using namespace std::chrono_literals;

/// A file of the contract: a tone of 1 kHz with these peaks of 32768, from its first frame to its last.
struct ToneFile {
  int frames = 2 * 44100;
  int sample_rate = 44100;
  int channels = 2;
  int left = 16384;
  int right = 8192;
};

[[nodiscard]] inline std::int16_t SampleOf(const ToneFile& file, std::int64_t frame, int channel) {
  const double phase = 2 * 3.14159265358979 * 1000 * static_cast<double>(frame) / file.sample_rate;
  return static_cast<std::int16_t>(std::lround((channel == 0 ? file.left : file.right) * std::sin(phase)));
}

/// Where a stream sounds.
struct SoundingAt {
  int device = 0;
  int pair = 0;  ///< 1 to 4; 0 is every speaker
  bool operator==(const SoundingAt&) const = default;
};

struct Attributes {
  int frequency, volume, pan;
  bool operator==(const Attributes&) const = default;
};

/// Silence of its own rate.
class SilentGenerator final : public support::SoundGenerator {
 public:
  SilentGenerator(int rate, std::int64_t frames) : rate_(rate), frames_(frames) {}
  [[nodiscard]] int SampleRate() const noexcept override { return rate_; }
  [[nodiscard]] std::int64_t Length() const noexcept override { return frames_; }
  [[nodiscard]] support::GeneratorVoice& Voice(std::size_t number) noexcept override {
    return voices_[number];
  }

 private:
  class Silence final : public support::GeneratorVoice {
   public:
    void Begin(std::int64_t) override {}
    void SetSpeed(double) override {}
    void Make(std::span<float> left, std::span<float> right) override {
      std::fill(left.begin(), left.end(), 0.0F);
      std::fill(right.begin(), right.end(), 0.0F);
    }
  };
  const int rate_;
  const std::int64_t frames_;
  std::array<Silence, kVoices> voices_;
};

/// What every sound engine promises. T gives it by Calls() and Control(), with outputs 1 and 2, of which the
/// second has four pairs of speakers, and 3, which is listed and cannot be opened; AddFile(path, ToneFile);
/// Advance(time); and Where(stream), of the only one that plays. What is mixed is heard within kSoon.
template <typename T>
class EveryEngine : public ::testing::Test {
 protected:
  static constexpr auto kSoon = 20ms;
  static constexpr double kFrames = 0.02 * 44100;  ///< of that time
  static constexpr int kSecond = 44100 * 4;        ///< of "tone.mp3", in bytes

  EveryEngine() {
    given_.AddFile("tone.mp3", ToneFile{});
    given_.AddFile("mono.ogg", ToneFile{.frames = 48'000, .sample_rate = 48'000, .channels = 1});
  }
  AudioEngine& Calls() { return given_.Calls(); }
  SoundControl& Control() { return given_.Control(); }
  void Advance(support::Duration time) { given_.Advance(time); }

  void OpenOutput(int device) {
    ASSERT_TRUE(Calls().BASS_Init(device, 44100, kInitSpeakers));
    ASSERT_TRUE(Calls().BASS_SetDevice(device));
  }
  StreamHandle Decoder(const std::string& path = "tone.mp3", std::uint64_t length = 0,
                       std::uint32_t flags = 0) {
    const StreamHandle decoder = Calls().BASS_StreamCreateFile(false, path, 0, length, kStreamDecode | flags);
    Advance(kSoon);
    return decoder;
  }
  StreamHandle Stream(StreamHandle decoder) {
    const StreamHandle stream = Calls().BASS_FX_TempoCreate(decoder, kTempoFreeSource | kTempoLoop);
    Advance(kSoon);
    return stream;
  }
  /// On output 1.
  StreamHandle Load(const std::string& path = "tone.mp3") {
    OpenOutput(1);
    return Stream(Decoder(path));
  }
  StreamHandle LoadAndPlay(const std::string& path = "tone.mp3") {
    const StreamHandle stream = Load(path);
    EXPECT_TRUE(Calls().BASS_ChannelPlay(stream, false));
    return stream;
  }
  /// What is said of a stream: "active playing ended", each where it is so, and the place in tenths of a
  /// second.
  std::string State(StreamHandle stream) {
    const HeardStream heard = Control().Heard(stream);
    std::string text = Calls().BASS_ChannelIsActive(stream) ? "active " : "";
    if (heard.playing) text += "playing ";
    if (heard.ended) text += "ended ";
    const double seconds = Calls().BASS_ChannelBytes2Seconds(stream, Calls().BASS_ChannelGetPosition(stream));
    EXPECT_EQ(Calls().BASS_ChannelGetPosition(stream).value,
              heard.frame.value * 2 * Control().FormatOf(stream).channels);
    return text + std::to_string(std::lround(seconds * 10));
  }
  /// -1 everywhere where there are none.
  Attributes AttributesOf(StreamHandle stream) {
    Attributes all{-1, -1, -1};
    const bool there = Calls().BASS_ChannelGetAttributes(stream, all.frequency, all.volume, all.pan);
    EXPECT_EQ(there, all.volume >= 0);
    return all;
  }
  std::pair<int, int> Level(StreamHandle stream) {
    const std::uint32_t both = Calls().BASS_ChannelGetLevel(stream);
    const HeardStream heard = Control().Heard(stream);
    EXPECT_NEAR(heard.left_peak * 32768, both & 0xFFFF, 1);
    EXPECT_NEAR(heard.right_peak * 32768, both >> 16, 1);
    return {both & 0xFFFF, both >> 16};
  }
  void ExpectLevel(StreamHandle stream, int left, int right) {
    const auto [heard_left, heard_right] = Level(stream);
    EXPECT_NEAR(heard_left, left, left / 50);
    EXPECT_NEAR(heard_right, right, right / 50);
  }
  /// Source seconds in a second, over the last quarter of one.
  double SpeedOf(StreamHandle stream) {
    Advance(100ms);
    const double before = static_cast<double>(Control().Heard(stream).frame.value);
    Advance(250ms);
    const HeardStream heard = Control().Heard(stream);
    const double speed = (static_cast<double>(heard.frame.value) - before) / heard.sample_rate * 4;
    EXPECT_NEAR(heard.ratio, speed, 0.1);
    return speed;
  }
  /// Of a handle that is none, or is none any more.
  void ExpectNothing(StreamHandle stream) {
    AudioEngine& calls = Calls();
    calls.BASS_ChannelPause(stream);
    calls.BASS_ChannelStop(stream);
    calls.BASS_ChannelSetAttributes(stream, 22050, 50, 0);
    calls.BASS_FX_TempoSet(stream, 5, 0, 0);
    calls.BASS_FX_DSP_Remove(stream, kPeakingEffect);
    calls.BASS_FX_BPM_Free(stream);
    Control().SetGain(stream, {3});
    Control().CancelScheduled(stream);
    EXPECT_FALSE(calls.BASS_ChannelPlay(stream, false));
    EXPECT_FALSE(calls.BASS_ChannelSetPosition(stream, {0}));
    EXPECT_FALSE(calls.BASS_ChannelIsActive(stream));
    EXPECT_EQ(calls.BASS_ChannelGetLength(stream).value, 0);
    EXPECT_EQ(calls.BASS_ChannelBytes2Seconds(stream, {kSecond}), 0);
    EXPECT_EQ(AttributesOf(stream), (Attributes{-1, -1, -1}));
    EXPECT_FALSE(calls.BASS_FX_DSP_Set(stream, kPeakingEffect, 0));
    EXPECT_EQ(Level(stream), std::pair(0, 0));
    EXPECT_EQ(Control().NextFrame(stream).value, 0);
    EXPECT_FALSE(Control().Schedule({ScheduledCommand::Kind::Start, stream}));
    EXPECT_FALSE(Control().DecodeFurther(stream));
    EXPECT_EQ(Control().FormatOf(stream), SampleFormat{});
    EXPECT_EQ(Control().Heard(stream).sample_rate, 0);
    EXPECT_EQ(State(stream), "0");
    std::array<std::int16_t, 4> samples{};
    EXPECT_EQ(calls.BASS_ChannelGetData(stream, std::span(samples), 8), 0U);
    std::array<float, 4> heard{};
    EXPECT_EQ(calls.BASS_ChannelGetData(stream, std::span(heard), kDataFloat | sizeof(heard)), 0U);
    EXPECT_EQ(calls.BASS_FX_TempoCreate(stream, kTempoFreeSource), 0U);
    calls.BASS_StreamFree(stream);
  }

  T given_;
};

}  // namespace decks::testing
