// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>

#include "benchmarks/Bench.h"

int main() {
  std::printf("Medians of several runs, ours and the reference in turn in this one run.\n\n");
  bench::Print(bench::MeasureEngine());
  return 0;
}
