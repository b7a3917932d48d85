// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "music/MusicalKey.h"
#include "music/SpectrumFeed.h"

namespace decks {

/// A key with how sure it is, 0 to 1.
struct FoundKey {
  music::MusicalKey key;
  double confidence = 0;
};

/// Finds the musical key of a track while its samples come piece by piece.
///
/// The peaks of its spectra are laid over one octave, in the tuning that they themselves agree on, and
/// compared with what listeners expect of each key (the profiles of Sha'ath, 2011). Tones that never change,
/// noise, speech and silence have none. Takes the same memory for any length. Threads: one at a time.
class KeyFinder {
 public:
  /// Requires: above 0.
  explicit KeyFinder(double sample_rate);
  /// One channel, 1 is full scale.
  void Add(std::span<const float> samples);
  [[nodiscard]] std::optional<FoundKey> Finish() const;

  static constexpr std::size_t kTones = 12;
  using Chroma = std::array<double, kTones>;

 private:
  static constexpr std::size_t kPlacesPerTone = 50;  ///< two cents each
  void AddFrame(std::span<const float> power);
  void AddPeak(double hertz, double strength);
  /// In semitones, -0.5 to 0.5: what all peaks lie beside the usual tuning.
  [[nodiscard]] double Tuning() const;
  [[nodiscard]] Chroma TonesIn(double tuning) const;

  const double bin_hz_;
  music::SpectrumFeed feed_;
  std::size_t first_bin_, end_bin_;
  double frame_seconds_;
  std::vector<float> sorted_;
  std::array<double, kTones * kPlacesPerTone> octave_{};  ///< roots of the peaks' strengths
  double turned_re_ = 0, turned_im_ = 0;                  ///< sum of strengths, turned by their places
  double strength_ = 0;
  double tonal_seconds_ = 0;
};

}  // namespace decks
