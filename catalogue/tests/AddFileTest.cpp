// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/AddFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "catalogue/Companion.h"
#include "catalogue/MixingTags.h"
#include "catalogue/testing/FakeTagReader.h"
#include "catalogue/track_table.h"

namespace catalogue {
namespace {

using std::chrono::milliseconds;

std::string CellOf(const TrackCells& cells, int column) {
  return cells[static_cast<std::size_t>(column - 1)];
}

FileTags WithBlock(std::string block) {
  FileTags tags;
  tags.text_block = std::move(block);
  return tags;
}

TEST(AddFileTest, ARowTakesEveryCellFromTheTag) {
  FileTags tags{"Artist",
                "Title",
                "Album",
                "Genre",
                "1999",
                "128",
                "PEA\r\n-3.5\r\nSMP\r\n1.250",
                {},
                milliseconds(225900),
                320,
                48000};
  const TrackCells expected{"Artist", "Title", "03:45", "/m/a.mp3", "128.00", "Genre", "Album",
                            "1999",   "320",   "48000", "-3.5",     "1.250",  ""};
  EXPECT_EQ(TrackRow("/m/a.mp3", tags), expected);
}

TEST(AddFileTest, WhatTheTagDoesNotGiveIsEmpty) {
  const TrackCells cells = TrackRow("a.mp3", {});
  for (const int column : {track::kArtist, track::kBpm, track::kYear, track::kBitrate, track::kFreq,
                           track::kGain, track::kEndMixPoint}) {
    EXPECT_EQ(CellOf(cells, column), "") << column;
  }
  EXPECT_EQ(CellOf(cells, track::kTime), "00:00");
}

TEST(AddFileTest, AFileWithoutATitleIsCalledByItsName) {
  const std::pair<const char*, const char*> names[] = {{"/m/One - Two.mp3", "Two"},
                                                       {"C:\\m\\a.b.flac", "a.b"},
                                                       {"noextension", "noextension"},
                                                       {"/m/.hidden", ".hidden"},
                                                       {"/m.x/file", "file"}};
  for (const auto& [path, title] : names) EXPECT_EQ(CellOf(TrackRow(path, {}), track::kTitle), title);
}

TEST(AddFileTest, OnlyANumberIsATempo) {
  const std::pair<const char*, const char*> tempos[] = {
      {"128", "128.00"}, {" 127.955 ", "127.95"}, {"0", ""},  {"fast", ""},
      {"-3", ""},        {"1e300", ""},           {"nan", ""}};
  for (const auto& [text, cell] : tempos) {
    FileTags tags;
    tags.bpm = text;
    EXPECT_EQ(CellOf(TrackRow("a.mp3", tags), track::kBpm), cell) << text;
  }
}

TEST(AddFileTest, TheEndOfTheNameTellsTheKind) {
  const std::pair<const char*, FileKind> kinds[] = {
      {"a.mp3", FileKind::Audio},    {"a.KAR", FileKind::MidiSong},  {"a.Kar", FileKind::MidiSong},
      {"a.mid", FileKind::MidiSong}, {"a.cdg", FileKind::DiscImage}, {"a.midi", FileKind::Audio},
      {"a.flac", FileKind::Audio},   {"", FileKind::Audio},          {"ar", FileKind::Audio}};
  for (const auto& [path, kind] : kinds) EXPECT_EQ(KindOf(path), kind) << path;
}

TEST(AddFileTest, ADiscImageIsAnalysedThroughItsMp3) {
  testing::FakeTagReader reader;
  reader.AddFile("/k/S.mp3");
  const auto row = AnalyseFile(reader, "/k/S.CDG");
  ASSERT_TRUE(row.Ok());
  EXPECT_EQ(CellOf(row.Value(), track::kFilename), "/k/S.mp3");
}

TEST(AddFileTest, AFileThatCannotBeAnalysedIsRefusedWithASentence) {
  testing::FakeTagReader reader;
  EXPECT_EQ(AnalyseFile(reader, "none.mp3").Failure().text, "There is no file \"none.mp3\".");
  EXPECT_EQ(AnalyseFile(reader, "/k/song.kar").Failure().code, support::ErrorCode::Unsupported);
  EXPECT_EQ(reader.Reads(), 1);
}

TEST(MixingTagsTest, KeysMatchInAnyLetterCaseAndTheNextLineIsTheValue) {
  const MixingTags tags =
      ScanTextBlock("comment\r\npea\r\n 2.5\r\nSmp\r\n1.000\r\nEMP\r\n200.5\r\nbpm\r\n99.00");
  EXPECT_EQ(tags.gain, " 2.5");
  EXPECT_EQ(tags.start_mix_point, "1.000");
  EXPECT_EQ(tags.end_mix_point, "200.5");
  EXPECT_EQ(tags.bpm, "99.00");
}

TEST(MixingTagsTest, AKeyOnTheLastLineHasNoValue) {
  EXPECT_FALSE(ScanTextBlock("SMP\r\n1\r\nPEA").gain);
  EXPECT_FALSE(ScanTextBlock("PEA\r\n").gain);
}

TEST(MixingTagsTest, TheFirstOfTwoEqualKeysWins) {
  EXPECT_EQ(ScanTextBlock("PEA\r\n1\r\nPEA\r\n2\r\n").gain, "1");
}

TEST(MixingTagsTest, AKeyIsAWholeLine) {
  const MixingTags tags = ScanTextBlock("PEA 1\r\nx\r\n SMP\r\ny\r\nBPM:\r\nz");
  EXPECT_FALSE(tags.gain || tags.start_mix_point || tags.bpm);
}

TEST(MixingTagsTest, AUserItemWinsOverTheTextBlockWhichFillsTheRest) {
  FileTags tags = WithBlock("PEA\r\n1\r\nBPM\r\n120");
  tags.user_items = {{"PEA", "7"}, {"BPM", "80"}, {"Smp", "3"}};
  const MixingTags mixing = MixingTagsOf(tags);
  EXPECT_EQ(mixing.gain, "7");
  EXPECT_EQ(mixing.bpm, "120");
  EXPECT_FALSE(mixing.start_mix_point);
}

TEST(MixingTagsTest, ATempoOfTheBlockWinsOverTheTagsOwn) {
  FileTags tags = WithBlock("BPM\r\n121.5");
  tags.bpm = "120";
  EXPECT_EQ(CellOf(TrackRow("a.mp3", tags), track::kBpm), "121.5");
}

TEST(CompanionTest, ItIsFoundWhateverTheLetterCaseAndTheSameSpellingFirst) {
  namespace fs = std::filesystem;
  const fs::path folder = fs::path(::testing::TempDir()) / "companions";
  fs::remove_all(folder);
  fs::create_directories(folder / "dir.mp3");
  for (const char* name : {"S.MP3", "x.Mp3", "X.mP3", "dir.cdg"}) std::ofstream(folder / name) << "x";
  const auto beside = [&](const char* name) {
    return fs::path(CompanionOf((folder / name).string(), "mp3")).filename().string();
  };
  EXPECT_EQ(beside("S.CDG"), "S.MP3");
  EXPECT_EQ(beside("s.cdg"), "S.MP3");
  EXPECT_EQ(beside("x.cdg"), "x.Mp3");
  EXPECT_EQ(beside("none.cdg"), "");
  EXPECT_EQ(beside("dir.cdg"), "") << "a folder";
  EXPECT_EQ(AudioPathOf((folder / "S.CDG").string()), (folder / "S.MP3").string());
  EXPECT_EQ(AudioPathOf("/nowhere/T.CDG"), "/nowhere/T.mp3");
  fs::remove_all(folder);
}

}  // namespace
}  // namespace catalogue
