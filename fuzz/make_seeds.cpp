// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <filesystem>
#include <string>

#include "platform/codec/testing/MediaMaker.h"
#include "platform/tags/TagWriter.h"

namespace {

using namespace std::chrono_literals;
using platform::codec::testing::MediaMaker;

/// A small file of every format with every kind of field, one without a tag, and one with a tag in front of
/// nothing.
void MakeTagSeeds(const std::filesystem::path& folder) {
  const MediaMaker media;
  catalogue::FileTags tags;
  tags.artist = "Artist \xC3\xA9";
  tags.title = "Title";
  tags.album = "Album";
  tags.genre = "Disco";
  tags.year = "1979";
  tags.bpm = "118";
  tags.text_block = "PEA\r\n-1.5\r\nSMP\r\n0.5";
  tags.user_items = {{"EMP", "60.000"}, {"PEA", "-2.0"}};
  for (const std::string_view extension : MediaMaker::kExtensions) {
    const std::string name = "." + std::string(extension);
    const auto tone = platform::codec::testing::Tone(60ms, {}, {22050, 1});
    const std::string bare = media.Write("bare" + name, tone, 32'000);
    const std::string tagged = media.Write("tagged" + name, tone, 32'000);
    if (!platform::tags::WriteTags(tagged, tags)) std::fprintf(stderr, "no tag in %s\n", tagged.c_str());
    for (const std::string& path : {bare, tagged}) {
      std::filesystem::copy_file(path, folder / std::filesystem::path(path).filename(),
                                 std::filesystem::copy_options::overwrite_existing);
    }
  }
}

}  // namespace

/// make_seeds KIND FOLDER
int main(int argc, char** argv) {
  if (argc != 3 || std::string(argv[1]) != "tags") {
    std::fprintf(stderr, "Usage: make_seeds tags FOLDER\n");
    return 2;
  }
  std::filesystem::create_directories(argv[2]);
  MakeTagSeeds(argv[2]);
  return 0;
}
