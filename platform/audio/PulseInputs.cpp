// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/PulseInputs.h"

#include <algorithm>
#include <utility>

#include "platform/audio/PulseConnection.h"
#include "platform/audio/PulseInput.h"
#include "platform/audio/PulseSources.h"
#include "support/Sentences.h"

namespace platform::audio {

PulseInputs::PulseInputs(std::string server, std::function<void()> thread_started)
    : connection_(std::make_shared<PulseConnection>(std::move(server), std::move(thread_started))) {}

PulseInputs::~PulseInputs() {
  OnChange(nullptr);
}

std::vector<engine::InputDeviceInfo> PulseInputs::List() {
  if (!connection_->Loop().Runs()) return {};
  PulseLock lock(connection_->Loop());
  std::vector<engine::InputDeviceInfo> list;
  for (PulseSource& source : AskForSources(*connection_)) list.push_back(std::move(source.info));
  return list;
}

support::Result<std::unique_ptr<engine::InputDevice>> PulseInputs::Open(const engine::InputRequest& request,
                                                                        engine::CaptureSink& sink) {
  using support::ErrorCode;
  if (!connection_->Loop().Runs())
    return support::Failed(ErrorCode::Unavailable, support::Sentence::NoSoundThread);
  PulseLock lock(connection_->Loop());
  const std::vector<PulseSource> sources = AskForSources(*connection_);
  const auto wanted = std::find_if(sources.begin(), sources.end(),
                                   [&](const PulseSource& source) { return source.info.id == request.id; });
  if (wanted == sources.end()) {
    return support::Failed(ErrorCode::NotFound, support::Sentence::InputMissing, {request.id});
  }
  return PulseInput::Open(connection_, *wanted, request, sink);
}

void PulseInputs::OnChange(std::function<void()> changed) {
  if (!connection_->Loop().Runs()) return;
  PulseLock lock(connection_->Loop());
  connection_->OnChange(changed);
  connection_->OnSources(std::move(changed));
}

}  // namespace platform::audio
