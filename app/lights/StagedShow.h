// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "dmx/OutputStage.h"
#include "dmx/Patch.h"
#include "dmx/ShowPlan.h"
#include "dmx/show.h"
#include "support/Result.h"

namespace app {

/// What a channel of the universe is called.
struct ChannelLabel {
  int fixture = 0;  ///< position in the patch from 1; 0: nobody has the channel
  int channel = 0;  ///< of the fixture, from 1
  dmx::ChannelFunction function = dmx::ChannelFunction::Free;
  std::string fixture_name;  ///< of its file, with a number behind it where several are of one kind
  std::string label;         ///< of the channel in the fixture file; may be empty

  bool operator==(const ChannelLabel&) const = default;
};

/// Which channel belongs to which fixture, and what that means for the output. Threads: any; immutable.
struct StagePatch {
  dmx::DMXname fixtures;
  std::array<ChannelLabel, dmx::kUniverseChannels> labels;
  dmx::OutputRules rules;

  /// Requires: 1 to dmx::kUniverseChannels.
  [[nodiscard]] const ChannelLabel& At(int channel) const {
    return labels[static_cast<std::size_t>(channel - 1)];
  }
  [[nodiscard]] static std::shared_ptr<const StagePatch> Make(const dmx::DMXname& fixtures);
};

/// A show, read, patched and laid out. Threads: any; immutable.
struct StagedShow {
  std::string name;
  std::filesystem::path file;       ///< empty for one that was never in a file
  std::vector<std::string> scenes;  ///< their names
  std::shared_ptr<const StagePatch> patch;
  std::shared_ptr<const dmx::ShowPlan> plan;
};

/// What is told of a show that was opened.
struct ShowReport {
  std::string name;
  bool ended_early = false;
  std::vector<std::string> refused;  ///< why, one sentence for each fixture that has no place
  std::vector<std::string> missing;  ///< names of the fixture files that cannot be read
  std::vector<std::string> notes;    ///< what else was brought into bounds, or left dark
};

struct ShowOpening {
  std::shared_ptr<const StagedShow> show;
  ShowReport report;
};

/// By name, without regard to letter case; none where there is no such folder. Threads: a worker.
[[nodiscard]] std::vector<std::filesystem::path> ShowFilesIn(const std::filesystem::path& folder);

/// Reads a show file and the files of its fixtures. Threads: a worker; blocks on the disk.
[[nodiscard]] support::Result<ShowOpening> OpenStagedShow(const std::filesystem::path& path,
                                                          const dmx::FixtureLibrary& library);

}  // namespace app
