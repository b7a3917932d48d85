// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/FfmpegEncoderFactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/codec/testing/MediaMaker.h"

namespace platform::codec {
namespace {

using ::testing::HasSubstr;
using namespace std::chrono_literals;

class EncoderTest : public ::testing::Test {
 protected:
  std::string Refusal(const std::string& path, const engine::EncoderFormat& format = {}) {
    const auto opened = factory_.Open(path, format);
    EXPECT_FALSE(opened);
    return opened ? "" : opened.Failure().text;
  }

  FfmpegEncoderFactory factory_;
  testing::MediaMaker media_;
};

TEST_F(EncoderTest, TheSameSamplesGiveTheSameBytes) {
  for (const std::string_view extension : testing::MediaMaker::kExtensions) {
    const std::string name = "." + std::string(extension);
    const testing::Sound tone = testing::Tone(1s);
    EXPECT_EQ(testing::MediaMaker::BytesOf(media_.Write("a" + name, tone)),
              testing::MediaMaker::BytesOf(media_.Write("b" + name, tone)))
        << extension;
  }
}

TEST_F(EncoderTest, SmallAndLargeWritesGiveTheSameFile) {
  const testing::Sound tone = testing::Tone(1s);
  auto encoder = std::move(factory_.Open(media_.PathOf("bits.flac"), {}).Value());
  for (std::size_t from = 0; from < tone.samples.size(); from += 2 * 77) {
    const std::size_t count = std::min<std::size_t>(2 * 77, tone.samples.size() - from);
    ASSERT_TRUE(encoder->Write({tone.samples.data() + from, count}));
  }
  ASSERT_TRUE(encoder->Finish());
  EXPECT_EQ(testing::MediaMaker::BytesOf(media_.PathOf("bits.flac")),
            testing::MediaMaker::BytesOf(media_.Write("whole.flac", tone)));
}

TEST_F(EncoderTest, WhatCannotBeWrittenIsRefusedBySentence) {
  EXPECT_THAT(Refusal(media_.PathOf("x.doc")),
              HasSubstr("x.doc cannot be written: its ending names no format"));
  EXPECT_THAT(Refusal(media_.PathOf("none/x.mp3")), HasSubstr("The folder of"));
  EXPECT_THAT(Refusal(media_.PathOf("x.mp3"), {44100, 9, 192'000}), HasSubstr("1 to 8 channels"));
  EXPECT_THAT(Refusal(media_.PathOf("x.mp3"), {44100, 6, 192'000}), HasSubstr("number of channels"));
  EXPECT_THAT(Refusal(media_.PathOf("x.mp3"), {0, 2, 192'000}), HasSubstr("cannot be written"));
}

TEST_F(EncoderTest, AFullDiskIsToldAndNothingCrashes) {
  const std::string path = media_.PathOf("full.wav");
  std::filesystem::create_symlink("/dev/full", path);  // every write to it finds no room
  auto opened = factory_.Open(path, {});
  bool failed = !opened;
  for (int i = 0; !failed && i < 50; ++i) failed = !opened.Value()->Write(testing::Tone(1s).samples);
  if (!failed) failed = !opened.Value()->Finish();
  EXPECT_TRUE(failed);
}

TEST_F(EncoderTest, AnEncoderThatIsDroppedLeavesNoLeakAndAShortFile) {
  auto encoder = std::move(factory_.Open(media_.PathOf("dropped.ogg"), {}).Value());
  ASSERT_TRUE(encoder->Write(testing::Tone(3s).samples));
  encoder.reset();
  EXPECT_TRUE(std::filesystem::exists(media_.PathOf("dropped.ogg")));
}

}  // namespace
}  // namespace platform::codec
