// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "tools/composer/studio/Drums.h"
#include "tools/composer/studio/Instruments.h"
#include "tools/composer/studio/Sound.h"

namespace tools::composer {

/// The mixing desk's strips.
enum class Strip { Drums, Hats, Bass, Chords, Pad, Arp, Lead, Effects };
inline constexpr std::size_t kStrips = 8;

struct StripSetting {
  double gain = 1;
  double reverb = 0, echo = 0;  ///< how much goes to each
  double duck = 0;              ///< how far the bass drum turns it down
};

struct Tempo {
  double bpm = 120;
  double swing = 0;  ///< how late every second sixteenth comes, as a share of a sixteenth
};

/// One track on its way from notes to sound: bars of sixteen steps in four-four time.
class Session {
 public:
  Session(Tempo tempo, int bars, std::uint32_t seed);

  [[nodiscard]] std::size_t At(int bar, double step) const;
  /// Seconds of a number of steps.
  [[nodiscard]] double Steps(double count) const { return count * 15 / tempo_.bpm; }
  [[nodiscard]] Stereo& On(Strip strip) { return strips_[static_cast<std::size_t>(strip)]; }
  [[nodiscard]] Random& Dice() { return dice_; }

  void Set(Strip strip, const StripSetting& setting) { settings_[static_cast<std::size_t>(strip)] = setting; }
  /// Plays the patch, a little softer or louder each time.
  void Note(Strip strip, int bar, double step, const Patch& patch, const Note& note);
  void Chord(Strip strip, int bar, double step, const Patch& patch, const std::vector<int>& pitches,
             double seconds, double level);
  /// A bass drum, which also ducks the strips that are set so.
  void BassDrum(int bar, double step, double level, const KickShape& shape = {});
  /// A low pass over the strip that moves evenly from the first bar's start to the last one's end.
  void Sweep(Strip strip, int first_bar, int bars, double from_hz, double to_hz);

  struct Finish {
    double head_seconds = 0.3, tail_seconds = 1;  ///< silence before and after
    double reverb_seconds = 1.8, reverb_hz = 4500;
    double echo_steps = 3, echo_feedback = 0.45;
    double lufs = -10.5;
  };
  /// The mixed and mastered track. The session is used up.
  [[nodiscard]] Stereo Mix(const Finish& finish);

 private:
  Tempo tempo_;
  int bars_;
  Random dice_;
  std::array<Stereo, kStrips> strips_;
  std::array<StripSetting, kStrips> settings_{};
  std::vector<std::size_t> bass_drums_;
};

/// The steps at which a pattern has something other than a dot: "x..x..x." gives 0, 3 and 6. A pattern of
/// half a bar or of two stays as long as it is.
[[nodiscard]] std::vector<int> Hits(std::string_view pattern);

}  // namespace tools::composer
