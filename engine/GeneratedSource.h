// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>

#include "engine/BlockSource.h"
#include "support/ports/SoundGenerator.h"

namespace engine {

/// Makes the blocks of one lane with one voice of a generator.
///
/// The generator changes speed by itself, so that there is one path and no library in it; another rate or
/// pitch is nothing it can be asked for. Threads: the feeder.
class GeneratedSource final : public BlockSource {
 public:
  /// Requires: the generator's rate is the device's.
  GeneratedSource(std::shared_ptr<support::SoundGenerator> generator, std::size_t voice)
      : generator_(std::move(generator)), voice_(generator_->Voice(voice)) {}

  [[nodiscard]] SegmentPath PathOf(const Tempo& /*tempo*/) const override { return {}; }
  /// A generator knows no loops.
  void Begin(std::int64_t frame, const Tempo& tempo, const std::optional<music::Loop>& loop) override;
  void SetTempo(const Tempo& tempo) override;
  [[nodiscard]] const Tempo& InForce() const noexcept override { return tempo_; }
  [[nodiscard]] double Source() const noexcept override { return source_; }
  [[nodiscard]] double Line() const noexcept override { return source_; }
  [[nodiscard]] double Ratio() const noexcept override { return tempo_.speed; }
  [[nodiscard]] bool Ended() const noexcept override { return ended_; }
  bool Make(LaneBlock& block, int frames) override;

 private:
  const std::shared_ptr<support::SoundGenerator> generator_;  // as the stream's
  support::GeneratorVoice& voice_;
  Tempo tempo_;
  double source_ = 0;
  bool ended_ = false;
  std::array<float, kLaneBlockFrames> left_{};
  std::array<float, kLaneBlockFrames> right_{};
};

}  // namespace engine
