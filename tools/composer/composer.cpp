// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <cstdio>
#include <vector>

#include "platform/codec/FfmpegEncoderFactory.h"
#include "platform/tags/TagWriter.h"
#include "tools/composer/Songs.h"

namespace {

using tools::composer::Song;
using tools::composer::Stereo;

std::vector<std::int16_t> Interleaved(const Stereo& sound) {
  std::vector<std::int16_t> samples;
  samples.reserve(2 * sound.Frames());
  for (std::size_t n = 0; n < sound.Frames(); ++n) {
    samples.push_back(static_cast<std::int16_t>(std::lround(sound.left[n] * 32767)));
    samples.push_back(static_cast<std::int16_t>(std::lround(sound.right[n] * 32767)));
  }
  return samples;
}

support::Result<void> Write(const Song& song, const std::string& path) {
  platform::codec::FfmpegEncoderFactory encoders;
  auto encoder = encoders.Open(path, {tools::composer::kRate, 2, 192'000});
  if (!encoder) return encoder.Failure();
  if (auto written = encoder.Value()->Write(Interleaved(song.sound)); !written) return written;
  if (auto finished = encoder.Value()->Finish(); !finished) return finished;
  return platform::tags::WriteTags(path, song.tags);
}

}  // namespace

/// composer FOLDER: writes the demo tracks into the folder.
int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("Usage: composer FOLDER\n", stderr);
    return 2;
  }
  using Maker = Song (*)();
  for (const Maker make : {&tools::composer::MakeHarbour, &tools::composer::MakeRollers,
                           &tools::composer::MakeLanterns, &tools::composer::MakeBeacons}) {
    const Song song = make();
    if (const auto written = Write(song, std::string(argv[1]) + "/" + song.file_name); !written) {
      std::fprintf(stderr, "%s\n", written.Failure().text.c_str());
      return 1;
    }
  }
  return 0;
}
