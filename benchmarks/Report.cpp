// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmarks/Report.h"

#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace bench {
namespace {

double CpuSeconds(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

std::string Number(double value) {
  char text[64];
  const double size = std::abs(value);
  std::snprintf(text, sizeof text, size >= 100 ? "%.0f" : size >= 1 ? "%.2f" : "%.3f", value);
  return text;
}

}  // namespace

double Percentile(std::vector<double> samples, double share) {
  assert(!samples.empty() && "something was measured");
  std::sort(samples.begin(), samples.end());
  const double index = share * static_cast<double>(samples.size() - 1);
  return samples[static_cast<std::size_t>(std::lround(index))];
}

double Median(std::vector<double> samples) {
  return Percentile(std::move(samples), 0.5);
}

double ThreadCpuSeconds() {
  return CpuSeconds(CLOCK_THREAD_CPUTIME_ID);
}

double ProcessCpuSeconds() {
  return CpuSeconds(CLOCK_PROCESS_CPUTIME_ID);
}

std::vector<double> RunChild(const std::string& arguments) {
  const std::string command = std::filesystem::read_symlink("/proc/self/exe").string() + " " + arguments;
  std::vector<double> numbers;
  if (FILE* pipe = popen(command.c_str(), "r")) {
    for (double number; std::fscanf(pipe, "%lf", &number) == 1;) numbers.push_back(number);
    pclose(pipe);
  }
  return numbers;
}

double ResidentMegabytes() {
  std::ifstream statistics("/proc/self/statm");
  double all = 0, resident = 0;
  statistics >> all >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

void PrintHead() {
  std::printf("| figure | unit | ours | reference | ratio | aim |\n|---|---|---|---|---|---|\n");
}

void Print(const std::vector<Figure>& figures) {
  for (const Figure& figure : figures) {
    const std::string reference = figure.reference ? Number(*figure.reference) : "";
    const std::string ratio = figure.reference ? Number(figure.ours / *figure.reference) : "";
    std::printf("| %s | %s | %s | %s | %s | %s |\n", figure.name.c_str(), figure.unit.c_str(),
                Number(figure.ours).c_str(), reference.c_str(), ratio.c_str(), figure.aim.c_str());
    std::fflush(stdout);
  }
}

}  // namespace bench
