// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/library/LibraryFiles.h"
#include "support/Sentences.h"

namespace platform::library {
namespace {

using catalogue::ForeignCue;
using catalogue::ForeignLibrary;
using catalogue::ForeignTempo;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Kind = ForeignCue::Kind;

/// What was read, or nothing and why.
ForeignLibrary Read(const std::string& text, std::string* failure = nullptr) {
  auto read = ReadXmlLibrary(text, "library.xml");
  if (failure != nullptr) *failure = read ? "" : read.Failure().text;
  if (failure == nullptr && !read) ADD_FAILURE() << read.Failure().text;
  return read ? std::move(read).Value() : ForeignLibrary{};
}

ForeignLibrary Rekordbox(const std::string& inside, const std::string& location = "file://localhost/a.mp3") {
  return Read(
      "<?xml version='1.0' encoding='UTF-8'?><DJ_PLAYLISTS><COLLECTION><TRACK TrackID='7' Location='" +
      location + "' Rating='204' Name='T' Artist='A&amp;B' AverageBpm='128.00' Tonality='4m'>" + inside +
      "</TRACK></COLLECTION></DJ_PLAYLISTS>");
}

ForeignLibrary Traktor(const std::string& inside, const std::string& location,
                       const std::string& lists = "") {
  return Read("<NML VERSION='19'><COLLECTION><ENTRY TITLE='T' ARTIST='A'><LOCATION " + location + "/>" +
              inside + "</ENTRY></COLLECTION><PLAYLISTS>" + lists + "</PLAYLISTS></NML>");
}

TEST(RekordboxTest, LocationsBecomePaths) {
  const std::pair<const char*, const char*> kCases[] = {
      {"file://localhost/C:/a%20b/%C3%A9.mp3", "C:/a b/\xC3\xA9.mp3"},
      {"file://localhost/home/dj/100%.mp3", "/home/dj/100%.mp3"},
      {"file:///home/dj/a%2525.mp3", "/home/dj/a%25.mp3"},
      {"file://nas/music/a.mp3", "//nas/music/a.mp3"},
      {"file://localhost/music/../../etc/a.mp3", "/etc/a.mp3"},
  };
  for (const auto& [location, path] : kCases) EXPECT_EQ(Rekordbox("", location).tracks.at(0).path, path);
  // Nothing that a path may hold, and no file at all.
  for (const char* location : {"file://localhost/a%00b.mp3", "http://x/a.mp3", ""}) {
    const ForeignLibrary library = Rekordbox("", location);
    EXPECT_TRUE(library.tracks.empty()) << location;
    EXPECT_EQ(library.notes.size(), 1u) << location;
  }
}

TEST(RekordboxTest, MarksRatingAndNamesAreTaken) {
  const auto track =
      Rekordbox(
          "<POSITION_MARK Name='Drop' Type='0' Start='1.5' Num='2' Red='40' Green='226' Blue='20'/>"
          "<POSITION_MARK Name='' Type='4' Start='10' End='14' Num='-1'/>"
          "<POSITION_MARK Type='4' Start='10' End='9' Num='-1'/>"
          "<POSITION_MARK Type='3' Start='0.1' Num='-1'/>"
          "<POSITION_MARK Type='0' Start='nan' Num='0'/><POSITION_MARK Type='0' Start='-2'/>"
          "<POSITION_MARK Type='0' Start='1e300'/>")
          .tracks.at(0);
  EXPECT_THAT(track.cues, ElementsAre(ForeignCue{Kind::Cue, 1.5, 0, 2, "Drop", "#28e214"},
                                      ForeignCue{Kind::Loop, 10, 14, -1, "", ""},
                                      ForeignCue{Kind::Cue, 10, 0, -1, "", ""},
                                      ForeignCue{Kind::Load, 0.1, 0, -1, "", ""}));
  EXPECT_EQ(track.rating, 4);
  EXPECT_EQ(track.artist, "A&B");
  EXPECT_EQ(track.key, "4m");
  EXPECT_EQ(track.bpm, 128);
}

TEST(RekordboxTest, ATempoForEachBeatIsOneStretch) {
  const auto tempo = [](const char* start, const char* bpm, const char* beat) {
    return std::string("<TEMPO Inizio='") + start + "' Bpm='" + bpm + "' Metro='4/4' Battito='" + beat +
           "'/>";
  };
  const std::string even = tempo("0.5", "120", "3") + tempo("1.0", "120", "4") + tempo("1.503", "120", "1");
  EXPECT_THAT(Rekordbox(even).tracks.at(0).grid, ElementsAre(ForeignTempo{0.5, 120, 3}));
  // Another tempo, a beat out of place, another beat of the bar: each begins a stretch.
  EXPECT_EQ(Rekordbox(even + tempo("2.0", "121", "2")).tracks.at(0).grid.size(), 2u);
  EXPECT_EQ(Rekordbox(even + tempo("2.02", "120", "2")).tracks.at(0).grid.size(), 2u);
  EXPECT_EQ(Rekordbox(even + tempo("2.0", "120", "1")).tracks.at(0).grid.size(), 2u);
  EXPECT_TRUE(Rekordbox(tempo("1", "0", "1") + tempo("nan", "120", "1") + tempo("1", "inf", "1"))
                  .tracks.at(0)
                  .grid.empty());
}

TEST(RekordboxTest, ListsNameTracksByNumberOrPlace) {
  const auto library = Read(
      "<DJ_PLAYLISTS><COLLECTION><TRACK TrackID='7' "
      "Location='file://localhost/a.mp3'/></COLLECTION><PLAYLISTS>"
      "<NODE Type='0' Name='ROOT'><NODE Type='0' Name='2026'><NODE Type='1' Name='May' KeyType='0'>"
      "<TRACK Key='7'/><TRACK Key='8'/></NODE></NODE><NODE Type='1' Name='Top' KeyType='1'>"
      "<TRACK Key='file://localhost/a.mp3'/><TRACK Key='file://localhost/b.mp3'/></NODE></NODE></PLAYLISTS>"
      "</DJ_PLAYLISTS>");
  ASSERT_EQ(library.lists.size(), 2u);
  EXPECT_EQ(library.lists[0].name, "2026/May");
  EXPECT_THAT(library.lists[0].tracks, ElementsAre(0u));
  EXPECT_EQ(library.lists[1].name, "Top");
  EXPECT_THAT(library.lists[1].tracks, ElementsAre(0u, 1u));
  EXPECT_EQ(library.tracks.at(1).path, "/b.mp3");
  EXPECT_EQ(library.notes.size(), 1u);
}

TEST(TraktorTest, PartsOfALocationBecomeAPath) {
  const std::pair<const char*, const char*> kCases[] = {
      {"VOLUME='C:' DIR='/:Music/:A/:' FILE='x.mp3'", "C:/Music/A/x.mp3"},
      {"VOLUME='Macintosh HD' DIR='/:Users/:dj/:' FILE='x.mp3'", "/Users/dj/x.mp3"},
      {"VOLUME='STICK' DIR='/:Music/:' FILE='x.mp3'", "/Volumes/STICK/Music/x.mp3"},
  };
  for (const auto& [location, path] : kCases) EXPECT_EQ(Traktor("", location).tracks.at(0).path, path);
}

TEST(TraktorTest, TheFirstGridMarkAnchorsTheOneTempo) {
  const std::string location = "VOLUME='C:' DIR='/:' FILE='x.mp3'";
  const auto track =
      Traktor(
          "<INFO KEY='10m' RANKING='153' PLAYTIME='200'/><TEMPO BPM='120'/><MUSICAL_KEY VALUE='18'/>"
          "<CUE_V2 NAME='AutoGrid' TYPE='4' START='-250' LEN='0' HOTCUE='0'><GRID BPM='125'/></CUE_V2>"
          "<CUE_V2 NAME='AutoGrid' TYPE='4' START='9000' HOTCUE='-1'><GRID BPM='99'/></CUE_V2>"
          "<CUE_V2 NAME='n.n.' TYPE='0' START='1500.5' LEN='0' HOTCUE='1' COLOR='#00FF00'/>"
          "<CUE_V2 NAME='Loop' TYPE='5' START='2000' LEN='4000' HOTCUE='-1'/>"
          "<CUE_V2 NAME='In' TYPE='1' START='10' HOTCUE='-1'/>",
          location)
          .tracks.at(0);
  // A beat of 0.48 s is added to what lies before the start.
  ASSERT_EQ(track.grid.size(), 1u);
  EXPECT_NEAR(track.grid[0].start, 0.23, 1e-9);
  EXPECT_EQ(track.grid[0].bpm, 125);
  EXPECT_EQ(track.grid[0].beat, 2);
  EXPECT_THAT(track.cues, ElementsAre(ForeignCue{Kind::Cue, 1.5005, 0, 1, "", "#00ff00"},
                                      ForeignCue{Kind::Loop, 2, 6, -1, "Loop", ""},
                                      ForeignCue{Kind::FadeIn, 0.01, 0, -1, "In", ""}));
  EXPECT_EQ(track.key, "F#m");
  EXPECT_EQ(track.rating, 3);
}

TEST(TraktorTest, ListsJoinTheNamesOfTheirFolders) {
  const auto library =
      Traktor("", "VOLUME='C:' DIR='/:A/:' FILE='x.mp3'",
              "<NODE TYPE='FOLDER' NAME='$ROOT'><SUBNODES><NODE TYPE='FOLDER' NAME='F'><SUBNODES>"
              "<NODE TYPE='PLAYLIST' NAME='L'><PLAYLIST TYPE='LIST'><ENTRY><PRIMARYKEY TYPE='TRACK' "
              "KEY='C:/:A/:x.mp3'/></ENTRY></PLAYLIST></NODE></SUBNODES></NODE></SUBNODES></NODE>");
  ASSERT_EQ(library.lists.size(), 1u);
  EXPECT_EQ(library.lists[0].name, "F/L");
  EXPECT_THAT(library.lists[0].tracks, ElementsAre(0u));
  EXPECT_EQ(library.tracks.size(), 1u);
}

TEST(ItunesTest, TracksAndListsAreTaken) {
  const auto library = Read(
      "<?xml version='1.0'?><!DOCTYPE plist PUBLIC '-//Apple Computer//DTD PLIST 1.0//EN' 'http://x/p.dtd'>"
      "<plist><dict><key>Major Version</key><integer>1</integer><key>Tracks</key><dict><key>12</key><dict>"
      "<key>Track ID</key><integer>12</integer><key>Name</key><string>R&#38;B</string><key>BPM</key>"
      "<integer>99</integer><key>Rating</key><integer>80</integer><key>Location</key>"
      "<string>file://localhost/C:/a%20b.mp3</string></dict></dict><key>Playlists</key><array>"
      "<dict><key>Master</key><true/><key>Name</key><string>Library</string></dict>"
      "<dict><key>Name</key><string>F</string><key>Playlist Persistent ID</key><string>AA</string>"
      "<key>Parent Persistent ID</key><string>BB</string><key>Folder</key><true/></dict>"
      "<dict><key>Name</key><string>L</string><key>Playlist Persistent ID</key><string>BB</string>"
      "<key>Parent Persistent ID</key><string>AA</string><key>Playlist Items</key><array>"
      "<dict><key>Track ID</key><integer>12</integer></dict></array></dict></array></dict></plist>");
  ASSERT_EQ(library.tracks.size(), 1u);
  EXPECT_EQ(library.tracks[0].path, "C:/a b.mp3");
  EXPECT_EQ(library.tracks[0].title, "R&B");
  EXPECT_EQ(library.tracks[0].rating, 4);
  // The two lists hold each other: their name ends somewhere.
  ASSERT_EQ(library.lists.size(), 1u);
  EXPECT_THAT(library.lists[0].name, HasSubstr("F/L"));
  EXPECT_THAT(library.lists[0].tracks, ElementsAre(0u));
}

TEST(XmlLibraryTest, AFileThatEndsEarlyGivesWhatStandsBeforeThat) {
  const std::string whole =
      "<DJ_PLAYLISTS><COLLECTION><TRACK TrackID='1' Location='file:///a.mp3'/>\n<TRACK TrackID='2' Loc";
  const ForeignLibrary cut = Read(whole);
  EXPECT_EQ(cut.tracks.size(), 1u);
  ASSERT_EQ(cut.notes.size(), 1u);
  EXPECT_THAT(support::English()(cut.notes[0]), HasSubstr("line 2"));
  EXPECT_EQ(Read(whole + "='<'/>").tracks.size(), 1u);
}

TEST(XmlLibraryTest, WhatNoProgramWritesIsRefused) {
  std::string deep = "<NML>";
  for (int i = 0; i < 100'000; ++i) deep += "<a>";
  const std::pair<std::string, const char*> kCases[] = {
      {"<!DOCTYPE NML [<!ENTITY a 'x'><!ENTITY b '&a;&a;'>]><NML>&b;</NML>", "no program"},
      {"<!DOCTYPE NML [<!ATTLIST ENTRY TITLE CDATA 'x'>]><NML/>", "no program"},
      {deep, "no program"},
      {"<NML a='" + std::string(3 << 20, 'x') + "'/>", "no program"},
      {"<NML", "no library"},
      {"<NML><COLLECTION>", "damaged"},
      {"<other/>", "no library"},
      {"", "no library"},
  };
  for (const auto& [text, sentence] : kCases) {
    std::string failure;
    (void)Read(text, &failure);
    EXPECT_THAT(failure, HasSubstr(sentence)) << text.substr(0, 60);
  }
}

}  // namespace
}  // namespace platform::library
