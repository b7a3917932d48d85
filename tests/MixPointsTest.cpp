// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "decks/MixPointScan.h"
#include "decks/testing/PlainMixPoints.h"
#include "engine/SoundEngine.h"
#include "engine/VirtualOutputs.h"
#include "engine/testing/FakeStretchers.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "platform/codec/testing/MediaMaker.h"
#include "support/Executor.h"

namespace {

using namespace std::chrono_literals;
using platform::codec::testing::Format;
using platform::codec::testing::MediaMaker;
using platform::codec::testing::Noise;
using platform::codec::testing::Silence;
using platform::codec::testing::Sound;
using platform::codec::testing::Tone;

class Unwatched final : public decks::ScanProgress {
 public:
  void Busy(double) override {}
};

/// The real engine, without outputs, over real files.
class MixPointsOfFiles : public ::testing::TestWithParam<std::string_view> {
 protected:
  music::MixPoints Scan(const std::string& path, int percent = 3) {
    const auto found = decks::MixPointScan(engine_, engine_).Run({path, 2, percent}, unwatched_);
    return found.value_or(music::MixPoints{{-1}, {-1}, {-1}, -1, -1});
  }
  /// Everything that the file decodes to, read by a decoder outside the engine.
  Sound Decoded(const std::string& path) {
    const bool flac = path.ends_with("flac"), wma = path.ends_with("wma");
    const auto kind = flac  ? engine::DecoderKind::Flac
                      : wma ? engine::DecoderKind::Wma
                            : engine::DecoderKind::General;
    const auto decoder = std::move(decoders_.Open(path, kind)).Value();
    Sound sound{decoder->Format().sample_rate, decoder->Format().channels, {}};
    std::vector<std::int16_t> piece(static_cast<std::size_t>(sound.channels) * 4096);
    for (;;) {
      const auto got = decoder->Read(piece);
      if (!got || got.Value() == 0) return sound;
      const auto samples = static_cast<std::ptrdiff_t>(got.Value() * sound.channels);
      sound.samples.insert(sound.samples.end(), piece.begin(), piece.begin() + samples);
    }
  }
  void ExpectThePlainReading(const std::string& path, int percent = 3) {
    const Sound sound = Decoded(path);
    const auto channels = static_cast<std::size_t>(sound.channels);
    const music::MixPoints found = Scan(path, percent);
    EXPECT_EQ(found.start.value, decks::testing::PlainStart(sound.samples, percent, channels)) << path;
    EXPECT_EQ(found.end.value, decks::testing::PlainEnd(sound.samples, percent, channels)) << path;
    EXPECT_EQ(found.length.value, static_cast<std::int64_t>(2 * sound.samples.size())) << path;
  }

  MediaMaker media_;
  engine::VirtualTime time_;
  engine::VirtualOutputs outputs_{time_, {}};
  platform::codec::FfmpegDecoderFactory decoders_;
  engine::testing::FakeStretchers stretchers_;
  support::ThreadPool workers_{1};
  engine::SoundEngine engine_{{outputs_, decoders_, stretchers_, workers_, time_},
                              engine::SoundEngine::Feeding::ByHand};
  Unwatched unwatched_;
};

TEST_P(MixPointsOfFiles, EqualThePlainReadingOfTheDecodedSamples) {
  const std::string extension(GetParam());
  const Sound stereo = Silence(1.3s) + Noise(3s, 0.4) + Silence(2.1s);
  const Sound mono = Silence(700ms, {22050, 1}) + Noise(1s, 0.05, {22050, 1}) + Silence(4s, {22050, 1});
  ExpectThePlainReading(media_.Write("stereo." + extension, stereo));
  ExpectThePlainReading(media_.Write("mono." + extension, mono, 64'000));
  ExpectThePlainReading(media_.Write("loud." + extension, stereo), 60);
  ExpectThePlainReading(media_.Write("silent." + extension, Silence(2s)));
  ExpectThePlainReading(media_.Write("jingle." + extension, Noise(200ms, 0.4)));
}

TEST_P(MixPointsOfFiles, LieWithinThirtyMillisecondsOfTheKnownSilence) {
  const std::string extension(GetParam());
  const music::MixPoints found =
      Scan(media_.Write("known." + extension, Silence(1.3s) + Tone(3s, {700, 0.2}) + Silence(2.1s)));
  const bool lossless = extension == "flac" || extension == "wav";
  const double tolerance = lossless ? 10 / 44100.0 : 0.030;
  EXPECT_NEAR(found.start_seconds, 1.3, tolerance);
  EXPECT_NEAR(found.end_seconds, 4.3, tolerance);
}

TEST_P(MixPointsOfFiles, OfABrokenFileAreThoseOfWhatCanBeRead) {
  const std::string extension(GetParam());
  const std::string whole = media_.Write("whole." + extension, Silence(1s) + Noise(3s, 0.4));
  const std::string cut = media_.CutAt(whole, "cut." + extension, 0.6);
  if (extension != "m4a") ExpectThePlainReading(cut);  // whose table of contents lies at the end
  EXPECT_EQ(Scan(media_.Random("random." + extension, 5000)).length.value, -1);
  EXPECT_EQ(Scan(media_.PathOf("gone." + extension)).length.value, -1);
}

INSTANTIATE_TEST_SUITE_P(Formats, MixPointsOfFiles, ::testing::ValuesIn(MediaMaker::kExtensions),
                         [](const auto& format) { return std::string(format.param); });

TEST_F(MixPointsOfFiles, KeepWholeFramesOfSixChannels) {
  const Format surround{48000, 6};
  ExpectThePlainReading(media_.Write(
      "six.wav", Silence(500ms, surround) + Noise(400ms, 0.4, surround) + Silence(800ms, surround)));
}

}  // namespace
