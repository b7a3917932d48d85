// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <future>
#include <memory>
#include <string>
#include <utility>

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

  /// Opens a file as a deck does, so that what a deck refuses is refused with the same sentence.
  [[nodiscard]] support::Result<void> Prepare(const std::string& path) {
    auto prepared = std::make_shared<std::promise<support::Result<void>>>();
    auto answer = prepared->get_future();
    engine.Prepare(path,
                   [prepared](support::Result<void> result) { prepared->set_value(std::move(result)); });
    return answer.get();
  }
};

class NoIndicator final : public decks::ScanProgress {
 public:
  void Busy(double) override {}
};

}  // namespace tools::djinspect
