// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "app/ports/Visualisation.h"

namespace app::testing {

/// Knows the visualisers it was given, and tells of its calls.
class FakeVisualisation final : public Visualisation {
 public:
  void SetNames(std::vector<std::string> names) { names_ = std::move(names); }
  void OnCall(std::function<void(const std::string&)> listener) { listener_ = std::move(listener); }

  std::vector<std::string> BASS_VIS_FindPlugins(const std::filesystem::path& folder) override {
    Note("BASS_VIS_FindPlugins " + folder.filename().string());
    return names_;
  }
  void BASS_VIS_SetConfig(int option, int value) override {
    Note("BASS_VIS_SetConfig " + std::to_string(option) + " " + std::to_string(value));
  }
  /// A line through the first of the samples, for the names it was given.
  Picture Show(std::string_view name, const HeardSound& sound) override {
    if (std::find(names_.begin(), names_.end(), name) == names_.end()) return {};
    return {Picture::Kind::Line, {sound.samples.front(), sound.samples.front()}};
  }

 private:
  void Note(const std::string& call) const {
    if (listener_) listener_(call);
  }

  std::vector<std::string> names_;
  std::function<void(const std::string&)> listener_;
};

}  // namespace app::testing
