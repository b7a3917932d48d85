// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "dmx/FixtureFile.h"
#include "dmx/ports/DmxInterface.h"
#include "dmx/show.h"
#include "support/ProgramFolder.h"
#include "support/Result.h"
#include "support/Sentences.h"

namespace dmx {

/// Who holds a channel of the universe.
struct PatchedChannel {
  int fixture = 0;  ///< position in the show from 1; 0: the channel is free
  int channel = 0;  ///< of the fixture, from 1
  ChannelFunction function = ChannelFunction::Free;

  bool operator==(const PatchedChannel&) const = default;
};

/// Which channel of the universe belongs to which fixture. A value; a copy is a snapshot.
class Patch {
 public:
  /// The lowest channel from which on count channels are free; 0 when there is none.
  [[nodiscard]] int SuggestStart(int count) const;
  /// Whether a fixture of count channels may start there. A start below 1 is refused like one that runs past
  /// the end.
  [[nodiscard]] support::Result<void> Check(int start, int count) const;
  /// Lays a fixture's channels from the start on, or refuses to and changes nothing.
  support::Result<void> Add(int fixture, int start, const ChannelSlider& channels);
  /// Holds the place of a fixture that cannot be read, as far as it is free.
  void Hold(int fixture, int start, int count);

  /// Requires: 1 to kUniverseChannels.
  [[nodiscard]] const PatchedChannel& At(int channel) const {
    return channels_[static_cast<std::size_t>(channel - 1)];
  }
  /// Those that are not free, in order.
  [[nodiscard]] std::vector<int> Channels() const;

  bool operator==(const Patch&) const = default;

 private:
  std::array<PatchedChannel, kUniverseChannels> channels_{};
};

/// The fixture files of the program folder. Threads: any; blocks on the disk.
class FixtureLibrary {
 public:
  /// say: what is told of the files in; outlives the library.
  explicit FixtureLibrary(support::ProgramFolder folder, const support::Sentences& say = support::English())
      : folder_(std::move(folder)), say_(say) {}

  /// Whatever folder stands before the name, the file is looked for in the library's.
  [[nodiscard]] support::Result<FixtureReading> Open(std::string_view filename) const;
  /// As DMXfilename::Filename holds it.
  [[nodiscard]] std::string FilenameOf(std::string_view filename) const;
  [[nodiscard]] const support::Sentences& Say() const { return say_; }

 private:
  support::ProgramFolder folder_;
  const support::Sentences& say_;
};

/// What became of a show's fixtures.
struct PatchReport {
  Patch patch;
  std::vector<std::string> refused;  ///< why, one sentence for each fixture that was set aside
  std::vector<int> missing;          ///< positions of those whose file cannot be read; they stay
  /// Which these are, what their files had out of bounds, and whose file has other channels than the show.
  std::vector<std::string> notes;
};

/// Reads each fixture's file and patches the channels that it describes. One that does not fit is set aside;
/// one that cannot be read stays, and NumberOf holds its place. No NumberOf and no record is changed.
[[nodiscard]] PatchReport PatchShow(Show& show, const FixtureLibrary& library);

}  // namespace dmx
