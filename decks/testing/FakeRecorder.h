// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "decks/ports/ProgrammeRecorder.h"

namespace decks::testing {

/// Writes down what it is told; how its recording stands is set by hand.
class FakeRecorder final : public ProgrammeRecorder {
 public:
  std::uint64_t Start(const RecordingWish& wanted) override {
    wish = wanted;
    progress = {};
    progress.recording = begins;
    progress.path = wanted.file.path;
    ++starts;
    if (begins) progress.number = starts;
    return starts;
  }
  void Cut(std::chrono::microseconds place, const RecordingFile& next) override {
    cuts.emplace_back(place, std::filesystem::path(next.path).filename().string());
  }
  void Follow(int device, std::uint32_t /*speaker*/) override { followed = device; }
  void Stop() override {
    progress.number = starts;
    progress.recording = false;
  }
  bool End(std::chrono::milliseconds /*patience*/) override {
    if (ends) Stop();
    return ends;
  }
  RecordingProgress Progress() override { return progress; }
  support::Result<std::chrono::seconds> Repair(const std::string& path) override {
    repaired.push_back(std::filesystem::path(path).filename().string());
    return std::chrono::seconds(3700);
  }
  std::optional<std::int64_t> FreeBytes(const std::string& /*path*/) override { return free; }

  RecordingWish wish;
  RecordingProgress progress;
  bool begins = true;  ///< at once; else when the test says so
  bool ends = true;    ///< no disk holds it
  std::uint64_t starts = 0;
  int followed = 0;
  std::optional<std::int64_t> free;
  std::vector<std::pair<std::chrono::microseconds, std::string>> cuts;
  std::vector<std::string> repaired;
};

}  // namespace decks::testing
