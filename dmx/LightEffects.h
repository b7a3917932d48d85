// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "dmx/LiveLook.h"

namespace dmx {

/// What moves by itself.
enum class EffectKind : std::uint8_t { ColourChase, Chase, Pulse, Circle, Eight, Fan, Sweep };
inline constexpr std::size_t kEffectKinds = 7;

/// What an effect changes; of two effects that change the same on one fixture, the newer is meant.
enum class EffectSubject : std::uint8_t { Colour, Light, Movement };
[[nodiscard]] EffectSubject SubjectOf(EffectKind kind);

/// How long a round lasts; a round of a chase is one step.
struct EffectRate {
  enum class Unit : std::uint8_t { Beats, Hertz } unit = Unit::Beats;
  double value = 1;
  bool operator==(const EffectRate&) const = default;
};
inline constexpr std::array<double, 7> kEffectBeats{0.25, 0.5, 1, 2, 4, 8, 16};

struct LightEffect {
  EffectKind kind = EffectKind::Pulse;
  EffectRate rate;
  double size = 0.5;                 ///< of a movement, 0 to 1 of the whole range
  std::vector<int> fixtures;         ///< positions from 1, in the order in which a chase goes
  std::vector<MixedColour> colours;  ///< of a chase; without any, all that can be mixed
  bool operator==(const LightEffect&) const = default;
};

/// Where the music that is heard is.
struct MusicPlace {
  double beat = 0;   ///< with its fraction, from the grid's first
  double tempo = 0;  ///< beats a minute as it is heard
};

/// How much may flash. Guarded is what the flash guard allows.
enum class Flashing { Guarded, Free };
/// Flashes a second.
[[nodiscard]] double MostFlashes(Flashing flashing);

/// How many rounds have gone, with the fraction; follows from the place in the music alone, and from the
/// clock where none is heard. What would flash too often, or move faster than a head can, takes rounds of
/// twice the length, or of four times, and so stays on the beat.
[[nodiscard]] double RoundsAt(const LightEffect& effect, const std::optional<MusicPlace>& music,
                              double seconds, Flashing flashing);

/// What the effect asks of the fixture at a place of its order, from 0. around: the fixture's own pan and
/// tilt, which a movement goes around.
[[nodiscard]] LiveLook LookAt(const LightEffect& effect, std::size_t place, double rounds,
                              const LiveLook& around);

/// Keeps what flashes to the guard's pace whatever the music's place does: short loops, jumps, scratching.
class FlashGate {
 public:
  /// The rounds of an effect as they may be shown at a time; a new flash that comes too soon waits.
  [[nodiscard]] double Pass(double rounds, double seconds, Flashing flashing);

 private:
  std::optional<double> rounds_;
  double flashed_ = -1e9;  ///< seconds
};

}  // namespace dmx
