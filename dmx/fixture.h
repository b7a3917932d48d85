// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "dmx/Collection.h"
#include "dmx/Scenes.h"

namespace dmx {

/// By the numbers of the file; other numbers are kept and name no type.
enum class FixtureType : int { None = 0, MovingHead = 1, Scanner = 2, ColorChanger = 3 };

/// By the numbers of the file.
enum class ChannelFunction : std::uint8_t {
  Free,
  Pan,
  Tilt,
  Dimmer,
  Shutter,
  Color,
  ColorRotation,
  Gobo,
  GoboRotation,
  PanTiltSpeed,
};
inline constexpr int kChannelFunctions = 10;

/// What a preset does, by the numbers of the file. Other numbers are kept and do nothing of their own.
enum class PresetEffect : int {
  None = 0,
  Open = 1,
  Closed = 2,
  Strobe = 3,
  Pulse = 4,
  Rotation = 5,
  Rainbow = 6,
  Shake = 7,
};

inline constexpr int kHighestAngle = 360;
inline constexpr int kHighestLevel = 255;

/// A named range of levels on one channel of a fixture.
struct presets {
  PresetEffect Effect = PresetEffect::None;
  int picture = 0;  ///< index of its gobo or colour
  std::string name;
  int StartLevel = 0;  ///< both ends belong to the range
  int EndLevel = 0;
  std::string third;  ///< a number for the user's own purposes, as it was typed
  std::string extra;  ///< written, and dropped by the reader
  int Owner = 0;      ///< the channel that has it, from 1
  int TotalGobos = 0;
  int TotalColors = 0;
  int GoboCounter = 0;
  int ColorCounter = 0;

  [[nodiscard]] bool Holds(int level) const { return level >= StartLevel && level <= EndLevel; }
  bool operator==(const presets&) const = default;
};

struct FixtureChannel {
  ChannelFunction function = ChannelFunction::Free;
  std::string label;
  Collection<dmx::presets> presets;

  bool operator==(const FixtureChannel&) const = default;
};

/// The channels of a fixture, in order.
class ChannelSlider : public Collection<FixtureChannel> {
 public:
  dmx::Scenes Scenes;  ///< looks that belong to the fixture itself

  bool operator==(const ChannelSlider&) const = default;
};

/// One kind of light, described once and used in many shows.
struct Fixture {
  std::string name;
  FixtureType type = FixtureType::None;
  int tilt_angle = 0;  ///< degrees, 0 to kHighestAngle, as the other two
  int pan_angle = 0;
  int beam_angle = 0;
  ChannelSlider channels;

  bool operator==(const Fixture&) const = default;
};

/// Channels are added at the end, free ones without presets, or taken away from it; 0 to 512.
void SetChannelCount(Fixture& fixture, int count);

/// "Pan/Tilt Speed".
[[nodiscard]] std::string_view FunctionText(ChannelFunction function);
/// "Moving Head"; empty for a number that names none.
[[nodiscard]] std::string_view TypeText(FixtureType type);
/// The start level, " --> " and the end level.
[[nodiscard]] std::string RangeText(const presets& preset);

}  // namespace dmx
