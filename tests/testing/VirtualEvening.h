// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/testing/AllParts.h"
#include "catalogue/testing/FakeTagReader.h"
#include "engine/SoundEngine.h"
#include "engine/VirtualOutputs.h"
#include "engine/testing/SoundStage.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "platform/stretch/LibraryStretcherFactory.h"
#include "support/testing/ManualExecutor.h"
#include "support/testing/MemoryFiles.h"
#include "support/testing/MemorySettings.h"

namespace tests::testing {

/// A whole workstation on the real engine, decoders and stretchers, on a virtual clock; everything runs on
/// the calling thread.
///
/// Law: whatever Begin puts into the ports outlives End.
class VirtualEvening {
 public:
  static constexpr std::chrono::milliseconds kTick{10};

  explicit VirtualEvening(support::Duration latency = {}) {
    outputs_.SetLatency(latency);
    latency_ = std::chrono::duration<double>(latency).count();
    outputs_.BeforeBlock([this] {
      workers_.RunAll();
      engine_.Pump();
    });
    outputs_.Listen("main", [this](std::span<const float> samples) {
      for (std::size_t i = 0; i < samples.size(); i += 2) Hear(samples[i]);
    });
  }
  ~VirtualEvening() { End(); }
  VirtualEvening(const VirtualEvening&) = delete;
  VirtualEvening& operator=(const VirtualEvening&) = delete;

  /// fit: puts in what the evening has beside decks and files.
  void Begin(const std::function<void(app::Ports&)>& fit) {
    app::Ports ports{engine_, engine_, tags_, settings_, files_, workers_, time_};
    fit(ports);
    station_ = std::make_unique<app::Workstation>(ports, support::ProgramFolder("/no/such/folder"),
                                                  app::Workstation::Conducting::ByHand);
    station_->StartUp();
    Run(std::chrono::milliseconds(100));
  }
  void End() {
    if (station_) station_->ShutDown();
    station_.reset();
  }
  void Load(int deck, const std::string& path) {
    catalogue::track_table table(catalogue::TrackColumns());
    table.AddRow(std::vector<std::string_view>{"", "", "", path});
    station_->Decks()[deck].Load(table, 1);
  }
  /// ticked: after each tick.
  void Run(std::chrono::milliseconds time, const std::function<void()>& ticked = {}) {
    for (auto at = kTick * 0; at < time; at += kTick) {
      outputs_.Advance(kTick);
      workers_.RunAll();
      station_->Tick();
      if (ticked) ticked();
    }
  }

  [[nodiscard]] app::Workstation& Station() { return *station_; }
  [[nodiscard]] support::SettingsStore& Settings() { return settings_; }
  [[nodiscard]] const support::Clock& Clock() const { return time_; }
  /// In seconds on the clock.
  [[nodiscard]] double Now() const {
    return std::chrono::duration<double>(time_.Now().time_since_epoch()).count();
  }
  /// When a sound was heard that rises out of a tenth of a second of quiet, in seconds on the clock; the
  /// newest may be rendered only.
  [[nodiscard]] const std::vector<double>& Onsets() const { return onsets_; }

 private:
  void Hear(float sample) {
    constexpr int kRate = 44'100;
    if (opened_ < 0) opened_ = Now();
    if (std::abs(sample) > 0.05F) {
      if (frame_ - loud_ > kRate / 10) onsets_.push_back(opened_ + double(frame_) / kRate + latency_);
      loud_ = frame_;
    }
    ++frame_;
  }

  engine::VirtualTime time_;
  engine::VirtualOutputs outputs_{time_, {engine::testing::StereoOutput("main", true)}};
  platform::codec::FfmpegDecoderFactory decoders_;
  platform::stretch::LibraryStretcherFactory stretchers_;
  support::testing::ManualExecutor workers_;
  double latency_ = 0;
  double opened_ = -1;  ///< when the output began
  std::int64_t frame_ = 0;
  std::int64_t loud_ = -1'000'000;
  std::vector<double> onsets_;
  engine::SoundEngine engine_{{.outputs = outputs_,
                               .decoders = decoders_,
                               .stretchers = stretchers_,
                               .workers = workers_,
                               .clock = time_,
                               .memory = nullptr,
                               .make_silent = nullptr,
                               .thread_started = nullptr},
                              engine::SoundEngine::Feeding::ByHand};
  catalogue::testing::FakeTagReader tags_;
  support::testing::MemorySettings settings_;
  support::testing::MemoryFiles files_;
  std::unique_ptr<app::Workstation> station_;
};

}  // namespace tests::testing
