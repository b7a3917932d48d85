// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/MicrophoneStation.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "app/StationContext.h"
#include "app/WorkstationView.h"
#include "support/Sentences.h"
#include "support/Settings.h"

namespace app {
namespace {

using support::Sentence;

constexpr std::string_view kSection = "Microphone";
constexpr int kMostChannels = 32;

std::vector<decks::HallPlace> HallOf(const WorkstationView& decks) {
  std::vector<decks::HallPlace> hall;
  for (std::size_t deck = 0; deck < 2; ++deck) {
    const decks::HallPlace place{decks.outputs[deck].device, decks.outputs[deck].speaker};
    if (std::find(hall.begin(), hall.end(), place) == hall.end()) hall.push_back(place);
  }
  return hall;
}

float Stored(const support::Settings& settings, std::string_view key, int lowest, int highest) {
  return static_cast<float>(settings.Number(kSection, key, lowest, highest));
}

std::chrono::milliseconds StoredTime(const support::Settings& settings, std::string_view key, int lowest,
                                     int highest) {
  return std::chrono::milliseconds(settings.Number(kSection, key, lowest, highest));
}

void Store(support::Settings& settings, std::string_view key, float value) {
  if (std::isfinite(value)) settings.SetNumber(kSection, key, static_cast<int>(std::lround(value)));
}

decks::GateMode GateOf(int number) {
  if (number == 0) return decks::GateMode::Off;
  return number == 2 ? decks::GateMode::Fixed : decks::GateMode::Automatic;
}

int NumberOf(decks::GateMode gate) {
  if (gate == decks::GateMode::Off) return 0;
  return gate == decks::GateMode::Fixed ? 2 : 1;
}

}  // namespace

MicrophoneStation::MicrophoneStation(const StationContext& context, decks::Microphone* port)
    : context_(context), port_(port) {
  views_.Draft().now.inputs = no_inputs_;
  views_.Publish();
}

void MicrophoneStation::StartUp() {
  ReadSettings();
  Send();
}

void MicrophoneStation::ReadSettings() {
  const support::Settings& settings = context_.settings;
  wish_.device = settings.Text(kSection, "Device");
  device_name_ = settings.Text(kSection, "DeviceName");
  wish_.channel = settings.Number(kSection, "Channel", 0, kMostChannels);
  wish_.swift = settings.Flag(kSection, "Swift");
  decks::VoiceSettings& voice = wish_.voice;
  voice.gain = Stored(settings, "Gain", -20, 40);
  voice.low_cut = Stored(settings, "LowCut", 0, 120);
  voice.gate = GateOf(settings.Number(kSection, "Gate"));
  voice.gate_level = Stored(settings, "GateLevel", -80, -10);
  voice.bass = Stored(settings, "Bass", -12, 12);
  voice.middle = Stored(settings, "Mid", -12, 12);
  voice.treble = Stored(settings, "High", -12, 12);
  voice.compress = settings.Flag(kSection, "Compressor");
  voice.threshold = Stored(settings, "Threshold", -60, 0);
  voice.ratio = Stored(settings, "Ratio", 1, 20);
  voice.makeup = Stored(settings, "MakeUp", 0, 24);
  decks::DuckSettings& duck = wish_.duck;
  duck.on = settings.Flag(kSection, "Duck");
  duck.depth = Stored(settings, "DuckDepth", 0, 40);
  duck.attack = StoredTime(settings, "DuckAttack", 5, 1000);
  duck.hold = StoredTime(settings, "DuckHold", 0, 5000);
  duck.release = StoredTime(settings, "DuckRelease", 20, 10'000);
}

void MicrophoneStation::Switch(bool on) {
  wish_.on = on;
  Send();
}

void MicrophoneStation::TalkOver(bool held) {
  wish_.talk_over = held;
  Send();
}

void MicrophoneStation::Check(bool level) {
  wish_.check = level;
  Send();
}

void MicrophoneStation::Choose(const std::string& id) {
  const auto& inputs = *View().now.inputs;
  const auto chosen =
      std::find_if(inputs.begin(), inputs.end(), [&](const decks::InputInfo& info) { return info.id == id; });
  wish_.device = id;
  device_name_ = chosen == inputs.end() ? id : chosen->name;
  context_.settings.SetText(kSection, "Device", id);
  context_.settings.SetText(kSection, "DeviceName", device_name_);
  Send();
}

void MicrophoneStation::SetChannel(int channel) {
  wish_.channel = std::clamp(channel, 0, kMostChannels);
  context_.settings.SetNumber(kSection, "Channel", wish_.channel);
  Send();
}

void MicrophoneStation::SetVoice(const decks::VoiceSettings& voice) {
  wish_.voice = voice;
  StoreVoice();
  Send();
}

void MicrophoneStation::StoreVoice() const {
  support::Settings& settings = context_.settings;
  const decks::VoiceSettings& voice = wish_.voice;
  Store(settings, "Gain", voice.gain);
  Store(settings, "LowCut", voice.low_cut);
  settings.SetNumber(kSection, "Gate", NumberOf(voice.gate));
  Store(settings, "GateLevel", voice.gate_level);
  Store(settings, "Bass", voice.bass);
  Store(settings, "Mid", voice.middle);
  Store(settings, "High", voice.treble);
  settings.SetFlag(kSection, "Compressor", voice.compress);
  Store(settings, "Threshold", voice.threshold);
  Store(settings, "Ratio", voice.ratio);
  Store(settings, "MakeUp", voice.makeup);
}

void MicrophoneStation::SetDuck(const decks::DuckSettings& duck) {
  wish_.duck = duck;
  support::Settings& settings = context_.settings;
  settings.SetFlag(kSection, "Duck", duck.on);
  Store(settings, "DuckDepth", duck.depth);
  settings.SetNumber(kSection, "DuckAttack", static_cast<int>(duck.attack.count()));
  settings.SetNumber(kSection, "DuckHold", static_cast<int>(duck.hold.count()));
  settings.SetNumber(kSection, "DuckRelease", static_cast<int>(duck.release.count()));
  Send();
}

void MicrophoneStation::SetSwift(bool swift) {
  wish_.swift = swift;
  context_.settings.SetFlag(kSection, "Swift", swift);
  Send();
}

void MicrophoneStation::LookForInputs() {
  context_.conductor->Post([this] {
    if (port_ != nullptr) port_->LookForInputs();
  });
}

void MicrophoneStation::Send() {
  context_.conductor->Order(*this, &MicrophoneStation::Ask, wish_, device_name_);
}

void MicrophoneStation::Ask(const decks::MicrophoneWish& wish, const std::string& name) {
  std::vector<decks::HallPlace> hall = std::move(asked_.hall);
  asked_ = wish;
  asked_.hall = std::move(hall);
  asked_name_ = name;
  if (port_ != nullptr) port_->Ask(asked_);
}

void MicrophoneStation::Tick(const WorkstationView& decks) {
  MicrophoneView& view = views_.Draft();
  view.there = port_ != nullptr;
  if (view.now.inputs == nullptr) view.now.inputs = no_inputs_;
  if (port_ != nullptr) {
    if (std::vector<decks::HallPlace> hall = HallOf(decks); hall != asked_.hall) {
      asked_.hall = std::move(hall);
      port_->Ask(asked_);
    }
    port_->Watch();
    view.now = port_->Now();
    TellOf(view.now.trouble);
  }
  view.wish = asked_;
  view.device_name = asked_name_;
  view.trouble = told_ == support::Saying{} ? std::string() : context_.say(told_);
  views_.Publish();
}

void MicrophoneStation::TellOf(const support::Saying& trouble) {
  support::Saying saying = trouble;
  // One that was never seen here is known by the name that it had when it was chosen.
  if (saying.sentence == Sentence::InputMissing && !asked_name_.empty()) saying.parts = {asked_name_};
  if (saying == told_) return;
  const support::Saying before = std::exchange(told_, saying);
  if (saying != support::Saying{}) return context_.tell(saying);
  const bool wanted = asked_.on || asked_.talk_over || asked_.check;
  if (wanted && before.sentence == Sentence::InputGone) context_.tell({Sentence::InputBack, before.parts});
}

void MicrophoneStation::ShutDown() {
  if (port_ == nullptr) return;
  asked_ = {};
  port_->Ask(asked_);
  port_->Watch();
}

}  // namespace app
