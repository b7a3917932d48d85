// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dmx/Collection.h"
#include "dmx/Scenes.h"
#include "dmx/fixture.h"

namespace dmx {

/// One fixture of a show, patched to the channels from StartChannel on.
struct DMXfilename {
  std::string Filename;  ///< the fixture file, with its folder once it was found
  std::int16_t StartChannel = 0;
  /// How many channels the fixture had when it was patched. Holds their place while its file is missing.
  std::int16_t NumberOf = 0;
  ChannelSlider Channels;  ///< empty until the fixture file was read

  bool operator==(const DMXfilename&) const = default;
};

/// The fixtures of a show in patch order.
class DMXname : public Collection<DMXfilename> {};

/// What the light operator plays: patched fixtures, and scenes of steps of levels.
struct Show {
  DMXname fixtures;
  dmx::Scenes scenes;

  bool operator==(const Show&) const = default;
};

/// What stands behind the last "\"; the whole name when there is none.
[[nodiscard]] std::string_view NameWithoutFolder(std::string_view filename);

}  // namespace dmx
