// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "decks/MixPointScan.h"
#include "engine/SoundEngine.h"
#include "engine/VirtualOutputs.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "platform/stretch/LibraryStretcherFactory.h"
#include "support/Executor.h"

namespace tools::djinspect {

/// An engine that has no outputs and only decodes.
struct DecodingEngine {
  engine::VirtualTime time;
  engine::VirtualOutputs outputs{time, {}};
  platform::codec::FfmpegDecoderFactory decoders;
  platform::stretch::LibraryStretcherFactory stretchers;
  support::ThreadPool workers{1};
  engine::SoundEngine engine{{outputs, decoders, stretchers, workers, time},
                             engine::SoundEngine::Feeding::ByHand};
};

class NoIndicator final : public decks::ScanProgress {
 public:
  void Busy(double) override {}
};

}  // namespace tools::djinspect
