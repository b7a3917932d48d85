// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "dmx/fixture.h"
#include "support/Result.h"

namespace dmx {

/// What a channel is for, in the words that all descriptions of fixtures share.
enum class PackRole : std::uint8_t {
  Other,
  Pan,
  Tilt,
  Dimmer,
  Emitter,  ///< the light of one colour, PackChannel::colour
  Filter,   ///< takes one colour out of the light
  Shutter,
  Colours,  ///< a wheel, or mixed ones to choose from
  Gobo,
  GoboTurn,
  MoveSpeed,
};

struct PackRange {
  int first = 0;  ///< both as they were written, in any order and beyond any bounds
  int last = kHighestLevel;
  std::string name;
  PresetEffect effect = PresetEffect::None;
  std::string colour;        ///< "#ff8000"; empty: none
  bool two_colours = false;  ///< at once
  bool switches = false;     ///< another channel means something else while this one stands here
};

struct PackChannel {
  std::string name;
  PackRole role = PackRole::Other;
  std::string colour;  ///< of an emitter or a filter, "Red"
  bool fine = false;   ///< the finer byte of another one
  std::vector<PackRange> ranges;
};

/// A channel of a mode.
struct PackSlot {
  static constexpr int kNothing = -1;  ///< a channel that does nothing
  static constexpr int kUnknown = -2;  ///< one that is named and described nowhere

  int channel = kNothing;  ///< index in PackFixture::channels
  std::string name;        ///< as the mode calls it; empty: as the channel is called
  int finer = 0;           ///< which finer byte of that channel; 0: the channel itself
  bool switched = false;   ///< it means other things too, by where another channel stands
};

struct PackMode {
  static constexpr std::size_t kMostSlots = 512;

  std::string name;
  std::vector<PackSlot> slots;         ///< kMostSlots at most
  std::size_t further = 0;             ///< that are not among them
  std::size_t heads = 1;               ///< or pixels
  double pan = 0, tilt = 0, beam = 0;  ///< degrees
};

/// A fixture as somebody else's library describes it, with all its modes.
struct PackFixture {
  static constexpr std::size_t kMostModes = 500;
  static constexpr std::size_t kLongestName = 200;  ///< bytes, of every name here

  std::string maker;
  std::string model;
  std::string moved_to;  ///< "maker/model": the description lies in that file; nothing else is there then
  FixtureType type = FixtureType::ColorChanger;
  std::vector<PackChannel> channels;
  std::vector<PackMode> modes;
};

/// The file formats of fixture libraries. Threads: any.
class FixtureFormats {
 public:
  virtual ~FixtureFormats() = default;
  /// Told apart by what stands in the text.
  [[nodiscard]] virtual support::Result<PackFixture> Read(std::string_view text) const = 0;
  /// Names of makers by the folders that their fixtures lie in; empty for any other text.
  [[nodiscard]] virtual std::map<std::string, std::string> Makers(std::string_view text) const = 0;
};

}  // namespace dmx
