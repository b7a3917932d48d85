// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/HallMicrophone.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "support/Sentences.h"

namespace engine {
namespace {

using support::ErrorCode;
using support::Sentence;

constexpr auto kTryEvery = std::chrono::seconds(1);
constexpr int kSwiftBuffer = 10;  // ms
constexpr int kBufferStep = 5;
constexpr auto kStepEvery = std::chrono::milliseconds(100);
constexpr float kSilence = 1e-6F;

float InDecibels(float level) {
  return 20 * std::log10(std::max(level, kSilence));
}

float Between(float value, float lowest, float highest, float otherwise) {
  return std::isfinite(value) ? std::clamp(value, lowest, highest) : otherwise;
}

float InSeconds(std::chrono::milliseconds time, int shortest, int longest) {
  return static_cast<float>(std::clamp<std::int64_t>(time.count(), shortest, longest)) / 1000;
}

DuckShape ShapeOf(const decks::DuckSettings& settings) {
  return {settings.on ? Between(settings.depth, 0, 40, 12) : 0, InSeconds(settings.attack, 5, 1000),
          InSeconds(settings.hold, 0, 5000), InSeconds(settings.release, 20, 10'000)};
}

unsigned BitOf(int pair) {
  return 1U << (pair >= 1 && pair < SpeakerMap::kCodes ? pair : 0);
}

const InputDeviceInfo* Look(const std::vector<InputDeviceInfo>& listed, const std::string& id) {
  const auto found =
      std::find_if(listed.begin(), listed.end(), [&](const InputDeviceInfo& info) { return info.id == id; });
  return found == listed.end() ? nullptr : &*found;
}

/// What the system would take, but no sound of an output.
const InputDeviceInfo* Default(const std::vector<InputDeviceInfo>& listed) {
  const InputDeviceInfo* chosen = nullptr;
  for (const InputDeviceInfo& info : listed) {
    if (!info.monitor_of.empty()) continue;
    if (chosen == nullptr || info.is_default) chosen = &info;
  }
  return chosen;
}

}  // namespace

HallMicrophone::HallMicrophone(InputDevices& inputs, std::shared_ptr<DeviceTable> outputs,
                               support::Executor& workers, const support::Clock& clock)
    : inputs_(inputs),
      outputs_(std::move(outputs)),
      workers_(workers),
      clock_(clock),
      ring_(std::make_shared<CaptureRing>()),
      changed_(std::make_shared<std::atomic<bool>>(false)),
      inlet_(*ring_, clock) {
  state_.inputs = std::make_shared<const std::vector<decks::InputInfo>>();
  inputs_.OnChange([changed = changed_] { changed->store(true); });
}

void HallMicrophone::Ask(const decks::MicrophoneWish& wish) {
  support::MutexLock lock(mutex_);
  const bool was_wanted = Wanted();
  const std::string device = std::exchange(wish_, wish).device;
  ++asked_;
  inlet_.Choose(wish.channel);
  if (Wanted() != was_wanted || wish.device != device) {
    next_try_ = clock_.Now();
    held_.clear();
  }
  if (!Wanted()) state_.trouble = {};
}

void HallMicrophone::LookForInputs() {
  support::MutexLock lock(mutex_);
  look_ = true;
}

decks::MicrophoneState HallMicrophone::Now() {
  support::MutexLock lock(mutex_);
  return state_;
}

void HallMicrophone::Watch() {
  support::MutexLock lock(mutex_);
  if (closed_) return;
  FollowHalls();
  WatchInput();
  Report();
}

void HallMicrophone::FollowHalls() {
  for (Hall& hall : halls_) hall.pairs = 0;
  for (const decks::HallPlace& place : wish_.hall) {
    auto slot = outputs_->Find(place.device);
    if (slot == nullptr) continue;
    auto hall = std::find_if(halls_.begin(), halls_.end(), [&](const Hall& one) { return one.slot == slot; });
    if (hall == halls_.end()) {
      slot->Core().Microphone().Use(ring_);
      const int buffer = slot->Request().buffer_ms;
      const std::uint64_t gaps = slot->Gaps();
      hall = halls_.insert(hall, {place.device, std::move(slot), 0, 0, false, buffer, gaps, {}});
    }
    hall->pairs |= BitOf(place.pair);
  }
  for (Hall& hall : halls_) {
    Tell(hall);
    FitBuffer(hall);
  }
  std::erase_if(halls_, [this](const Hall& hall) {
    const bool settled = hall.pairs == 0 && hall.buffer_ms == hall.slot->Request().buffer_ms;
    return settled || outputs_->Find(hall.device) != hall.slot;
  });
}

void HallMicrophone::Tell(Hall& hall) {
  // One that is no hall any more hears so once.
  const std::uint64_t told = hall.pairs == 0 ? ~asked_ : asked_ + (std::uint64_t{hall.pairs} << 32);
  if (std::exchange(hall.asked, told) == told) return;
  LineOrders orders;
  orders.live = hall.pairs != 0 && Heard();
  orders.listen = hall.pairs != 0 && Wanted();
  orders.talk_over = wish_.talk_over;
  orders.pairs = hall.pairs;
  orders.voice = ShapeOf(wish_.voice, hall.slot->Core().SampleRate());
  orders.duck = ShapeOf(wish_.duck);
  hall.slot->Core().Microphone().Set(orders);
}

void HallMicrophone::FitBuffer(Hall& hall) {
  const OutputRequest& own = hall.slot->Request();
  const bool swift = wish_.swift && hall.pairs != 0 && Heard();
  const std::uint64_t gaps = hall.slot->Gaps();
  const bool late = std::exchange(hall.gaps, gaps) < gaps;
  int wanted = hall.buffer_ms;
  if (std::exchange(hall.swift, swift) != swift && swift) {
    wanted = std::min(kSwiftBuffer, own.buffer_ms);
  } else if (swift && late) {
    wanted = std::min(hall.buffer_ms + kBufferStep, own.buffer_ms);
  } else if (!swift && hall.buffer_ms < own.buffer_ms && clock_.Now() >= hall.stepped + kStepEvery) {
    wanted = std::min(hall.buffer_ms + kBufferStep, own.buffer_ms);
    hall.stepped = clock_.Now();
  }
  if (std::exchange(hall.buffer_ms, wanted) == wanted) return;
  hall.slot->SetBuffer(wanted, wanted == own.buffer_ms ? own.period_ms : std::min(own.period_ms, wanted / 2));
}

void HallMicrophone::WatchInput() {
  const bool lost = input_ != nullptr && input_->Lost();
  const bool differs = Wanted() != (input_ != nullptr) || (Wanted() && wish_.device != settled_);
  const bool due = differs && clock_.Now() >= next_try_;
  const bool news = Wanted() && changed_->load();
  const bool loops = input_ != nullptr && Loops(opened_);
  if (lost) state_.trouble = {Sentence::InputGone, {opened_.name}};
  if (settling_ || !(lost || due || news || loops || look_)) return;
  changed_->store(false);
  settling_ = true;
  workers_.Post([weak = weak_from_this()] {
    if (const auto self = weak.lock()) self->Settle();
  });
}

void HallMicrophone::Report() {
  state_.open = input_ != nullptr && !input_->Lost();
  state_.heard = state_.open && Heard();
  const auto hall =
      std::find_if(halls_.begin(), halls_.end(), [](const Hall& one) { return one.pairs != 0; });
  if (hall == halls_.end()) return;
  const LineReport report = hall->slot->Core().Microphone().Report();
  state_.gate_open = report.gate_open;
  state_.input = state_.open ? InDecibels(report.input) : InDecibels(0);
  state_.level = state_.open ? InDecibels(report.level) : InDecibels(0);
  state_.reduction = state_.open ? report.reduction : 0;
  state_.ducking = report.ducking;
  gaps_ = report.gaps;
  state_.gaps = gaps_ - std::min(gaps_before_, gaps_);
  MeasureLatency(*hall);
}

void HallMicrophone::MeasureLatency(const Hall& hall) {
  const auto mark = hall.slot->Core().Microphone().Mark();
  const std::int64_t heard = hall.slot->HeardFrame();
  if (!state_.open || !mark || mark->delay <= 0 || heard == kNothingHeard) {
    state_.latency = {};
    return;
  }
  using Seconds = std::chrono::duration<double>;
  const Seconds to_come(static_cast<double>(mark->frame - heard) / hall.slot->Core().SampleRate());
  const Seconds now = Seconds(clock_.Now() - mark->at) + to_come + Seconds(mark->delay) + input_->Behind();
  const auto exact = std::chrono::duration_cast<std::chrono::microseconds>(now);
  // Whoever reads it wants no flicker.
  state_.latency = state_.latency.count() == 0 ? exact : state_.latency + (exact - state_.latency) / 16;
}

void HallMicrophone::Settle() {
  support::MutexLock opening(opening_);
  bool wanted = false;
  bool look = false;
  std::string device;
  {
    support::MutexLock lock(mutex_);
    wanted = Wanted() && !closed_;
    look = std::exchange(look_, false);
    device = wish_.device;
  }
  if (!wanted) CloseInput();
  if (wanted) {
    SettleOn(device);
  } else if (look) {
    Publish(inputs_.List());
  }
  support::MutexLock lock(mutex_);
  settling_ = false;
  next_try_ = clock_.Now() + kTryEvery;
  if (Wanted() != wanted || wish_.device != device) next_try_ = clock_.Now();
}

void HallMicrophone::SettleOn(const std::string& wanted) {
  const Inputs listed = inputs_.List();
  Publish(listed);
  std::string held = wanted;
  {
    support::MutexLock lock(mutex_);
    settled_ = wanted;
    if (wanted.empty()) held = held_;
  }
  const auto chosen = Choose(listed, held);
  bool open = false;
  {
    support::MutexLock lock(mutex_);
    open = chosen && input_ != nullptr && !input_->Lost() && opened_.id == chosen.Value().id;
  }
  if (!open) CloseInput();
  if (!chosen) return Trouble(chosen.Failure().saying);
  const InputDeviceInfo& info = chosen.Value();
  if (!open) return Open(info);
  Trouble(info.muted ? support::Saying{Sentence::InputMuted, {info.name}} : support::Saying{});
}

support::Result<InputDeviceInfo> HallMicrophone::Choose(const Inputs& listed, const std::string& wanted) {
  const InputDeviceInfo* const found = wanted.empty() ? Default(listed) : Look(listed, wanted);
  if (found != nullptr && !Loops(*found)) return *found;
  if (found != nullptr) return support::Failed(ErrorCode::Unsupported, Sentence::InputLoop, {found->name});
  if (wanted.empty()) return support::Failed(ErrorCode::Unavailable, Sentence::NoInput);
  support::MutexLock lock(mutex_);
  // One that was here a moment ago went away; it has a name.
  if (opened_.id == wanted)
    return support::Failed(ErrorCode::Unavailable, Sentence::InputGone, {opened_.name});
  return support::Failed(ErrorCode::NotFound, Sentence::InputMissing, {wanted});
}

bool HallMicrophone::Loops(const InputDeviceInfo& info) {
  if (info.monitor_of.empty()) return false;
  const auto slots = outputs_->All();
  return std::any_of(slots.begin(), slots.end(),
                     [&](const auto& slot) { return slot->PlaysOn() == info.monitor_of; });
}

void HallMicrophone::Publish(const Inputs& listed) {
  std::vector<decks::InputInfo> inputs;
  for (const InputDeviceInfo& info : listed) {
    inputs.push_back(
        {info.id, info.name, info.channels, info.is_default, !info.monitor_of.empty(), Loops(info)});
  }
  auto shared = std::make_shared<const std::vector<decks::InputInfo>>(std::move(inputs));
  support::MutexLock lock(mutex_);
  state_.inputs = std::move(shared);
}

void HallMicrophone::Open(const InputDeviceInfo& info) {
  if (info.channels < 1 || info.sample_rate < 1) {
    return Trouble({Sentence::InputBusy, {info.name}});
  }
  inlet_.Begin(info.channels, info.sample_rate);
  InputRequest request;
  request.id = info.id;
  auto opened = inputs_.Open(request, inlet_);
  if (!opened) return Trouble(opened.Failure().saying);
  const InputDeviceInfo now = opened.Value()->Info();
  // It was set up otherwise meanwhile: the next try finds it as it is.
  if (now.channels != info.channels || now.sample_rate != info.sample_rate) return;
  support::MutexLock lock(mutex_);
  input_ = std::move(opened).Value();
  opened_ = info;
  held_ = info.id;
  gaps_before_ = gaps_;
  state_.device = info.id;
  state_.trouble = info.muted ? support::Saying{Sentence::InputMuted, {info.name}} : support::Saying{};
}

void HallMicrophone::CloseInput() {
  std::unique_ptr<InputDevice> closing;
  {
    support::MutexLock lock(mutex_);
    closing = std::move(input_);
    state_.device.clear();
    state_.open = state_.heard = false;
  }
  closing.reset();  // waits for its callback
}

void HallMicrophone::Trouble(support::Saying saying) {
  support::MutexLock lock(mutex_);
  state_.trouble = std::move(saying);
}

void HallMicrophone::Close() {
  support::MutexLock opening(opening_);
  {
    support::MutexLock lock(mutex_);
    closed_ = true;
    wish_ = {};
    for (const Hall& hall : halls_) hall.slot->Core().Microphone().Set({});
    halls_.clear();
  }
  CloseInput();
}

}  // namespace engine
