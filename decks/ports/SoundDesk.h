// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "decks/ports/AudioEngine.h"
#include "support/Units.h"

namespace decks {

/// A band at or below this is not heard at all.
inline constexpr support::Decibels kKilled{-60};

/// The three bands of a stream: below 250 Hz, above 2500 Hz and what lies between.
struct Tone {
  support::Decibels bass;  ///< at most 12 dB up, each
  support::Decibels mid;
  support::Decibels high;
  bool operator==(const Tone&) const = default;
};

struct SpeakerPair {
  int device = 0;             ///< 0: no sound
  std::uint32_t speaker = 0;  ///< a flag of the pair; 0 is all of the device's
  bool operator==(const SpeakerPair&) const = default;
};

/// What the head-phones hear. As it is by default they hear what is listened to, and nothing else.
struct HeadphoneMix {
  float programme = 0;  ///< 0 is what is listened to alone, 1 the hall alone, at equal power between them
  bool split = false;   ///< what is listened to on the left, the hall on the right, both whole
  float level = 1;      ///< of all of it, 0 to 1
  bool operator==(const HeadphoneMix&) const = default;
};

/// Where the two decks and the head-phones play.
struct DeskLines {
  std::array<SpeakerPair, 2> hall;
  SpeakerPair headphones;
  HeadphoneMix mix;
  bool operator==(const DeskLines&) const = default;
};

/// What leaves the limiter of the hall, as it is heard now.
struct MasterReading {
  static constexpr support::Decibels kSilence{-200};
  support::Decibels reduction;              ///< by the limiter, at least 0
  support::Decibels true_peak = kSilence;   ///< dBTP, of the newest tenth of a second
  support::Decibels momentary = kSilence;   ///< LUFS, of the newest 0.4 s
  support::Decibels short_term = kSilence;  ///< LUFS, of the newest 3 s
};

/// What a hand turns at the desk: the tone of a stream, the mix in the head-phones, and the hall's meter.
///
/// Threads: as AudioEngine; all calls from its owner's.
class SoundDesk {
 public:
  virtual ~SoundDesk() = default;

  /// Of a playing stream and of those that follow it; flat until told otherwise. Acts within 30 ms, without a
  /// click. Nothing for a stream that is none.
  virtual void SetTone(StreamHandle stream, const Tone& tone) = 0;
  /// Who plays where, and how the head-phones hear it. Told again whenever a device may have been opened.
  virtual void Direct(const DeskLines& lines) = 0;
  /// The head-phones can hear the hall: they are a pair of their own on its device, or on another device.
  [[nodiscard]] virtual bool HallReachesHeadphones() = 0;
  /// Of the first of the hall's pairs.
  [[nodiscard]] virtual MasterReading Master() = 0;
};

}  // namespace decks
