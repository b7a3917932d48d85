// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <span>

#include "decks/ports/SoundDesk.h"
#include "engine/RampedValue.h"
#include "support/TripleBuffer.h"

namespace engine {

/// Makes what the head-phones on a pair of speakers hear out of what is listened to there and the hall.
///
/// Law: as long as nothing but what is listened to is wished, at its full level, every sample passes bit for
/// bit. A change glides over 10 ms. Threads: Set by the owner, the rest in the callback.
class PhonesMix {
 public:
  static constexpr int kNone = -1;
  struct Wish {
    int phones = kNone;                     ///< pair code
    std::array<int, 2> hall{kNone, kNone};  ///< pair codes; none: not on this device
    decks::HeadphoneMix mix;
  };

  explicit PhonesMix(int sample_rate);

  void Set(const Wish& wish) noexcept;

  /// At the start of a block; what is wished now, until the next call. hall: whether there is one to be
  /// heard.
  const Wish& Take() noexcept { return wishes_.Read(); }
  /// Something of the hall is to be heard, or still is.
  [[nodiscard]] bool WantsHall(const decks::HeadphoneMix& mix) const noexcept;
  /// In place. hall: empty where none can be heard; else as long as the other one.
  void Process(std::span<float> phones, std::span<const float> hall, const decks::HeadphoneMix& mix) noexcept;

 private:
  /// What one ear gets of the two sides of a sound: its own, and the other.
  struct Ear {
    RampedValue own{0};
    RampedValue other{0};
  };
  void Aim(Ear& ear, float own, float other) noexcept;
  [[nodiscard]] bool Rests() const noexcept;

  const int glide_frames_;
  support::TripleBuffer<Wish> wishes_;
  std::array<Ear, 2> cue_;  ///< left and right ear
  std::array<Ear, 2> hall_;
};

}  // namespace engine
