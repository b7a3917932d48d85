// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <filesystem>
#include <fstream>
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

void Put(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

void MakeGainSeeds(const std::filesystem::path& folder) {
  const std::string header = "File\tMP3 gain\tdB gain\tMax Amplitude\tMax global_gain\tMin global_gain\r\n";
  const std::string values = "\t-4\t-5.250000\t31000.500000\t178\t99\r\n";
  Put(folder / "track", header + "song.mp3" + values);
  Put(folder / "album", header + "song.mp3" + values + "\"Album\"" + values);
  Put(folder / "refusal", header + "song.mp3 is not an mp3 file\r\n");
}

void MakePresetSeeds(const std::filesystem::path& folder) {
  Put(folder / "two", "[A]\r\n0;1;2;3;4;5;-6;7;8;9;\r\n[B]\r\n12;12;12;12;12;12;12;12;12;12;\r\n");
  Put(folder / "twice", "[A]\n1;\n[A]\n2;\n[A]");
  Put(folder / "loose", "x\r[A]\r\r\r[]\r;;;\r");
}

using Maker = void (*)(const std::filesystem::path& folder);

Maker MakerOf(std::string_view kind) {
  if (kind == "tags") return MakeTagSeeds;
  if (kind == "mp3gain") return MakeGainSeeds;
  return kind == "presets" ? MakePresetSeeds : nullptr;
}

}  // namespace

/// make_seeds KIND FOLDER
int main(int argc, char** argv) {
  const Maker make = argc == 3 ? MakerOf(argv[1]) : nullptr;
  if (make == nullptr) {
    std::fprintf(stderr, "Usage: make_seeds tags|mp3gain|presets FOLDER\n");
    return 2;
  }
  std::filesystem::create_directories(argv[2]);
  make(argv[2]);
  return 0;
}
