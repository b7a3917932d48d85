// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace bench {

/// One figure: ours beside a reference that was measured in the same run.
struct Figure {
  std::string name;
  std::string unit;
  double ours = 0;
  std::optional<double> reference;  ///< nothing: an absolute figure
  std::string aim;                  ///< as the README states it; may be empty
};

/// The value below which a share of the samples lies; 0.5 is the median, 1 the largest.
[[nodiscard]] double Percentile(std::vector<double> samples, double share);
[[nodiscard]] double Median(std::vector<double> samples);

/// CPU seconds of the calling thread and of the whole process so far.
[[nodiscard]] double ThreadCpuSeconds();
[[nodiscard]] double ProcessCpuSeconds();

/// Memory that this process has in use now.
[[nodiscard]] double ResidentMegabytes();

/// What this program prints when it is started with these arguments: numbers with blanks between them.
[[nodiscard]] std::vector<double> RunChild(const std::string& arguments);

/// A Markdown table: its head, then rows of name, unit, ours, reference, ratio, aim.
void PrintHead();
void Print(const std::vector<Figure>& figures);

}  // namespace bench
