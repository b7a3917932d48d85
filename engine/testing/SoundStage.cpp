// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/testing/SoundStage.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace engine::testing {

OutputDeviceInfo StereoOutput(const std::string& id, bool is_default) {
  return {id, "Output " + id, {Speaker::FrontLeft, Speaker::FrontRight}, is_default};
}

OutputDeviceInfo EightChannelOutput(const std::string& id) {
  return {id,
          "Output " + id,
          {Speaker::FrontLeft, Speaker::FrontRight, Speaker::RearLeft, Speaker::RearRight,
           Speaker::FrontCentre, Speaker::Lfe, Speaker::SideLeft, Speaker::SideRight},
          false};
}

SoundStage::SoundStage(std::vector<OutputDeviceInfo> devices) : outputs(time, devices) {
  for (const OutputDeviceInfo& info : devices) {
    outputs.Listen(info.id, [this, id = info.id](std::span<const float> block) {
      given_[id].insert(given_[id].end(), block.begin(), block.end());
    });
  }
  SoundEnginePorts ports{outputs, files, stretchers, workers, time};
  outputs.SetLatency(kLatency);
  ports.make_silent = [this](const OutputDeviceInfo& info, const OutputRequest& request,
                             RenderSource& source) { return outputs.OpenSilent(info, request, source); };
  ports.device_workers = &looking;
  ports.kept_waiting = [this] { return busy_; };
  engine = std::make_unique<SoundEngine>(ports, SoundEngine::Feeding::ByHand);
  outputs.BeforeBlock([this] {
    while (feeding_ && engine->Pump()) {
    }
    if (working_) workers.RunAll();
    looking.RunAll();
  });
}

decks::StreamHandle SoundStage::Load(const std::string& path, int device, std::uint32_t speaker) {
  if (!engine->BASS_Init(device, 44100, decks::kInitSpeakers) || !engine->BASS_SetDevice(device)) return 0;
  const auto decoder = engine->BASS_StreamCreateFile(false, path, 0, 0, decks::kStreamDecode | speaker);
  if (working_) workers.RunAll();
  const auto stream = engine->BASS_FX_TempoCreate(decoder, decks::kTempoFreeSource | decks::kTempoLoop);
  engine->Pump();
  return stream;
}

std::vector<float> SoundStage::Channel(const std::string& id, std::size_t channel, std::size_t channels) {
  const std::vector<float>& all = given_[id];
  std::vector<float> one;
  for (std::size_t i = channel; i < all.size(); i += channels) one.push_back(all[i]);
  return one;
}

float SoundStage::Last(const std::string& id, std::size_t channel, std::size_t channels) {
  const std::vector<float>& all = given_[id];
  return all.size() < channels ? 0 : all[all.size() - channels + channel];
}

float SoundStage::AtLoudspeaker(const std::string& id, std::size_t channels) {
  const double seconds = std::chrono::duration<double>(time.Now().time_since_epoch() - kLatency).count();
  if (seconds < 0) return 0;
  return Given(id).at(static_cast<std::size_t>(seconds * 44100 + 1e-3) * channels);
}

float Roughness(const std::vector<float>& samples) {
  float largest = 0;
  for (std::size_t i = 2; i < samples.size(); ++i) {
    largest = std::max(largest, std::abs(samples[i] - 2 * samples[i - 1] + samples[i - 2]));
  }
  return largest;
}

float ToneRoughness(double hertz, double level, int sample_rate) {
  const double step = 2 * std::numbers::pi * hertz / sample_rate;
  return static_cast<float>(level * step * step);
}

std::size_t FirstSound(const std::vector<float>& samples) {
  const auto first = std::find_if(samples.begin(), samples.end(), [](float s) { return s != 0; });
  return static_cast<std::size_t>(first - samples.begin());
}

}  // namespace engine::testing
