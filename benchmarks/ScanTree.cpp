// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmarks/ScanTree.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <system_error>

#include "platform/archive/testing/ZipMaker.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/tags/TagWriter.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

constexpr int kSongsInAlbum = 12, kAlbumsOfArtist = 4;
constexpr std::array<std::string_view, 4> kKinds{"mp3", "ogg", "flac", "wma"};

catalogue::FileTags TagsOf(int number) {
  const int album = number / kSongsInAlbum;
  catalogue::FileTags tags;
  tags.artist = "The Travelling Band No. " + std::to_string(album / kAlbumsOfArtist);
  tags.title = "Another Song Of Theirs " + std::to_string(number);
  tags.album = "Collected Works Vol. " + std::to_string(album);
  tags.genre = "Disco";
  tags.year = std::to_string(1960 + album % 60);
  tags.text_block = "Bought at the record fair";
  if (number % 2 == 0) tags.user_items = {{"PEA", "-3.25"}, {"SMP", "0.875"}, {"EMP", "200.125"}};
  return tags;
}

}  // namespace

std::vector<std::string> MakeCollection(const fs::path& folder, int files) {
  const platform::codec::testing::MediaMaker media;
  const auto sound = platform::codec::testing::Noise(std::chrono::seconds(2), 0.1, {44100, 2});
  std::array<std::string, kKinds.size()> originals;
  for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
    originals[kind] = media.Write("original." + std::string(kKinds[kind]), sound, 128'000);
  }
  std::vector<std::string> paths;
  for (int number = 0; number < files; ++number) {
    const catalogue::FileTags tags = TagsOf(number);
    const auto kind = static_cast<std::size_t>(number) % kKinds.size();
    const fs::path album = folder / tags.artist / tags.album;
    const fs::path path =
        album / (std::to_string(number) + " " + tags.title + "." + std::string(kKinds[kind]));
    std::error_code error;
    fs::create_directories(album, error);
    fs::copy_file(originals[kind], path, error);
    if (error || !platform::tags::WriteTags(path.string(), tags)) std::abort();
    // As if it had lain there for a year.
    fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(24 * 365), error);
    paths.push_back(path.string());
  }
  return paths;
}

void MakeSongs(const fs::path& loose, const fs::path& packed, int songs) {
  using platform::codec::testing::MediaMaker;
  constexpr int kSongsInFolder = 50;
  constexpr std::size_t kPictureBytes = 60 * 7200;
  const MediaMaker media;
  const auto sound = platform::codec::testing::Noise(std::chrono::seconds(60), 0.1, {44100, 2});
  const std::string mp3 = media.Write("song.mp3", sound, 128'000);
  if (!platform::tags::WriteTags(mp3, TagsOf(1))) std::abort();
  // Two packets of three hold something, as where words come and go.
  std::string picture(kPictureBytes, '\0');
  for (std::size_t i = 0; i < picture.size(); ++i)
    picture[i] = i / 24 % 3 == 0 ? '\0' : static_cast<char>(i * i % 61);
  const std::string cdg = media.WriteBytes("song.cdg", picture);
  const std::string zip = media.WriteBytes(
      "song.zip",
      platform::archive::testing::ZipBytes({{"song.mp3", MediaMaker::BytesOf(mp3)}, {"song.cdg", picture}}));
  for (const std::string& original : {mp3, cdg, zip}) {
    fs::last_write_time(original, fs::file_time_type::clock::now() - std::chrono::hours(24 * 365));
    const fs::path ending = fs::path(original).extension();
    for (int number = 0; number < songs; ++number) {
      const fs::path folder = (ending == ".zip" ? packed : loose) / std::to_string(number / kSongsInFolder);
      fs::create_directories(folder);
      fs::path copy = folder / std::to_string(number);
      fs::create_hard_link(original, copy.replace_extension(ending));
    }
  }
}

}  // namespace bench
