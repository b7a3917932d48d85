// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "decks/ports/AudioEngine.h"
#include "engine/StreamEffect.h"
#include "music/PeakingFilter.h"
#include "support/TripleBuffer.h"

namespace engine {

/// The band's filter: music::PeakingFilter, and flat too for a centre outside the band.
[[nodiscard]] music::Biquad PeakingFilter(const decks::PeakingBand& band, int sample_rate);

/// Ten peaking filters in a row on one stream.
///
/// Threads: Process and Reset in the callback, the rest by the owner; neither waits for the other.
/// Law: at 0 dB everywhere every sample passes bit for bit. A change glides over 5 ms, from wherever the last
/// one has got to; both ends are stable, and so is every filter between them (the region of stable
/// denominators is convex). The memory of each filter holds sound, not sums, so a glide makes no step.
class PeakingEqualiser final : public StreamEffect {
 public:
  static constexpr int kBands = 10;

  explicit PeakingEqualiser(int sample_rate);

  /// Flat at first; false when there are ten.
  bool AddBand();
  /// False, and nothing changed, for a band that was not added or numbers that are none.
  bool Set(const decks::PeakingBand& band);
  bool Get(decks::PeakingBand& band) const;
  void RemoveBands();
  /// Flat whatever the bands are, which stay as they are set.
  void Bypass(bool bypassed);
  /// The bands of another one, at the own rate.
  void BandsAs(const PeakingEqualiser& other);

  void Process(std::span<float> stereo) noexcept override;
  void Reset() noexcept override;

 private:
  using Filters = std::array<music::Biquad, kBands>;
  struct Curve {
    std::uint64_t version = 0;
    Filters filters{};
  };
  /// The callback's side of one band: the filter, on its way to another, and the last two frames.
  struct Section {
    music::Biquad now, target, step;
    int glide_left = 0;
    bool idle = true;  ///< flat and settled: it is left out
    std::array<double, 2> x1{}, x2{}, y1{}, y2{};
  };

  void HandOver();
  void TakeCurve() noexcept;
  void Filter(Section& section, std::span<float> stereo) const noexcept;
  static void FilterChannel(Section& section, const music::Biquad& begin, int glide, std::span<float> stereo,
                            std::size_t channel) noexcept;
  void Remember(Section& section, std::span<const float> stereo) const noexcept;
  static void Rest(Section& section) noexcept;

  const int sample_rate_;
  const int glide_frames_;
  bool bypassed_ = false;
  int count_ = 0;
  std::array<decks::PeakingBand, kBands> bands_{};
  std::uint64_t version_ = 0;
  Filters wanted_{};
  support::TripleBuffer<Curve> curves_;
  std::uint64_t seen_ = 0;
  std::array<Section, kBands> sections_;
};

}  // namespace engine
