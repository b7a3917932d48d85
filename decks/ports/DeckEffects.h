// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>

#include "decks/ports/AudioEngine.h"

namespace decks {

/// The effects of a deck, in the order in which its sound goes through them behind trim and three bands.
enum class EffectKind { Equaliser, Filter, LowPass, Flanger, Echo, Echo3, Reverb, Swap, Rotate };
inline constexpr int kEffectKinds = 9;

inline constexpr float kLongestEcho = 4;  ///< seconds
inline constexpr float kMostFeedback = 0.9F;

/// What each of them does; all off as it is by default, and then every sample passes bit for bit.
struct EffectSettings {
  /// One knob: to the left a low pass closes, to the right a high pass, in the middle is neither.
  struct Filter {
    float position = 0;  ///< -1 to 1
    float q = 1.2F;      ///< 0.7 to 4
    bool operator==(const Filter&) const = default;
  };
  struct LowPass {
    bool on = false;
    float hertz = 20'000;  ///< 20 to 20000, which lets all through
    float q = 0.71F;       ///< 0.5 to 10
    bool operator==(const LowPass&) const = default;
  };
  struct Flanger {
    bool on = false;
    float hertz = 0.25F;  ///< 0.01 to 16 turns a second
    float wet = 0.5F;     ///< 0 to 1; the comb is deepest in the middle
    bool operator==(const Flanger&) const = default;
  };
  struct Echo {
    bool on = false;
    float level = 0.3F;      ///< 0 to 1, of the first repeat; of one repeat to the next at most kMostFeedback
    float seconds = 0.375F;  ///< 0.01 to kLongestEcho
    bool operator==(const Echo&) const = default;
  };
  /// The echo with a mixer of its own: its repeats die away at 0.4 whatever their level.
  struct Echo3 {
    bool on = false;
    float dry = 1;  ///< 0 to 1
    float wet = 0.4F;
    float seconds = 0.375F;
    bool operator==(const Echo3&) const = default;
  };
  struct Reverb {
    bool on = false;
    float level = 0.25F;   ///< 0 to 1
    float seconds = 1.8F;  ///< 0.2 to 8, until it is 60 dB down
    bool operator==(const Reverb&) const = default;
  };
  struct Rotate {
    bool on = false;
    float hertz = 0.25F;  ///< 0.01 to 16 swings a second
    float depth = 0.7F;   ///< 0 to 1; 1 swings the middle from one side to the other
    bool operator==(const Rotate&) const = default;
  };

  bool equaliser = true;  ///< the ten bands are heard
  Filter filter;
  LowPass low_pass;
  Flanger flanger;
  Echo echo;
  Echo3 echo3;
  Reverb reverb;
  bool swap = false;  ///< left and right
  Rotate rotate;
  bool operator==(const EffectSettings&) const = default;
};

/// What is past a range is taken back to it, what is no number is as it is by default.
[[nodiscard]] inline EffectSettings InRange(EffectSettings given) {
  const EffectSettings none;
  const auto hold = [](float& value, float lowest, float highest, float otherwise) {
    value = std::isnan(value) ? otherwise : std::clamp(value, lowest, highest);
  };
  hold(given.filter.position, -1, 1, none.filter.position);
  hold(given.filter.q, 0.7F, 4, none.filter.q);
  hold(given.low_pass.hertz, 20, 20'000, none.low_pass.hertz);
  hold(given.low_pass.q, 0.5F, 10, none.low_pass.q);
  hold(given.flanger.hertz, 0.01F, 16, none.flanger.hertz);
  hold(given.flanger.wet, 0, 1, none.flanger.wet);
  hold(given.echo.level, 0, 1, none.echo.level);
  hold(given.echo.seconds, 0.01F, kLongestEcho, none.echo.seconds);
  hold(given.echo3.dry, 0, 1, none.echo3.dry);
  hold(given.echo3.wet, 0, 1, none.echo3.wet);
  hold(given.echo3.seconds, 0.01F, kLongestEcho, none.echo3.seconds);
  hold(given.reverb.level, 0, 1, none.reverb.level);
  hold(given.reverb.seconds, 0.2F, 8, none.reverb.seconds);
  hold(given.rotate.hertz, 0.01F, 16, none.rotate.hertz);
  hold(given.rotate.depth, 0, 1, none.rotate.depth);
  return given;
}

/// Something of it is heard behind the bands.
[[nodiscard]] inline bool AnyOn(const EffectSettings& settings) {
  return settings.filter.position != 0 || settings.low_pass.on || settings.flanger.on || settings.echo.on ||
         settings.echo3.on || settings.reverb.on || settings.swap || settings.rotate.on;
}

/// As they are once BASS_FX_DSP_Remove has taken one of the sound effects away: nothing new goes into it.
/// Which of them the numbers mean is this table's; the number of the equaliser's bands means none of them.
[[nodiscard]] inline EffectSettings Without(int effect_type, EffectSettings settings) {
  switch (effect_type) {
    case 0:
      settings.swap = settings.rotate.on = false;
      break;
    case 1:
      settings.echo.on = false;
      break;
    case 2:
      settings.flanger.on = false;
      break;
    case 3:
      settings.low_pass.on = false;
      break;
    case 4:
      settings.reverb.on = false;
      break;
    case 7:
      settings.echo3.on = false;
      break;
    default:
      break;
  }
  return settings;
}

/// The effects of playing streams. Threads: as AudioEngine; all calls from its owner's.
class DeckEffects {
 public:
  virtual ~DeckEffects() = default;

  /// Of a stream and of those that follow it, within 30 ms and without a click. What was echoed rings out,
  /// also when the stream is paused, ends or is freed; then at the volume that is set for the next stream of
  /// the same deck. A paused stream rings until it is silent by itself, a freed one for some 20 s at most.
  /// deck: from 1. Nothing for a stream that is none.
  virtual void SetEffects(int deck, StreamHandle stream, const EffectSettings& settings) = 0;
  /// As they were set, within their ranges, without what was removed since; the default for a stream that is
  /// none.
  [[nodiscard]] virtual EffectSettings Effects(StreamHandle stream) = 0;
  /// Whatever rings of the deck's freed streams is faded out: there is no next one whose volume it would
  /// have.
  virtual void Silence(int deck) = 0;
};

}  // namespace decks
