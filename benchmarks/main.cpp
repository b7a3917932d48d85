// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <string_view>

#include "benchmarks/Bench.h"
#include "benchmarks/TempoSongs.h"

int main(int argc, char* argv[]) {
  if (argc > 1 && std::string_view(argv[1]) == "--song") return bench::WriteTempoSong(argc, argv);
  if (argc > 1 && std::string_view(argv[1]) == "analysis") {
    bench::PrintHead();
    bench::Print(bench::MeasureAnalysis());
    bench::Print(bench::MeasureTempo());
    return 0;
  }
  if (argc > 1 && std::string_view(argv[1]).starts_with("--")) return bench::RunWindowChild(argc, argv);
  std::printf("Medians of several runs, ours and the reference in turn in this one run.\n\n");
  bench::PrintHead();
  bench::Print(bench::MeasureIndex());
  bench::Print(bench::MeasureEngine());
  bench::Print(bench::MeasureAnalysis());
  bench::Print(bench::MeasureTempo());
  bench::Print(bench::MeasureWindow());
  return 0;
}
