// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Stage.h"

#include <utility>

namespace app {
namespace {

constexpr int kEngineRate = 44100;
constexpr int kNoSound = 0;

}  // namespace

Stage::Stage(decks::AudioEngine& engine, decks::SoundControl& sound, std::shared_ptr<Mailbox> box)
    : engine_(engine), sound_(sound) {
  for (int number = 1; number <= kDecks; ++number) {
    decks_[static_cast<std::size_t>(number - 1)] =
        std::make_unique<DeckStation>(number, engine, sound, controls_, box);
  }
}

void Stage::OpenOutputs(const std::array<OutputWish, 3>& wishes) {
  ReleaseEngine();
  std::array<OutputView, 3> places{};
  for (std::size_t i = 0; i < wishes.size(); ++i) {
    if (Open(wishes[i])) places[i] = wishes[i].place;
  }
  if (places[0].device == kNoSound && !IsOpen(kNoSound)) Open({});
  // A second deck without its device is better heard on the first one's; head-phones never are.
  if (places[1].device == kNoSound && wishes[1].place.device != kNoSound) places[1] = places[0];
  for (int output = 1; output <= 3; ++output) Route(output, places[static_cast<std::size_t>(output - 1)]);
}

bool Stage::Open(const OutputWish& wish) {
  const int device = wish.place.device;
  if (IsOpen(device)) return true;
  if (!engine_.BASS_Init(device, kEngineRate, wish.flags)) {
    notice_ = "The sound output \"" + wish.name + "\" cannot be opened.";
    return false;
  }
  open_.insert(device);
  return true;
}

void Stage::SetBuffers() {
  engine_.BASS_SetConfig(decks::kConfigUpdatePeriod, 20);
  engine_.BASS_SetConfig(decks::kConfigBuffer, 60);
}

void Stage::Route(int output, OutputView place) {
  outputs_[static_cast<std::size_t>(output - 1)] = place;
  if (output == 1) {
    Deck(1).RouteMain(place);
    Deck(3).RouteMain(place);
  } else if (output == 2) {
    Deck(2).RouteMain(place);
  } else {
    for (const int number : {1, 2, 3}) Deck(number).RoutePrelisten(place);
    Deck(4).RouteMain(place);
  }
}

void Stage::ReleaseDecks() {
  for (const auto& deck : decks_) deck->Release();
}

void Stage::ReleaseEngine() {
  engine_.BASS_Free();
  open_.clear();
}

void Stage::Tick() {
  for (const decks::DeviceEvent& event : sound_.TakeDeviceEvents()) notice_ = event.text;
  WorkstationView& view = views_.Draft();
  for (std::size_t i = 0; i < decks_.size(); ++i) decks_[i]->Tick(view.decks[i]);
  view.outputs = outputs_;
  view.health = sound_.Health();
  view.notice = notice_;
  views_.Publish();
}

}  // namespace app
