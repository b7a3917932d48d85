// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dmx/Collection.h"
#include "dmx/Scenes.h"
#include "dmx/fixture.h"

namespace dmx {

/// One fixture of a show, patched to the channels from StartChannel on.
struct DMXfilename {
  std::string Filename;  ///< the fixture file, with its folder once it was found
  std::int16_t StartChannel = 0;
  /// How many channels the fixture had when it was patched, and so how many records of each step are its own.
  /// Kept as the show file has it, whatever the fixture file says by now, until the show is repaired. Holds
  /// their place while the file is missing.
  std::int16_t NumberOf = 0;
  ChannelSlider Channels;  ///< empty until the fixture file was read
  bool cut_short = false;  ///< its file ended early; what of Channels was not reached does nothing

  bool operator==(const DMXfilename&) const = default;
};

/// The fixtures of a show in patch order.
class DMXname : public Collection<DMXfilename> {};

/// How many channels it takes: those that its file describes, or, without a file, those that it had.
[[nodiscard]] int ChannelCount(const DMXfilename& fixture);
/// Its file has not as many channels as the show has levels for.
[[nodiscard]] bool DiffersFromItsFile(const DMXfilename& fixture);

/// A fixture of the show file that had no place on the universe. It is out of the show; its lines and its
/// records are written back where they stood.
struct SetAside {
  DMXfilename fixture;
  int behind = 0;  ///< how many fixtures of the show stand before it

  bool operator==(const SetAside&) const = default;
};

/// What the light operator plays: patched fixtures, and scenes of steps of levels.
struct Show {
  DMXname fixtures;
  dmx::Scenes scenes;
  std::vector<SetAside> aside;  ///< in the order of the file

  bool operator==(const Show&) const = default;
};

/// What stands behind the last "\"; the whole name when there is none.
[[nodiscard]] std::string_view NameWithoutFolder(std::string_view filename);

}  // namespace dmx
