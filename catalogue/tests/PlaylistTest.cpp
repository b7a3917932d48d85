// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/Playlist.h"

#include <gtest/gtest.h>

namespace catalogue {
namespace {

using Paths = std::vector<std::string>;

TEST(PlaylistTest, TheLastLettersTellWhatIsOpened) {
  const struct {
    const char* path;
    PlaylistFile kind;
  } kFiles[] = {
      {"/m/a.mp3", PlaylistFile::Track}, {"/m/a.OGG", PlaylistFile::Track}, {"a.wma", PlaylistFile::Track},
      {"a.flac", PlaylistFile::Track},   {"aFLAC", PlaylistFile::Track},    {"a.tpl", PlaylistFile::Own},
      {"a.TPL", PlaylistFile::Own},      {"a.m3u", PlaylistFile::List},     {"a.M3u8", PlaylistFile::List},
      {"a.wav", PlaylistFile::Nothing},  {"a.lac", PlaylistFile::Nothing},  {"a.m4a", PlaylistFile::Nothing},
      {"", PlaylistFile::Nothing},       {"u8", PlaylistFile::Nothing},     {"a.3u8", PlaylistFile::Nothing},
  };
  for (const auto& file : kFiles) EXPECT_EQ(PlaylistFileOf(file.path), file.kind) << file.path;
}

TEST(PlaylistTest, LinesAreTakenByteForByteHoweverTheTextIsCut) {
  const std::string text =
      "#EXTM3U\r\n#EXTINF:1,x\n/a b.mp3\r\r\n\"C:\\M\\q.mp3\"\n "
      "http://x/y.ogg\n\xE9t\xE9.mp3\n\n#\n\xEF\xBB\xBF#x\nlast";
  const Paths expected{"/a b.mp3",      "\"C:\\M\\q.mp3\"", " http://x/y.ogg",
                       "\xE9t\xE9.mp3", "\xEF\xBB\xBF#x",   "last"};
  for (std::size_t size = 1; size < 40; ++size) {
    PathListParser parser;
    for (std::size_t at = 0; at < text.size(); at += size)
      parser.Feed(std::string_view(text).substr(at, size));
    EXPECT_EQ(parser.Finish().paths, expected) << size;
  }
}

TEST(PlaylistTest, OnlyWhatIsTooLongForAPathIsLeftOut) {
  PathListParser parser;
  const std::string long_one(PathListParser::kLongestPath, 'x');
  parser.Feed("#" + long_one + long_one + "\n");
  parser.Feed(long_one + "\n" + long_one);
  parser.Feed("y\nb.mp3");
  const PathList list = parser.Finish();
  EXPECT_EQ(list.paths, (Paths{long_one, "b.mp3"}));
  EXPECT_EQ(list.too_long, 1);
}

TEST(PlaylistTest, AMissingListIsAFailure) {
  EXPECT_FALSE(ReadPathList("/no/such/list.m3u"));
}

}  // namespace
}  // namespace catalogue
