// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/OutputStation.h"

#include <algorithm>
#include <utility>

#include "app/DeckRack.h"
#include "app/Ports.h"
#include "app/StationContext.h"
#include "app/ports/Prompts.h"
#include "app/ports/SystemMixer.h"
#include "app/settings/OutputSettings.h"
#include "app/sound/MasterVolume.h"
#include "support/Settings.h"

namespace app {

OutputStation::OutputStation(const StationContext& context, const Ports& ports, DeckRack& rack,
                             support::Settings& settings)
    : context_(context), ports_(ports), rack_(rack), settings_(settings) {}

void OutputStation::OpenMixer() {
  if (ports_.mixer == nullptr) return;
  // A sound system may take its time to answer; the slider follows when it has.
  // What it told before the slider was moved, and is taken out of the box after that, is an echo of steps
  // that the hand has left behind.
  auto told = [box = context_.conductor, sets = volume_sets_, this](int percent) {
    box->Post([this, percent, before = sets->load()] {
      if (before == *volume_sets_) rack_.FollowMixer(percent);
    });
  };
  context_.workers.Post([mixer = ports_.mixer, gate = context_.gate, told = std::move(told)] {
    gate->Pass([&] { mixer->Open(told); });
  });
}

void OutputStation::FollowDevices() {
  ListDevices();
  rack_.Outputs().OnDevicesListed([this] { context_.window->Order(*this, &OutputStation::ListDevices); });
}

void OutputStation::ListDevices() {
  device_names_.clear();
  constexpr int kMostDevices = 256;  // an engine that never ends its list does not keep the window shut
  for (int device = 1; device <= kMostDevices; ++device) {
    auto name = ports_.engine.BASS_GetDeviceDescription(device);
    if (!name) return;
    device_names_.push_back(std::move(*name));
  }
}

void OutputStation::Open(Prompts& prompts) {
  OutputsAtStart outputs = ReadOutputs(settings_, device_names_, context_.say);
  if (device_names_.empty()) outputs.notice = {support::Sentence::NoOutputs};
  FollowOutput(outputs.wishes[0].place.device);
  context_.conductor->Post([this, &prompts, outputs = std::move(outputs)] {
    for (const std::string& failure : rack_.Outputs().OpenAll(outputs.wishes))
      context_.window->Order(prompts, &Prompts::Tell, failure);
    if (outputs.notice != support::Saying{}) {
      rack_.Notices().Warn({NoticeBoard::Subject::Kind::StoredOutput, 0}, outputs.notice);
    }
  });
}

void OutputStation::Set(int output, OutputView choice) {
  if (output < 1 || output > kOutputs || choice.device < 0) return;
  StoreOutput(settings_, output, choice, device_names_);
  if (output == 1) FollowOutput(choice.device);
  const OutputWish wish = WishFor(choice, device_names_, context_.say);
  const bool shared = output == 1 && !HasOwn();
  context_.conductor->Order(rack_.Outputs(), &OutputRouting::Move, output, wish);
  if (shared) context_.conductor->Order(rack_.Outputs(), &OutputRouting::Move, 2, wish);
}

void OutputStation::FollowOutput(int device) {
  if (ports_.mixer == nullptr) return;
  const auto index = static_cast<std::size_t>(device) - 1;
  ports_.mixer->Choose(index < device_names_.size() ? device_names_[index] : std::string());
}

void OutputStation::Share() {
  ShareFirstOutput(settings_);
  context_.conductor->Order(rack_.Outputs(), &OutputRouting::Share);
}

bool OutputStation::HasOwn() const {
  return HasSecondOutput(settings_);
}

void OutputStation::Return(int output) {
  context_.conductor->Order(rack_.Outputs(), &OutputRouting::Return, output);
}

SoundPriority::Level OutputStation::Priority() const {
  return ports_.priority == nullptr ? SoundPriority::Level::Asked : ports_.priority->Now();
}

void OutputStation::SetMainVolume(int main_volume) {
  context_.conductor->Order(*this, &OutputStation::MoveMainVolume, std::clamp(main_volume, 0, 99));
}

/// The conductor's.
void OutputStation::MoveMainVolume(int slider) {
  rack_.SetMainVolume(slider);
  if (ports_.mixer != nullptr) ports_.mixer->SetVolume(PercentOf(slider));
  ++*volume_sets_;
}

}  // namespace app
