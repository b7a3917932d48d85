// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <string_view>

#include "benchmarks/Bench.h"
#include "benchmarks/TempoSongs.h"

int main(int argc, char* argv[]) {
  if (argc > 1 && std::string_view(argv[1]) == "--song") return bench::WriteTempoSong(argc, argv);
  if (argc > 1 && std::string_view(argv[1]).starts_with("--")) return bench::RunWindowChild(argc, argv);
  // A word chooses one part; none is all of them.
  const std::string_view only = argc > 1 ? argv[1] : "";
  std::printf("Medians of several runs, ours and the reference in turn in this one run.\n\n");
  bench::PrintHead();
  if (only.empty() || only == "index") bench::Print(bench::MeasureIndex());
  if (only.empty() || only == "engine") bench::Print(bench::MeasureEngine());
  if (only.empty() || only == "analysis") bench::Print(bench::MeasureAnalysis());
  if (only.empty() || only == "analysis") bench::Print(bench::MeasureTempo());
  if (only.empty() || only == "keylock") bench::Print(bench::MeasureKeyLock());
  if (only.empty() || only == "ear") bench::Print(bench::MeasureEar());
  if (only.empty() || only == "window") bench::Print(bench::MeasureWindow());
  return 0;
}
