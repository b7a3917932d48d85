// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <tuple>
#include <vector>

#include "benchmarks/TempoStyles.h"
#include "tools/composer/studio/Drums.h"
#include "tools/composer/studio/Instruments.h"
#include "tools/composer/studio/Sound.h"

namespace bench {

/// Dice of our own, as the standard library's distributions differ between machines.
class SongDice {
 public:
  explicit SongDice(std::uint64_t seed) : state_(seed) {}
  std::uint64_t Next();
  double Real(double from, double to);
  int Below(int count) { return static_cast<int>(Next() % static_cast<std::uint64_t>(count)); }
  bool Chance(double share) { return Real(0, 1) < share; }
  /// Around zero, mostly within the deviation.
  double Near(double deviation);

 private:
  std::uint64_t state_;
};

enum class Drum { Kick, Snare, Clap, Rim, Closed, Open, Shaker, Tom, Crash };
enum class Part { Bass, Chords, Pad, Lead };

/// How the finished sum is treated.
struct BandMix {
  double loudness_db = -14;  ///< mean level before the compressor
  double squeeze = 0.5;      ///< 0 leaves the dynamics, 1 irons them flat
  double room = 0.2;         ///< how much of the room is heard
  double hiss_db = -70;
  double fade_in_seconds = 0, fade_out_seconds = 0;
};

/// The musicians of one song: each distinct stroke and note is synthesised once and then mixed in as often as
/// it is played.
class TempoBand {
 public:
  TempoBand(const TempoStyle& style, std::size_t frames, std::uint64_t seed);
  void Hit(Drum drum, double seconds, double level);
  void Note(Part part, double seconds, double held, int pitch, double level);
  /// The samples of both channels in turn. The band is used up.
  [[nodiscard]] std::vector<std::int16_t> Mix(const BandMix& mix);

 private:
  using Key = std::tuple<int, int, int>;
  [[nodiscard]] tools::composer::Stereo Strike(Drum drum, int variant);
  [[nodiscard]] tools::composer::Stereo Sing(Part part, double held, int pitch);
  [[nodiscard]] const tools::composer::Patch& PatchOf(Part part) const;
  void ChoosePatches(const TempoStyle& style);
  void Add(tools::composer::Stereo& bus, const tools::composer::Stereo& sample, double seconds, double gain,
           double send);
  void DuckMusic();
  void AddRoom(double level);
  void AddHiss(double level);

  SongDice dice_;
  tools::composer::Random noise_;
  tools::composer::Stereo drums_, music_;
  std::vector<float> to_room_;  ///< every second frame, both channels together
  std::vector<std::size_t> kicks_;
  std::map<Key, tools::composer::Stereo> strokes_, notes_;
  tools::composer::KickShape kick_;
  tools::composer::Patch bass_, chords_, pad_, lead_;
  bool plucked_ = false;
  double snare_hz_ = 190, duck_ = 0, drum_share_ = 1;
};

}  // namespace bench
