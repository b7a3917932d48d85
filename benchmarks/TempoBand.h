// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <tuple>
#include <vector>

#include "benchmarks/SongDice.h"
#include "benchmarks/TempoMix.h"
#include "benchmarks/TempoStyles.h"
#include "tools/composer/studio/Drums.h"
#include "tools/composer/studio/Instruments.h"
#include "tools/composer/studio/Sound.h"

namespace bench {

enum class Drum { Kick, Snare, Clap, Rim, Closed, Open, Shaker, Tom, Crash };
enum class Part { Bass, Chords, Pad, Lead };

/// The musicians of one song: each distinct stroke and note is synthesised once and then mixed in as often as
/// it is played.
class TempoBand {
 public:
  TempoBand(const TempoStyle& style, std::size_t frames, std::uint64_t seed);
  void Hit(Drum drum, double seconds, double level);
  void Note(Part part, double seconds, double held, int pitch, double level);
  /// The finished song. The band is used up.
  [[nodiscard]] std::vector<std::int16_t> Mix(const BandMix& mix) { return MixDown(buses_, mix, noise_); }

 private:
  using Key = std::tuple<int, int, int>;
  [[nodiscard]] tools::composer::Stereo Strike(Drum drum, int variant);
  [[nodiscard]] tools::composer::Stereo Sing(Part part, double held, int pitch);
  [[nodiscard]] const tools::composer::Patch& PatchOf(Part part) const;
  void ChoosePatches(const TempoStyle& style);
  void Add(tools::composer::Stereo& bus, const tools::composer::Stereo& sample, double seconds, double gain,
           double send);

  SongDice dice_;
  tools::composer::Random noise_;
  BandBuses buses_;
  std::map<Key, tools::composer::Stereo> strokes_, notes_;
  tools::composer::KickShape kick_;
  tools::composer::Patch bass_, chords_, pad_, lead_;
  bool plucked_ = false;
  double snare_hz_ = 190, drum_share_ = 1;
};

}  // namespace bench
