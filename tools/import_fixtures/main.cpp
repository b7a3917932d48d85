// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <atomic>
#include <chrono>
#include <exception>
#include <iostream>
#include <map>
#include <string>

#include "dmx/FixtureProblems.h"
#include "dmx/packs/PackImport.h"
#include "dmx/packs/PackIndex.h"
#include "dmx/packs/PackReader.h"
#include "platform/fixtures/FixtureReaders.h"

namespace {

struct Counts {
  std::size_t fixtures = 0, modes = 0, lossless = 0, with_notes = 0, failed = 0, questioned = 0;
  std::map<std::string, std::size_t> reasons;  ///< modes by the sentences of their notes, numbers left out
};

std::string WithoutNumbers(std::string note) {
  const auto digit = [](char c) { return c >= '0' && c <= '9'; };
  std::erase_if(note, digit);
  // What is quoted differs from mode to mode.
  for (auto from = note.find('"'); from != std::string::npos; from = note.find('"', from + 2)) {
    const auto to = note.find('"', from + 1);
    if (to == std::string::npos) break;
    note.erase(from + 1, to - from - 1);
  }
  return note;
}

void Import(const dmx::PackFixture& fixture, std::size_t mode, Counts& counts) {
  ++counts.modes;
  const auto made = dmx::ImportMode(fixture, mode);
  if (!made) {
    ++counts.failed;
    return;
  }
  const dmx::ImportedFixture& imported = made.Value();
  counts.lossless += imported.lossless ? 1 : 0;
  counts.with_notes += imported.notes.empty() ? 0 : 1;
  std::map<std::string, int> once;
  for (const std::string& note : imported.notes) ++once[WithoutNumbers(note)];
  for (const auto& [reason, times] : once) ++counts.reasons[reason];
  // That a fog machine shows no light is no fault of its description.
  const auto problems = dmx::FixtureProblems(imported.fixture);
  counts.questioned += std::any_of(problems.begin(), problems.end(),
                                   [](const std::string& problem) { return problem.starts_with("Channel"); });
}

Counts ImportAll(const std::filesystem::path& folder) {
  const platform::fixtures::FixtureReaders formats;
  Counts counts;
  for (const auto& file : dmx::PackFilesIn(folder, std::atomic<bool>(false))) {
    const auto read = dmx::OpenPackFixture(formats, file);
    if (!read) {
      ++counts.failed;
      std::cerr << file.string() << ": " << read.Failure().text << '\n';
      continue;
    }
    ++counts.fixtures;
    for (std::size_t mode = 0; mode < read.Value().modes.size(); ++mode) Import(read.Value(), mode, counts);
  }
  return counts;
}

}  // namespace

/// Imports every mode of every fixture below a folder and prints what became of them.
int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "Usage: import-fixtures FOLDER\n";
    return 2;
  }
  try {
    const auto began = std::chrono::steady_clock::now();
    const Counts counts = ImportAll(argv[1]);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - began;
    std::cout << "fixtures " << counts.fixtures << "\nmodes " << counts.modes << "\nlossless "
              << counts.lossless << "\nwith notes " << counts.with_notes << "\nfailed " << counts.failed
              << "\nquestioned at saving " << counts.questioned << "\nseconds " << took.count() << '\n';
    for (const auto& [reason, modes] : counts.reasons) std::cout << "  " << modes << "  " << reason << '\n';
    return counts.fixtures == 0 ? 1 : 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
