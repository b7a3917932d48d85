// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace dmx {

struct LightColour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  bool operator==(const LightColour&) const = default;
};

/// What preview lights are painted on. Threads: the window's.
class Surface {
 public:
  virtual ~Surface() = default;
  /// Middle and radius in the surface's own unit.
  virtual void FillDisc(double x, double y, double radius, LightColour colour) = 0;
};

}  // namespace dmx
