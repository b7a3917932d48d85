// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <span>
#include <vector>

#include "engine/PassingReader.h"
#include "support/TripleBuffer.h"

namespace engine {

/// The halls that play on other devices, in the callback of the head-phones' device: read at its rate, and as
/// far behind them as makes both sound at one moment.
/// Threads: Use and Place by the owner, the rest in the callback.
class HallElsewhere {
 public:
  static constexpr std::size_t kHalls = 2;
  using Sounds = std::array<std::shared_ptr<const PassingSound>, kHalls>;

  explicit HallElsewhere(int sample_rate);

  /// Where the two decks play; null for one that plays here or nowhere. What it was given once stays with it:
  /// the callback may still be reading it.
  void Use(const Sounds& sounds);
  /// The reading shall be this far behind the writing, in seconds.
  void Place(std::size_t hall, double behind) noexcept;

  /// Once a callback.
  void Begin(support::TimePoint now, int frames) noexcept;
  [[nodiscard]] bool Has(std::size_t hall) const noexcept { return halls_[hall].sound != nullptr; }
  /// Adds what comes of it. False when nothing does.
  bool Add(std::size_t hall, std::span<float> stereo) noexcept;
  /// Nobody hears them: the next Begin starts anew.
  void Rest() noexcept;

 private:
  struct Hall {
    explicit Hall(int sample_rate) : reader(sample_rate, 2, kMostBehind) {}
    const PassingSound* sound = nullptr;
    PassingReader reader;
    bool sounds = false;
    std::atomic<double> behind{0};
  };
  static constexpr double kMostBehind = 1;

  std::vector<std::shared_ptr<const PassingSound>> held_;
  support::TripleBuffer<std::array<const PassingSound*, kHalls>> wishes_;
  std::array<Hall, kHalls> halls_;
};

}  // namespace engine
