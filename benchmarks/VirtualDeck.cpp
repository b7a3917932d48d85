// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmarks/VirtualDeck.h"

#include <algorithm>
#include <chrono>

#include "benchmarks/Report.h"

namespace bench {
namespace {

using std::chrono::milliseconds;

constexpr std::size_t kMostPulls = 1 << 20;

engine::OutputDeviceInfo Stereo() {
  return {"main", "Main", {engine::Speaker::FrontLeft, engine::Speaker::FrontRight}, true};
}

}  // namespace

class TimedOutputs::Timed final : public engine::RenderSource {
 public:
  Timed(engine::RenderSource& source, std::size_t channels, int rate, std::vector<double>& shares)
      : source_(source), per_second_(static_cast<double>(channels) * rate), shares_(shares) {}
  void Render(std::span<float> interleaved) noexcept override {
    // CPU time: on a busy machine the clock on the wall measures the others.
    const double begin = ThreadCpuSeconds();
    source_.Render(interleaved);
    const double took = ThreadCpuSeconds() - begin;
    const double period = static_cast<double>(interleaved.size()) / per_second_;
    if (shares_.size() < kMostPulls) shares_.push_back(took / period);
  }

 private:
  engine::RenderSource& source_;
  double per_second_;
  std::vector<double>& shares_;
};

TimedOutputs::TimedOutputs(engine::OutputDevices& outputs) : outputs_(outputs) {}

TimedOutputs::~TimedOutputs() = default;

support::Result<std::unique_ptr<engine::OutputDevice>> TimedOutputs::Open(
    const engine::OutputRequest& request, engine::RenderSource& source) {
  shares_.reserve(kMostPulls);
  const auto channels = outputs_.List().front().speakers.size();
  timed_.push_back(std::make_unique<Timed>(source, channels, request.sample_rate, shares_));
  return outputs_.Open(request, *timed_.back());
}

VirtualDeck::VirtualDeck()
    : outputs_(time_, {Stereo()}),
      timed_(outputs_),
      engine_({.outputs = timed_,
               .decoders = decoders_,
               .stretchers = stretchers_,
               .workers = workers_,
               .clock = time_,
               .memory = nullptr,
               .make_silent = nullptr,
               .thread_started = nullptr},
              engine::SoundEngine::Feeding::ByHand) {
  outputs_.BeforeBlock([this] {
    workers_.RunOne();
    engine_.Pump();
  });
  outputs_.Listen("main", [this](std::span<const float> samples) {
    for (std::size_t i = 0; recording_ != nullptr && i < samples.size(); i += 2) {
      recording_->push_back(samples[i]);
    }
    sounded_ = sounded_ || std::any_of(samples.begin(), samples.end(), [](float s) { return s != 0; });
  });
  engine_.BASS_Init(1, 44100, 0);
  engine_.BASS_SetDevice(1);
}

VirtualDeck::~VirtualDeck() {
  engine_.BASS_Free();
}

bool VirtualDeck::Prepare(const std::string& path) {
  bool answered = false, good = false;
  engine_.Prepare(path, [&](support::Result<void> result) {
    answered = true;
    good = result.Ok();
  });
  while (!answered && workers_.RunOne()) {
  }
  return good;
}

decks::StreamHandle VirtualDeck::Play(const std::string& path, float tempo_percent) {
  const decks::StreamHandle decoder = engine_.BASS_StreamCreateFile(false, path, 0, 0, decks::kStreamDecode);
  const decks::StreamHandle stream =
      engine_.BASS_FX_TempoCreate(decoder, decks::kTempoFreeSource | decks::kTempoLoop);
  if (tempo_percent != 0) {
    engine_.BASS_FX_TempoSet(stream, tempo_percent, decks::kTempoUnchanged, decks::kTempoUnchanged);
  }
  engine_.BASS_ChannelPlay(stream, false);
  return stream;
}

support::Duration VirtualDeck::AdvanceToSound() {
  const support::TimePoint begin = time_.Now();
  sounded_ = false;
  while (!sounded_ && time_.Now() - begin < std::chrono::seconds(1)) outputs_.Advance(milliseconds(1));
  return time_.Now() - begin;
}

}  // namespace bench
