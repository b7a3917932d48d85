// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/GeneratedSource.h"

#include <algorithm>
#include <cmath>

namespace engine {

void GeneratedSource::Begin(std::int64_t frame, const Tempo& tempo,
                            const std::optional<music::Loop>& /*loop*/) {
  source_ = static_cast<double>(frame);
  ended_ = false;
  SetTempo(tempo);
  voice_.Begin(frame);
}

void GeneratedSource::SetTempo(const Tempo& tempo) {
  tempo_ = tempo;
  voice_.SetSpeed(tempo.speed);
}

bool GeneratedSource::Make(LaneBlock& block, int frames) {
  const double left = std::ceil((static_cast<double>(generator_->Length()) - source_) / tempo_.speed);
  block.source = block.line = source_;
  block.ratio = tempo_.speed;
  block.last = left <= frames;
  block.frames = block.last ? static_cast<int>(std::max(left, 0.0)) : frames;
  const std::size_t count = static_cast<std::size_t>(block.frames);
  voice_.Make({left_.data(), count}, {right_.data(), count});
  for (std::size_t i = 0; i < count; ++i) {
    block.samples[2 * i] = std::isfinite(left_[i]) ? left_[i] : 0;
    block.samples[2 * i + 1] = std::isfinite(right_[i]) ? right_[i] : 0;
  }
  source_ += block.frames * tempo_.speed;
  ended_ = block.last;
  return true;
}

}  // namespace engine
