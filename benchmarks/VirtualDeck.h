// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/SoundEngine.h"
#include "engine/VirtualOutputs.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "platform/stretch/LibraryStretcherFactory.h"
#include "support/testing/ManualExecutor.h"

namespace bench {

/// Passes an output's pulls on and measures how long each took, as a share of the sound it asked for.
class TimedOutputs final : public engine::OutputDevices {
 public:
  explicit TimedOutputs(engine::OutputDevices& outputs);
  ~TimedOutputs() override;
  [[nodiscard]] std::vector<engine::OutputDeviceInfo> List() override { return outputs_.List(); }
  support::Result<std::unique_ptr<engine::OutputDevice>> Open(const engine::OutputRequest& request,
                                                              engine::RenderSource& source) override;
  void OnChange(std::function<void()> changed) override { outputs_.OnChange(std::move(changed)); }

  /// Shares of the period, one entry a pull.
  [[nodiscard]] const std::vector<double>& Shares() const { return shares_; }
  void Forget() { shares_.clear(); }

 private:
  class Timed;
  engine::OutputDevices& outputs_;
  std::vector<std::unique_ptr<Timed>> timed_;
  std::vector<double> shares_;
};

/// The real engine with real files and libraries on a virtual clock, everything on the calling thread.
class VirtualDeck {
 public:
  VirtualDeck();
  ~VirtualDeck();

  /// Decodes the file's first second; the rest while time advances.
  bool Prepare(const std::string& path);
  /// Starts a stream of a prepared file.
  decks::StreamHandle Play(const std::string& path, float tempo_percent);
  void Advance(support::Duration by) { outputs_.Advance(by); }
  /// Advances until anything but silence came out; the time it took on the virtual clock.
  support::Duration AdvanceToSound();
  [[nodiscard]] engine::SoundEngine& Engine() { return engine_; }
  /// The left channel of what comes out from now on; null ends it.
  void Record(std::vector<float>* into) { recording_ = into; }
  [[nodiscard]] TimedOutputs& Timing() { return timed_; }

 private:
  engine::VirtualTime time_;
  engine::VirtualOutputs outputs_;
  TimedOutputs timed_;
  platform::codec::FfmpegDecoderFactory decoders_;
  platform::stretch::LibraryStretcherFactory stretchers_;
  support::testing::ManualExecutor workers_;
  bool sounded_ = false;
  std::vector<float>* recording_ = nullptr;
  engine::SoundEngine engine_;
};

}  // namespace bench
