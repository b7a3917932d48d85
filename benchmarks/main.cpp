// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <utility>
#include <vector>

#include "benchmarks/Bench.h"

int main() {
  std::printf("Medians of several runs, ours and the reference in turn in this one run.\n\n");
  std::vector<bench::Figure> figures = bench::MeasureIndex();
  for (bench::Figure& figure : bench::MeasureEngine()) figures.push_back(std::move(figure));
  bench::Print(figures);
  return 0;
}
