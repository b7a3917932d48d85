// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/library/SeratoBlocks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <taglib/flacfile.h>
#include <taglib/generalencapsulatedobjectframe.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/xiphcomment.h>

#include <bit>

#include "platform/codec/testing/MediaMaker.h"
#include "platform/library/LibraryFiles.h"

namespace platform::library {
namespace {

using catalogue::ForeignCue;
using catalogue::ForeignTempo;
using codec::testing::MediaMaker;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Kind = ForeignCue::Kind;
using namespace std::string_literals;
using namespace std::chrono_literals;

std::string Big(std::uint32_t number) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(number >> shift & 0xFF);
  return bytes;
}

std::string Big(float number) {
  return Big(std::bit_cast<std::uint32_t>(number));
}

std::string InSevens(std::uint32_t number) {
  std::string bytes;
  for (int shift = 21; shift >= 0; shift -= 7) bytes += static_cast<char>(number >> shift & 0x7F);
  return bytes;
}

/// Without padding, a line of 72 letters after the other.
std::string ToBase64(const std::string& bytes) {
  constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t bit = 0, letters = 0; bit < bytes.size() * 8; bit += 6, ++letters) {
    const auto byte = [&](std::size_t i) {
      return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U;
    };
    const unsigned pair = byte(bit / 8) << 8 | byte(bit / 8 + 1);
    if (letters > 0 && letters % 72 == 0) text += '\n';
    text += kLetters[pair >> (10 - bit % 8) & 63];
  }
  return text;
}

std::string Entry(const std::string& name, const std::string& data) {
  return name + '\0' + Big(static_cast<std::uint32_t>(data.size())) + data;
}

std::string CueEntry(int index, std::uint32_t ms, const std::string& name) {
  return Entry("CUE", "\0"s + static_cast<char>(index) + Big(ms) + "\0\xCC\x00\x10\0\0"s + name + '\0');
}

std::string LoopEntry(int index, std::uint32_t from, std::uint32_t to) {
  return Entry("LOOP", "\0"s + static_cast<char>(index) + Big(from) + Big(to) + "\xFF\xFF\xFF\xFF"s +
                           "\0\x27\xAA\xE1\0\0L\0"s);
}

std::string Markers2(const std::string& entries) {
  return "\x01\x01" + ToBase64("\x01\x01" + entries + '\0') + '\0';
}

std::string Marker(std::uint32_t ms, int type) {
  return '\0' + InSevens(ms) + "\x7F\x7F\x7F\x7F\x7F"s + std::string(6, '\0') + InSevens(0x00CC00) +
         static_cast<char>(type) + '\0';
}

std::string Grid() {
  return "\x01\0"s + Big(2U) + Big(0.5F) + Big(8U) + Big(4.5F) + Big(130.0F) + '\0';
}

struct Taken {
  catalogue::ForeignTrack track;
  std::vector<std::string> damaged;
};
Taken Take(const SeratoBlocks& blocks) {
  catalogue::LibraryWatch watch;
  Gathered gathered(catalogue::LibraryKind::Serato, watch);
  Taken taken;
  taken.damaged = TakeBlocks(blocks, gathered, taken.track);
  return taken;
}

TEST(SeratoBlocksTest, CuesLoopsAndTemposAreTaken) {
  const auto [track, damaged] = Take({"",
                                      Markers2(Entry("COLOR", "\0\xFF\xFF\xFF"s) + CueEntry(3, 1500, "Drop") +
                                               Entry("FLIP", "abc") + LoopEntry(0, 2000, 4000)),
                                      Grid()});
  EXPECT_THAT(track.cues, ElementsAre(ForeignCue{Kind::Cue, 1.5, 0, 3, "Drop", "#cc0010"},
                                      ForeignCue{Kind::Loop, 2, 4, 8, "L", "#27aae1"}));
  EXPECT_THAT(track.grid, ElementsAre(ForeignTempo{0.5, 120, 1}, ForeignTempo{4.5, 130, 1}));
  EXPECT_THAT(damaged, IsEmpty());
}

TEST(SeratoBlocksTest, TheOlderBlockWinsAndLeavesTheName) {
  const std::string older =
      "\x02\x05" + Big(2U) + Marker(9000, 1) + '\x7F' + Marker(1, 1).substr(1) + "\0\0\0\0"s;
  const auto track = Take({older, Markers2(CueEntry(0, 1000, "A") + CueEntry(1, 2000, "B")), ""}).track;
  EXPECT_THAT(track.cues, ElementsAre(ForeignCue{Kind::Cue, 9, 0, 0, "A", "#00cc00"},
                                      ForeignCue{Kind::Cue, 2, 0, 1, "B", "#cc0010"}));
}

TEST(SeratoBlocksTest, TextOfEveryLengthIsDecoded) {
  for (const auto& [text, bytes] : {std::pair("QUJD", "ABC"),
                                    {"QUI", "AB"},
                                    {"QUI=", "AB"},
                                    {"QQ==", "A"},
                                    {"QU\nJD", "ABC"},
                                    {"QUJDQ", "ABC@"},
                                    {"", ""}}) {
    EXPECT_EQ(Base64(text), bytes) << text;
  }
}

TEST(SeratoBlocksTest, CountsAreNotBelieved) {
  const std::string huge = Big(0xFFFFFFFFU);
  const auto taken =
      Take({"\x02\x05" + huge + Marker(1000, 1), Markers2(CueEntry(2, 2000, "C") + "CUE" + '\0' + huge),
            "\x01\0"s + huge + Big(0.5F) + Big(4U)});
  EXPECT_EQ(taken.track.cues.size(), 2u);
  EXPECT_THAT(taken.track.grid, IsEmpty());
  EXPECT_THAT(taken.damaged, ElementsAre("Serato Markers2", "Serato BeatGrid"));
  const float nan = std::bit_cast<float>(0x7FC00000U);
  EXPECT_THAT(Take({"", "", "\x01\0"s + Big(1U) + Big(nan) + Big(120.0F)}).track.grid, IsEmpty());
  EXPECT_THAT(Take({"", "", "\x01\0"s + Big(1U) + Big(-0.1F) + Big(120.0F)}).track.grid.at(0).beat, 2);
}

class SeratoFilesTest : public ::testing::Test {
 protected:
  std::string Sound(const char* name) const {
    return media_.Write(name, codec::testing::Tone(200ms, {}, {22050, 1}), 32'000);
  }
  static std::string Wrapped(const std::string& name, const std::string& block) {
    return ToBase64("application/octet-stream\0\0"s + name + '\0' + block);
  }
  static catalogue::ForeignTrack Read(const std::string& path) {
    catalogue::LibraryWatch watch;
    const auto read = LibraryFiles().Read(path, watch);
    EXPECT_TRUE(read) << read.Failure().text;
    return read && !read.Value().tracks.empty() ? read.Value().tracks[0] : catalogue::ForeignTrack{};
  }
  MediaMaker media_;
  const std::string markers_ = Markers2(CueEntry(0, 1000, "A"));
};

TEST_F(SeratoFilesTest, EveryKindOfTagIsReadWhateverItsName) {
  const std::string mp3 = Sound("a.mp3");
  TagLib::MPEG::File mpeg(mp3.c_str());
  auto* const frame = new TagLib::ID3v2::GeneralEncapsulatedObjectFrame;
  frame->setDescription("Serato Markers2");
  frame->setObject({markers_.data(), static_cast<unsigned>(markers_.size())});
  mpeg.ID3v2Tag(true)->addFrame(frame);
  ASSERT_TRUE(mpeg.save());
  const std::string flac = Sound("b.flac");
  TagLib::FLAC::File free(flac.c_str());
  free.xiphComment(true)->addField("SERATO_MARKERS_V2", Wrapped("Serato Markers2", markers_));
  ASSERT_TRUE(free.save());
  const std::string m4a = Sound("c.m4a");
  TagLib::MP4::File mp4(m4a.c_str());
  mp4.tag()->setItem("----:com.serato.dj:markersv2",
                     TagLib::StringList(TagLib::String(Wrapped("Serato Markers2", markers_))));
  ASSERT_TRUE(mp4.save());
  std::filesystem::rename(flac, media_.PathOf("b.txt"));
  for (const std::string& path : {mp3, media_.PathOf("b.txt"), m4a}) {
    EXPECT_THAT(Read(path).cues, ElementsAre(ForeignCue{Kind::Cue, 1, 0, 0, "A", "#cc0010"})) << path;
  }
}

TEST_F(SeratoFilesTest, AFileWithoutMarksSaysSo) {
  catalogue::LibraryWatch watch;
  const auto read = LibraryFiles().Read(Sound("a.mp3"), watch);
  ASSERT_FALSE(read);
  EXPECT_EQ(read.Failure().text, "a.mp3 carries no marks of another program.");
}

}  // namespace
}  // namespace platform::library
