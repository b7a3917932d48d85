// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/FfmpegDecoderFactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "platform/archive/testing/ZipMaker.h"
#include "platform/codec/testing/Measure.h"
#include "platform/codec/testing/MediaMaker.h"

namespace platform::codec {
namespace {

using engine::DecoderKind;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using namespace std::chrono_literals;
using testing::Channel;
using testing::MediaMaker;
using testing::Seconds;
using testing::Sound;

DecoderKind KindOf(std::string_view name) {
  if (name.ends_with("flac")) return DecoderKind::Flac;
  return name.ends_with("wma") ? DecoderKind::Wma : DecoderKind::General;
}

class DecoderTest : public ::testing::Test {
 protected:
  support::Result<std::unique_ptr<engine::PcmDecoder>> Open(const std::string& path) {
    return factory_.Open(path, KindOf(path));
  }

  /// The whole file, read in blocks of an odd size.
  Sound Decoded(const std::string& path) {
    auto opened = Open(path);
    EXPECT_TRUE(opened) << opened.Failure().text;
    return opened ? Rest(*opened.Value()) : Sound{};
  }

  static Sound Rest(engine::PcmDecoder& decoder) {
    Sound sound{decoder.Format().sample_rate, decoder.Format().channels, {}};
    std::vector<std::int16_t> block(static_cast<std::size_t>(1013 * sound.channels));
    for (auto read = decoder.Read(block); read && read.Value() > 0; read = decoder.Read(block)) {
      sound.samples.insert(sound.samples.end(), block.begin(), block.begin() + read.Value() * sound.channels);
    }
    return sound;
  }

  /// The sentence with which a file is refused.
  std::string Refusal(const std::string& path, DecoderKind kind) {
    auto opened = factory_.Open(path, kind);
    EXPECT_FALSE(opened);
    return opened ? "" : opened.Failure().text;
  }
  std::string Refusal(const std::string& path) { return Refusal(path, KindOf(path)); }

  static Channel ChannelOf(const Sound& sound, int index) { return {sound.samples, sound.channels, index}; }
  static double Level(const Sound& sound, int channel, double frequency) {
    return testing::LevelAt(ChannelOf(sound, channel), frequency, sound.sample_rate);
  }

  FfmpegDecoderFactory factory_;
  MediaMaker media_;
};

struct FormatCase {
  const char* name;
  int slack;  ///< frames that the codec may add or lose
};

class EveryFormat : public DecoderTest, public ::testing::WithParamInterface<FormatCase> {};

TEST_P(EveryFormat, GivesBackTheToneOfEachChannel) {
  const std::array<testing::Voice, 2> voices{{{440, 0.5}, {1000, 0.25}}};
  const Sound tone = testing::Tones(2s, voices);
  const Sound heard = Decoded(media_.Write(GetParam().name, tone));
  EXPECT_EQ(heard.sample_rate, 44100);
  ASSERT_EQ(heard.channels, 2);
  EXPECT_NEAR(static_cast<double>(heard.Frames()), static_cast<double>(tone.Frames()), GetParam().slack);
  EXPECT_NEAR(Level(heard, 0, 440), 0.5, 0.015);
  EXPECT_NEAR(Level(heard, 1, 1000), 0.25, 0.008);
  EXPECT_LT(Level(heard, 0, 1000), 0.003);
}

TEST_P(EveryFormat, ASoundIsHeardWhereItWasWritten) {
  const Sound clicks = testing::Silence(300ms) + testing::Clicks(1s, 60) + testing::Silence(500ms);
  const Sound heard = Decoded(media_.Write(GetParam().name, clicks));
  std::int64_t loudest = 0;
  for (std::int64_t n = 0; n < heard.Frames(); ++n) {
    if (std::abs(ChannelOf(heard, 0).At(n)) > std::abs(ChannelOf(heard, 0).At(loudest))) loudest = n;
  }
  EXPECT_NEAR(static_cast<double>(loudest), 0.3 * 44100, 2);
}

TEST_P(EveryFormat, EstimatesItsLengthWithinAHundredthOfASecondOrSo) {
  const auto opened = Open(media_.Write(GetParam().name, testing::Tone(3s)));
  ASSERT_TRUE(opened);
  ASSERT_TRUE(opened.Value()->EstimatedFrames().has_value());
  EXPECT_NEAR(static_cast<double>(*opened.Value()->EstimatedFrames()), 3 * 44100, 4500);
}

TEST_P(EveryFormat, CutInHalfPlaysWhatItHas) {
  const std::string whole = media_.Write(GetParam().name, testing::Noise(4s, 0.3));
  const std::string name = std::string("half-") + GetParam().name;
  if (const std::string half = media_.CutAt(whole, name, 0.5); name.ends_with("m4a")) {
    EXPECT_THAT(Refusal(half), StartsWith(name));  // its index was at the end
  } else {
    EXPECT_NEAR(static_cast<double>(Decoded(half).Frames()), 2 * 44100, 0.35 * 44100);
  }
}

TEST_P(EveryFormat, DamagedInTheMiddleIsPlayedToItsEnd) {
  const std::string whole =
      media_.Write(GetParam().name, testing::Noise(4s, 0.3) + testing::Tone(1s, {2000, 0.5}));
  Sound heard = Decoded(media_.DamagedMiddle(whole, std::string("hurt-") + GetParam().name));
  ASSERT_GT(heard.Frames(), 3.8 * 44100);
  heard.samples.erase(heard.samples.begin(), heard.samples.end() - 44100);
  EXPECT_NEAR(Level(heard, 0, 2000), 0.5, 0.05);
}

TEST_P(EveryFormat, BrokenVariantsAreRefusedBySentencesThatNameTheFile) {
  const std::string whole = media_.Write(GetParam().name, testing::Tone(1s));
  const std::string name = std::string("broken-") + GetParam().name;
  for (const std::string& path :
       {media_.Empty(name), media_.Random(name, 50'000), media_.Text(name),
        media_.FirstBytes(whole, name, 20), media_.WriteBytes(name, std::string(50'000, '\0'))}) {
    const std::string sentence = Refusal(path);
    EXPECT_THAT(sentence, StartsWith(name));
    EXPECT_TRUE(sentence.ends_with(".")) << sentence;
  }
}

INSTANTIATE_TEST_SUITE_P(, EveryFormat,
                         ::testing::Values(FormatCase{"tone.mp3", 1200}, FormatCase{"tone.ogg", 600},
                                           FormatCase{"tone.flac", 0}, FormatCase{"tone.wma", 4096},
                                           FormatCase{"tone.wav", 0}, FormatCase{"tone.m4a", 1200}),
                         [](const auto& test) { return std::string(test.param.name).substr(5); });

TEST_F(DecoderTest, LosslessFormatsGiveBackEverySample) {
  const Sound ramp = testing::Ramp(1s);
  EXPECT_EQ(Decoded(media_.Write("ramp.wav", ramp)).samples, ramp.samples);
  EXPECT_EQ(Decoded(media_.Write("ramp.flac", ramp)).samples, ramp.samples);
}

TEST_F(DecoderTest, AnMp3WithGapInformationHasExactlyItsOriginalLengthAndStart) {
  const Sound sound = testing::Silence(500ms) + testing::Tone(1500ms);
  const Sound heard = Decoded(media_.Write("gapless.mp3", sound));
  EXPECT_EQ(heard.Frames(), sound.Frames());
  const Sound head{44100, 2, {heard.samples.begin(), heard.samples.begin() + 2 * 21000}};
  EXPECT_LT(testing::Peak(ChannelOf(head, 0)), 0.03);
}

struct ShapeCase {
  const char* name;
  int sample_rate;
  int channels;
};

class EveryShape : public DecoderTest, public ::testing::WithParamInterface<ShapeCase> {};

TEST_P(EveryShape, KeepsItsOwnRateAndChannels) {
  const auto [name, rate, channels] = GetParam();
  const auto frequency = [](int c) {
    return c == 3 ? 80.0 : 300.0 + 200 * c;
  };  // the LFE takes low ones only
  std::vector<testing::Voice> voices;
  for (int c = 0; c < channels; ++c) voices.push_back({frequency(c), 0.4});
  const Sound heard = Decoded(media_.Write(name, testing::Tones(1s, voices, rate)));
  EXPECT_EQ(heard.sample_rate, rate);
  ASSERT_EQ(heard.channels, channels);
  for (int c = 0; c < channels; ++c)
    EXPECT_NEAR(Level(heard, c, frequency(c)), 0.4, 0.12) << c;  // its place counts here
}

INSTANTIATE_TEST_SUITE_P(, EveryShape,
                         ::testing::Values(ShapeCase{"mono.wav", 44100, 1}, ShapeCase{"mono.mp3", 22050, 1},
                                           ShapeCase{"mono.wma", 44100, 1}, ShapeCase{"phone.wav", 8000, 1},
                                           ShapeCase{"phone.mp3", 8000, 2},
                                           ShapeCase{"studio.flac", 192000, 6},
                                           ShapeCase{"cinema.wav", 48000, 8},
                                           ShapeCase{"cinema.ogg", 48000, 6},
                                           ShapeCase{"odd.wav", 37800, 3}));

TEST_F(DecoderTest, NumbersThatAreNoneBecomeSilence) {
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN(),
                  kInf = std::numeric_limits<float>::infinity();
  std::vector<float> given;
  std::vector<std::int16_t> expected;
  for (int i = 0; i < 50; ++i) {  // enough for the converters that take many at once
    given.insert(given.end(), {0.5F, kNan, -0.5F, kInf, -kInf, 2.0F});
    expected.insert(expected.end(), {16384, 0, -16384, 0, 0, 32767});
  }
  EXPECT_EQ(Decoded(media_.WriteBytes("nan.wav", testing::FloatWavBytes(given))).samples, expected);
}

TEST_F(DecoderTest, NamesAreBytesAndNeverAddresses) {
  for (const char* name : {"Caf\xC3\xA9 \xE2\x99\xAB.wav", "latin \xE9.wav", "http:x.wav", "concat:a|b.wav",
                           "100%d.wav", "file:x.wav", "-.wav", " .wav"}) {
    const Sound ramp = testing::Ramp(100ms);
    EXPECT_EQ(Decoded(media_.Renamed(media_.Write("plain.wav", ramp), name)).samples, ramp.samples) << name;
  }
}

TEST_F(DecoderTest, AChangeOfShapeOnTheWayIsConvertedToTheFirst) {
  const std::string first = media_.Write("a.mp3", testing::Tone(1s, {500, 0.5}, {44100, 2}));
  const std::string second = media_.Write("b.mp3", testing::Tone(1s, {500, 0.5}, {32000, 1}));
  const Sound heard =
      Decoded(media_.WriteBytes("both.mp3", MediaMaker::BytesOf(first) + MediaMaker::BytesOf(second)));
  EXPECT_EQ(heard.sample_rate, 44100);
  ASSERT_EQ(heard.channels, 2);
  EXPECT_NEAR(static_cast<double>(heard.Frames()), 2 * 44100, 6000);
  const Sound tail{44100, 2, {heard.samples.end() - 2 * 30000, heard.samples.end() - 2 * 8000}};
  EXPECT_GT(Level(tail, 0, 500), 0.3);
  EXPECT_GT(Level(tail, 1, 500), 0.3);
}

TEST_F(DecoderTest, JunkBeforeTheFirstFrameOfAnMp3IsPassedOver) {
  const std::string whole = media_.Write("whole.mp3", testing::Tone(2s));
  const Sound heard = Decoded(media_.JunkInFront(whole, "junk.mp3", 30'000));
  EXPECT_NEAR(static_cast<double>(heard.Frames()), 2 * 44100, 4000);
  EXPECT_NEAR(Level(heard, 0, 440), 0.5, 0.03);
}

TEST_F(DecoderTest, ACreatorRefusesWhatBelongsToAnother) {
  const Sound tone = testing::Tone(500ms);
  const std::string flac = media_.Renamed(media_.Write("x.flac", tone), "song.mp3");
  const std::string wma = media_.Renamed(media_.Write("x.wma", tone), "tune.mp3");
  const std::string mp3 = media_.Renamed(media_.Write("x.mp3", tone), "piece.flac");
  EXPECT_EQ(Refusal(flac, DecoderKind::General),
            "song.mp3 holds FLAC audio under another name; rename it to .flac to play it.");
  EXPECT_EQ(Refusal(wma, DecoderKind::General),
            "tune.mp3 holds Windows Media audio under another name; rename it to .wma to play it.");
  EXPECT_EQ(Refusal(mp3, DecoderKind::Flac),
            "piece.flac holds MP3 audio under another name; rename it to .mp3 to play it.");
  EXPECT_TRUE(factory_.Open(flac, DecoderKind::Flac));
}

TEST_F(DecoderTest, TheGeneralCreatorPlaysItsFormatsUnderEachOthersNames) {
  const Sound tone = testing::Tone(1s);
  for (const char* content : {"mp3", "ogg", "wav", "m4a"}) {
    const std::string whole = media_.Write(std::string("x.") + content, tone);
    for (const char* name : {"y.mp3", "y.ogg", "y.wav", "y.m4a", "y", "y.jpg"}) {
      const Sound heard = Decoded(media_.Renamed(whole, name));
      EXPECT_NEAR(static_cast<double>(heard.Frames()), 44100, 1200) << content << " as " << name;
    }
  }
}

TEST_F(DecoderTest, WhatIsNoFileIsRefusedByTheSentenceForIt) {
  EXPECT_EQ(Refusal(media_.PathOf("gone.mp3")), "gone.mp3 was not found; it may have been moved or deleted.");
  EXPECT_THAT(Refusal(media_.PathOf("")), HasSubstr(" is a folder, not an audio file."));
}

TEST_F(DecoderTest, MoreThanEightChannelsAreRefused) {
  std::string bytes = MediaMaker::BytesOf(media_.Write("eight.wav", testing::Ramp(100ms, 2000, {44100, 8})));
  // Headers of eight channels are of the extended kind: channels, block and mask are set apart from the size.
  bytes[22] = 9;
  bytes[32] = 18;
  bytes.replace(40, 4, std::string(4, '\0'));
  EXPECT_EQ(Refusal(media_.WriteBytes("nine.wav", bytes)), "nine.wav has more than 8 channels.");
}

TEST_F(DecoderTest, AClaimedLengthNeverAllocates) {
  std::string bytes = MediaMaker::BytesOf(media_.Write("honest.wav", testing::Ramp(100ms)));
  for (const std::size_t at : {4U, 40U}) bytes.replace(at, 4, "\xF0\xFF\xFF\x7F");
  bytes[43] = '\xFF';
  EXPECT_EQ(Decoded(media_.WriteBytes("liar.wav", bytes)).Frames(), 4410);
}

TEST_F(DecoderTest, EveryCutOfAFileEndsCleanly) {
  for (const std::string_view extension : MediaMaker::kExtensions) {
    const std::string name = "cut." + std::string(extension);
    const std::string whole = media_.Write("whole." + std::string(extension), testing::Tone(300ms));
    for (double part = 0.02; part < 1; part += 0.07) {
      if (auto opened = Open(media_.CutAt(whole, name, part))) {
        EXPECT_LE(Rest(*opened.Value()).Frames(), 20000);
      } else {
        EXPECT_THAT(opened.Failure().text, StartsWith(name));
      }
    }
  }
}

TEST_F(DecoderTest, TheSoundOfAKaraokeArchiveIsHeardAsTheLooseFileIs) {
  for (const std::string_view extension : MediaMaker::kExtensions) {
    const std::string name = "a." + std::string(extension);
    const std::string loose = media_.Write(name, testing::Noise(2s, 0.3));
    const std::string zip = media_.WriteBytes(
        "song.zip", archive::testing::ZipBytes({{name, MediaMaker::BytesOf(loose)}, {"a.cdg", "picture"}}));
    EXPECT_TRUE(Decoded(zip).samples == Decoded(loose).samples) << extension;
  }
}

TEST_F(DecoderTest, WhatIsWrongWithAnArchiveIsSaidOfTheArchive) {
  const auto zip = [&](const std::vector<archive::testing::ToPack>& members) {
    return media_.WriteBytes("song.zip", archive::testing::ZipBytes(members));
  };
  EXPECT_EQ(Refusal(zip({{"a.mp3", "text"}, {"a.cdg", "x"}})),
            "song.zip holds no sound that can be read: it is no audio file, or damaged.");
  EXPECT_EQ(Refusal(zip({{"a.mp3", "text"}})),
            "song.zip is no karaoke archive: there is no picture (.cdg) in it.");
}

TEST_F(DecoderTest, APictureBesideTheSoundIsNoObstacle) {
  // A FLAC picture block that claims more than the file holds.
  std::string bytes = MediaMaker::BytesOf(media_.Write("cover.flac", testing::Ramp(500ms)));
  bytes.insert(42, std::string("\x06\x00\x00\x28", 4) + std::string(40, '\x7F'));
  EXPECT_EQ(Decoded(media_.WriteBytes("cover2.flac", bytes)).Frames(), 22050);
}

}  // namespace
}  // namespace platform::codec
