// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cstdio>
#include <span>
#include <string_view>

#include "benchmarks/Bench.h"
#include "benchmarks/TempoSongs.h"

namespace {

struct Part {
  std::string_view name;
  std::vector<bench::Figure> (*measure)();
};

constexpr auto kParts = std::to_array<Part>({
    {"index", bench::MeasureIndex},
    {"search", bench::MeasureSearch},
    {"playlists", bench::MeasurePlaylists},
    {"lights", bench::MeasureLights},
    {"scan", bench::MeasureScan},
    {"tags", bench::MeasureTags},
    {"organ", bench::MeasureOrgan},
    {"engine", bench::MeasureEngine},
    {"limiter", bench::MeasureLimiter},
    {"microphone", bench::MeasureMicrophone},
    {"following", bench::MeasureFollowing},
    {"keylock", bench::MeasureKeyLock},
    {"analysis", bench::MeasureAnalysis},
    {"tempo", bench::MeasureTempo},
    {"ear", bench::MeasureEar},
    {"load", bench::MeasureLoad},
    {"karaoke", bench::MeasureKaraoke},
    {"window", bench::MeasureWindow},
    {"rows", bench::MeasureRows},
});

bool IsPart(std::string_view name) {
  return std::any_of(kParts.begin(), kParts.end(), [name](const Part& part) { return part.name == name; });
}

}  // namespace

/// Measures the parts named, all of them where none is.
int main(int argc, char* argv[]) {
  if (argc > 1 && std::string_view(argv[1]) == "--song") return bench::WriteTempoSong(argc, argv);
  if (argc > 1 && std::string_view(argv[1]) == "--load") return bench::RunLoadChild(argc, argv);
  if (argc > 2 && std::string_view(argv[1]).starts_with("--")) return bench::RunWindowChild(argc, argv);
  const std::span chosen(argv + 1, argv + argc);
  for (const std::string_view name : chosen) {
    if (IsPart(name)) continue;
    std::printf("There is no part %.*s; there are:", static_cast<int>(name.size()), name.data());
    for (const Part& part : kParts) std::printf(" %s", part.name.data());
    std::printf("\n");
    return 2;
  }
  std::printf("Medians of several runs, ours and the reference in turn in this one run.\n\n");
  bench::PrintHead();
  for (const Part& part : kParts) {
    const bool wanted = std::find(chosen.begin(), chosen.end(), part.name) != chosen.end();
    if (wanted || chosen.empty()) bench::Print(part.measure());
  }
  return 0;
}
