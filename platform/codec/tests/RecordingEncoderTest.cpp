// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <random>

#include "platform/codec/FfmpegDecoder.h"
#include "platform/codec/FfmpegEncoderFactory.h"
#include "platform/codec/WavEncoder.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/files/testing/FaultyDisk.h"

namespace platform::codec {
namespace {

using ::testing::HasSubstr;
using Readable = engine::EncoderFormat::Readable;

/// Files that are written as a recording is, and what stands in them.
class RecordingEncoder : public ::testing::TestWithParam<const char*> {
 protected:
  static engine::EncoderFormat Format(int rate = 44100) {
    engine::EncoderFormat format;
    format.sample_rate = rate;
    format.readable = Readable::AllAlong;
    format.title = "The evening";
    format.date = "2026-11-21";
    return format;
  }
  static std::vector<float> Music(std::size_t frames) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> noise(-0.1F, 0.1F);
    std::vector<float> stereo;
    for (std::size_t i = 0; i < frames; ++i) {
      stereo.insert(stereo.end(), 2, 0.5F * std::sin(0.03F * static_cast<float>(i)) + noise(random));
    }
    return stereo;
  }
  std::unique_ptr<engine::Encoder> Begin(const std::string& path, const engine::EncoderFormat& format) {
    auto opened = factory_.Open(path, format);
    EXPECT_TRUE(opened) << (opened ? "" : opened.Failure().text);
    return opened ? std::move(opened).Value() : nullptr;
  }
  static std::vector<std::int16_t> Decoded(const std::string& path) {
    auto opened = FfmpegDecoder::Open(path);
    if (!opened) return {};
    std::vector<std::int16_t> all, piece(1 << 16);
    for (auto read = opened.Value()->Read(piece); read && read.Value() > 0;
         read = opened.Value()->Read(piece)) {
      all.insert(all.end(), piece.begin(), piece.begin() + static_cast<long>(2 * read.Value()));
    }
    return all;
  }
  /// Opus always comes back at its own rate.
  static double Seconds(const std::string& path) {
    const double rate = GetParam() == std::string_view("opus") ? 48000 : 44100;
    return static_cast<double>(Decoded(path).size()) / 2 / rate;
  }
  std::string Path() { return media_.PathOf(std::string("evening.") + GetParam()); }

  FfmpegEncoderFactory factory_;
  testing::MediaMaker media_;
};

TEST_P(RecordingEncoder, ReadsUpToItsLastFlushWithoutEverBeingFinished) {
  auto encoder = Begin(Path(), Format());
  for (int i = 0; i < 50; ++i) {
    ASSERT_TRUE(encoder->Write(Music(4410)));
    ASSERT_TRUE(encoder->Flush());
  }
  const std::string left = media_.PathOf(std::string("left.") + GetParam());
  std::filesystem::copy_file(Path(), left);
  const double seconds = Seconds(left);
  EXPECT_GT(seconds, 5 - 0.45);
  EXPECT_LT(seconds, 5.05);
  EXPECT_THAT(testing::MediaMaker::BytesOf(left), HasSubstr("The evening"));
  const auto repaired = factory_.Repair(left);
  ASSERT_TRUE(repaired);
  EXPECT_NEAR(repaired.Value(), seconds, 0.1);
}

TEST_P(RecordingEncoder, LosesNothingWhenItIsFinished) {
  auto encoder = Begin(Path(), Format());
  const std::vector<float> music = Music(3 * 44100);
  for (std::size_t from = 0; from < music.size(); from += 7560) {
    ASSERT_TRUE(encoder->Write(std::span(music).subspan(from, 7560)));
  }
  ASSERT_TRUE(encoder->Finish());
  EXPECT_NEAR(Seconds(Path()), 3, 0.06);
}

TEST_P(RecordingEncoder, NeverReplacesWhatIsThere) {
  media_.WriteBytes(std::filesystem::path(Path()).filename().string(), "dear");
  EXPECT_FALSE(factory_.Open(Path(), Format()));
  EXPECT_EQ(testing::MediaMaker::BytesOf(Path()), "dear");
}

TEST_P(RecordingEncoder, LeavesAWholeFileOnADiskThatIsFull) {
  constexpr std::size_t kWhole = 1 << 20;
  files::testing::FaultyDisk disk(kWhole);
  FfmpegEncoderFactory on_full_disk(disk);
  auto opened = on_full_disk.Open(Path(), Format());
  ASSERT_TRUE(opened);
  disk.FailFrom(60, ENOSPC);
  int written = 0;
  support::Result<void> went;
  for (; went && written < 1000; ++written) {
    went = opened.Value()->Write(Music(4410));
    if (went) went = opened.Value()->Flush();
  }
  ASSERT_FALSE(went);
  EXPECT_THAT(went.Failure().text, HasSubstr("no room left"));
  static_cast<void>(opened.Value()->Finish());
  opened.Value().reset();
  EXPECT_GT(static_cast<double>(Decoded(Path()).size()) / 8820 + 7, written);
}

INSTANTIATE_TEST_SUITE_P(Formats, RecordingEncoder, ::testing::Values("wav", "flac", "ogg", "opus", "mp3"),
                         [](const auto& format) { return std::string(format.param); });

class WholeNumbers : public RecordingEncoder {};

TEST_P(WholeNumbers, OfSixteenBitsAreDitheredAndStayTrueOnAverage) {
  constexpr float kQuarterStep = 0.25F / 32768;  // nothing at all, were it merely rounded
  auto encoder = Begin(Path(), Format());
  ASSERT_TRUE(encoder->Write(std::vector<float>(2 * 100'000, kQuarterStep)));
  ASSERT_TRUE(encoder->Finish());
  double sum = 0, squares = 0;
  const auto decoded = Decoded(Path());
  ASSERT_EQ(decoded.size(), 200'000U);
  for (const int sample : decoded) {
    EXPECT_LE(std::abs(sample), 2);
    sum += sample;
    squares += sample * sample;
  }
  EXPECT_NEAR(sum / 200'000, 0.25, 0.01);
  // Triangular noise of two steps has a variance of 1/6, rounding adds 1/12.
  EXPECT_NEAR(squares / 200'000 - 0.0625, 0.25, 0.02);
}

TEST_P(WholeNumbers, OfTwentyFourBitsKeepEveryStep) {
  engine::EncoderFormat format = Format();
  format.bits = 24;
  auto encoder = Begin(Path(), format);
  std::vector<float> steps;
  for (int i = 0; i < 20'000; ++i) steps.push_back(static_cast<float>(i - 10'000) / 8388608);
  ASSERT_TRUE(encoder->Write(steps));
  ASSERT_TRUE(encoder->Finish());
  const auto decoded = Decoded(Path());  // as 16 bits, which a step of 24 reaches each 256
  ASSERT_EQ(decoded.size(), steps.size());
  EXPECT_NEAR(decoded[0], -10'000 / 256.0, 1);
  EXPECT_NEAR(decoded[19'999], 9'999 / 256.0, 1);
}

INSTANTIATE_TEST_SUITE_P(Formats, WholeNumbers, ::testing::Values("wav", "flac"),
                         [](const auto& format) { return std::string(format.param); });

class Repair : public RecordingEncoder {};

TEST_P(Repair, TakesOffWhatIsNotWholeAndTellsTheLengthThatIsLeft) {
  auto encoder = Begin(Path(), Format());
  for (int i = 0; i < 20; ++i) ASSERT_TRUE(encoder->Write(Music(4410)));
  encoder.reset();  // no Flush: the head tells nothing
  const auto size = std::filesystem::file_size(Path());
  std::filesystem::resize_file(Path(), size - 1001);
  ASSERT_TRUE(factory_.Repair(Path()));
  EXPECT_LT(std::filesystem::file_size(Path()), size - 1001);
  auto opened = FfmpegDecoder::Open(Path());
  ASSERT_TRUE(opened);
  EXPECT_EQ(opened.Value()->EstimatedFrames().value_or(0),
            static_cast<std::int64_t>(Decoded(Path()).size() / 2));
  EXPECT_GT(Decoded(Path()).size() / 2, 44100U * 2 - 2 * 4608 - 4608);
}

TEST_P(Repair, LeavesForeignBytesAlone) {
  for (const std::size_t bytes : {10U, 41U, 5000U}) {
    const std::string path = media_.Random("foreign." + std::string(GetParam()), bytes);
    const std::string before = testing::MediaMaker::BytesOf(path);
    static_cast<void>(factory_.Repair(path));
    EXPECT_EQ(testing::MediaMaker::BytesOf(path), before);
  }
}

INSTANTIATE_TEST_SUITE_P(Formats, Repair, ::testing::Values("wav", "flac"),
                         [](const auto& format) { return std::string(format.param); });

TEST(RecordingEncoders, LeaveNoFileWhereTheyCannotWriteOne) {
  const testing::MediaMaker media;
  const std::string path = media.WriteBytes("fast.mp3", {});
  std::filesystem::remove(path);
  engine::EncoderFormat format;
  format.sample_rate = 96'000;
  format.readable = engine::EncoderFormat::Readable::AllAlong;
  EXPECT_FALSE(FfmpegEncoderFactory().Open(path, format));
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(WavHeads, OfOthersAreReadNoFurtherThanTheyGo) {
  std::vector<std::uint8_t> head(56);
  for (const auto& [place, text] :
       {std::pair<std::size_t, std::string_view>{0, "RIFF"}, {8, "WAVE"}, {12, "JUNK"}, {48, "data"}}) {
    std::copy(text.begin(), text.end(), head.begin() + static_cast<std::ptrdiff_t>(place));
  }
  EXPECT_EQ(WavDataPlace(head), 0U);
}

TEST(WavHeads, TellSizesBeyondFourGibibytes) {
  const testing::MediaMaker media;
  engine::EncoderFormat format;
  format.title = "odd";
  constexpr std::int64_t kFiveGib = std::int64_t{5} << 30;
  const auto head = WavHead(format, kFiveGib);
  EXPECT_EQ(WavDataPlace(head), head.size());
  const std::string path =
      media.WriteBytes("long.wav", {reinterpret_cast<const char*>(head.data()), head.size()});
  std::error_code error;
  std::filesystem::resize_file(path, head.size() + kFiveGib, error);  // a hole: no disk is filled
  ASSERT_FALSE(error);
  auto opened = FfmpegDecoder::Open(path);
  ASSERT_TRUE(opened);
  EXPECT_EQ(opened.Value()->EstimatedFrames().value_or(0), kFiveGib / 4);
  const auto repaired = FfmpegEncoderFactory().Repair(path);
  ASSERT_TRUE(repaired);
  EXPECT_NEAR(repaired.Value(), kFiveGib / 4 / 44100.0, 1);
}

}  // namespace
}  // namespace platform::codec
