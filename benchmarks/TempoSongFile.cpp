// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <cstdlib>

#include "benchmarks/TempoSongs.h"
#include "platform/codec/FfmpegEncoderFactory.h"

namespace bench {
namespace {

support::Result<void> WriteFile(const TempoSong& song, const std::string& path) {
  platform::codec::FfmpegEncoderFactory encoders;
  auto encoder = encoders.Open(path, {44100, 2, 192'000});
  if (!encoder) return encoder.Failure();
  if (auto written = encoder.Value()->Write(song.samples); !written) return written;
  return encoder.Value()->Finish();
}

}  // namespace

int WriteTempoSong(int argc, char* argv[]) {
  if (argc != 4) {
    std::fputs("Usage: measure --song SEED FILE\n", stderr);
    return 2;
  }
  const TempoSong song = MakeTempoSong(std::strtoull(argv[2], nullptr, 10));
  if (const auto written = WriteFile(song, argv[3]); !written) {
    std::fprintf(stderr, "%s\n", written.Failure().text.c_str());
    return 1;
  }
  std::printf("%s, %.3f BPM, %d beats a bar, first beats", song.style.c_str(), song.bpm, song.beats_per_bar);
  for (std::size_t i = 0; i < 4; ++i) std::printf(" %.3f", song.beats[i]);
  std::printf("\n");
  return 0;
}

}  // namespace bench
