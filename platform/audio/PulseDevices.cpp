// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/PulseDevices.h"

#include <algorithm>
#include <utility>

#include "platform/audio/PulseConnection.h"
#include "platform/audio/PulseDevice.h"
#include "platform/audio/PulseSinks.h"
#include "support/Sentences.h"

namespace platform::audio {

using support::ErrorCode;
using support::Failed;
using support::Sentence;

PulseDevices::PulseDevices(std::string server, std::function<void()> sound_thread_started)
    : connection_(std::make_shared<PulseConnection>(std::move(server), std::move(sound_thread_started))) {}

PulseDevices::~PulseDevices() {
  OnChange(nullptr);
}

std::vector<engine::OutputDeviceInfo> PulseDevices::List() {
  if (!connection_->Loop().Runs()) return {};
  PulseLock lock(connection_->Loop());
  std::vector<engine::OutputDeviceInfo> list;
  for (PulseSink& sink : AskForSinks(*connection_)) list.push_back(std::move(sink.info));
  return list;
}

support::Result<std::unique_ptr<engine::OutputDevice>> PulseDevices::Open(
    const engine::OutputRequest& request, engine::RenderSource& source) {
  if (!connection_->Loop().Runs()) return Failed(ErrorCode::Unavailable, Sentence::NoSoundThread);
  PulseLock lock(connection_->Loop());
  std::vector<PulseSink> sinks = AskForSinks(*connection_);
  if (sinks.empty()) return Failed(ErrorCode::Unavailable, Sentence::NoOutputNow);
  const auto wanted = std::find_if(sinks.begin(), sinks.end(), [&](const PulseSink& sink) {
    return request.id.empty() || sink.info.id == request.id;
  });
  if (wanted == sinks.end()) {
    return Failed(ErrorCode::NotFound, Sentence::OutputMissing, {request.id});
  }
  const engine::OutputDeviceInfo& first = sinks.front().info;
  return PulseDevice::Open(connection_, {*wanted, first.is_default ? first.id : std::string()}, request,
                           source);
}

void PulseDevices::OnChange(std::function<void()> changed) {
  if (!connection_->Loop().Runs()) return;
  PulseLock lock(connection_->Loop());
  connection_->OnChange(std::move(changed));
}

}  // namespace platform::audio
