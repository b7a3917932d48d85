// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/OutputRouting.h"

#include <algorithm>
#include <utility>

#include "app/NoticeBoard.h"
#include "app/WorkstationView.h"

namespace app {
namespace {

using Subject = NoticeBoard::Subject::Kind;

constexpr int kEngineRate = 44100;
constexpr int kNoSound = 0;

std::size_t Index(int output) {
  return static_cast<std::size_t>(output - 1);
}

}  // namespace

OutputRouting::OutputRouting(decks::AudioEngine& engine, decks::SoundControl& sound,
                             support::Executor& workers, std::shared_ptr<WorkGate> gate,
                             std::shared_ptr<Mailbox> box, const support::Sentences& say,
                             const DeckStations& decks, NoticeBoard& notices)
    : engine_(engine),
      sound_(sound),
      workers_(workers),
      gate_(std::move(gate)),
      box_(std::move(box)),
      say_(say),
      decks_(decks),
      notices_(notices) {}

std::vector<std::string> OutputRouting::OpenAll(const std::array<OutputWish, kOutputs>& wishes) {
  Free();
  std::array<OutputView, kOutputs> places{};
  std::vector<std::string> failures;
  moves_ = wishes;
  TellIfForHeadphones(kPrelistenOutput);
  for (std::size_t i = 0; i < wishes.size(); ++i) {
    if (wishes[i].place.device == kNoSound) continue;
    if (Open(wishes[i])) {
      places[i] = wishes[i].place;
      continue;
    }
    CannotOpen(static_cast<int>(i) + 1, wishes[i]);
    std::string failure = say_(SentenceOn(wishes[i]));
    if (std::find(failures.begin(), failures.end(), failure) == failures.end()) {
      failures.push_back(std::move(failure));
    }
  }
  // A second deck without its device is better heard on the first one's; head-phones never are.
  if (places[1].device == kNoSound && wishes[1].place.device != kNoSound) places[1] = places[0];
  for (const OutputView& place : places) {
    if (place.device == kNoSound) Open(WishFor({}, {}, say_));
  }
  for (int output = 1; output <= kOutputs; ++output) {
    moves_[Index(output)].place = places[Index(output)];
    Route(output, places[Index(output)]);
  }
  return failures;
}

void OutputRouting::CannotOpen(int output, const OutputWish& wish) {
  notices_.Warn({Subject::Output, output}, SentenceOn(wish));
}

support::Saying OutputRouting::SentenceOn(const OutputWish& wish) const {
  if (!wish.name.empty()) return {support::Sentence::OutputCannotOpen, {wish.name}};
  if (!engine_.BASS_GetDeviceDescription(1)) return {support::Sentence::NoOutputs};
  return {support::Sentence::OutputNumber, {std::to_string(wish.place.device)}};
}

bool OutputRouting::Open(const OutputWish& wish) {
  const int device = wish.place.device;
  if (open_.contains(device)) return true;
  if (!engine_.BASS_Init(device, kEngineRate, wish.flags)) return false;
  open_.insert(device);
  return true;
}

void OutputRouting::Move(int output, const OutputWish& wish) {
  const int device = wish.place.device;
  moves_[Index(output)] = wish;
  if (open_.contains(device)) return RouteAsWished(output);
  TellIfForHeadphones(output);
  if (!opening_.insert(device).second) return;
  workers_.Post([this, &engine = engine_, gate = gate_, box = box_, wish] {
    gate->Pass([&] {
      const int number = wish.place.device;
      const bool success = engine.BASS_Init(number, kEngineRate, wish.flags);
      box->Post([this, number, success] { Opened(number, success); });
    });
  });
}

void OutputRouting::Opened(int device, bool success) {
  opening_.erase(device);
  if (success) open_.insert(device);
  for (int output = 1; output <= kOutputs; ++output) {
    const OutputWish& wish = moves_[Index(output)];
    if (wish.place.device != device || outputs_[Index(output)] == wish.place) continue;
    if (success) {
      RouteAsWished(output);
    } else {
      CannotOpen(output, wish);
    }
  }
}

void OutputRouting::SetBuffers() {
  engine_.BASS_SetConfig(decks::kConfigUpdatePeriod, 20);
  engine_.BASS_SetConfig(decks::kConfigBuffer, 60);
}

void OutputRouting::Route(int output, OutputView place) {
  outputs_[Index(output)] = place;
  TellRoles();
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

/// Before it is opened, because then it is fixed whether anybody may move it elsewhere.
void OutputRouting::TellIfForHeadphones(int output) {
  const int device = moves_[Index(kPrelistenOutput)].place.device;
  if (output != kPrelistenOutput || device == kNoSound) return;
  if (device == moves_[0].place.device || device == moves_[1].place.device) return;
  sound_.SetDeviceRole(device, decks::DeviceRole::Headphones);
}

void OutputRouting::RouteAsWished(int output) {
  Route(output, moves_[Index(output)].place);
  notices_.Settle({Subject::Output, output});
  notices_.Settle({Subject::StoredOutput, 0});
  for (const int device : open_) {
    const auto plays = [device](const OutputView& one) { return one.device == device; };
    if (std::none_of(outputs_.begin(), outputs_.end(), plays)) notices_.Settle({Subject::Device, device});
  }
}

/// A device for head-phones alone is left silent when it goes away; one that a deck plays on too is replaced.
void OutputRouting::TellRoles() {
  for (const int device : open_) {
    const bool phones = outputs_[Index(kPrelistenOutput)].device == device && outputs_[0].device != device &&
                        outputs_[1].device != device;
    sound_.SetDeviceRole(device, phones ? decks::DeviceRole::Headphones : decks::DeviceRole::Main);
  }
}

void OutputRouting::Free() {
  engine_.BASS_Free();
  open_.clear();
}

void OutputRouting::Return(int output) {
  if (output >= 1 && output <= kOutputs) sound_.ReturnDevice(outputs_[Index(output)].device);
}

void OutputRouting::TellOf(const decks::DeviceEvent& event) {
  using Kind = decks::DeviceEvent::Kind;
  const NoticeBoard::Subject subject{Subject::Device, event.device};
  if (event.kind == Kind::Returned || event.kind == Kind::CanReturn || event.kind == Kind::CannotReturn) {
    notices_.Settle(subject);
  }
  if (event.text.empty()) return;
  const support::Saying text = support::SayingOf({support::ErrorCode::Unavailable, event.text, event.saying});
  if (event.kind == Kind::Replaced) return notices_.WarnFurther(subject, text);
  if (event.kind == Kind::Lost || event.kind == Kind::Muted) return notices_.Warn(subject, text);
  // One that was moved is left behind, and what is told of that stays true.
  notices_.Tell(event.kind == Kind::Moved ? NoticeBoard::Subject{} : subject, text);
}

/// Of the system's own mixer: what played on the device plays where it was put, until it is chosen here
/// again.
void OutputRouting::FollowHand(const decks::DeviceEvent& event) {
  for (int output = 1; output <= kOutputs; ++output) {
    const OutputView place = outputs_[Index(output)];
    if (place.device != event.device) continue;
    OutputWish wish = WishFor({event.moved_to, place.speaker}, {}, say_);
    if (!event.saying.parts.empty()) wish.name = event.saying.parts.front();
    Move(output, wish);
  }
}

void OutputRouting::Tick() {
  bool listed = false;
  for (const decks::DeviceEvent& event : sound_.TakeDeviceEvents()) {
    TellOf(event);
    can_return_.erase(event.device);
    if (event.kind == decks::DeviceEvent::Kind::Moved) FollowHand(event);
    if (event.kind == decks::DeviceEvent::Kind::CanReturn) can_return_.insert(event.device);
    listed = listed || event.kind == decks::DeviceEvent::Kind::Listed;
  }
  if (listed && listed_) listed_();
}

void OutputRouting::Show(WorkstationView& view) const {
  view.outputs = outputs_;
  for (std::size_t i = 0; i < outputs_.size(); ++i) {
    view.can_return[i] = can_return_.contains(outputs_[i].device);
  }
}

}  // namespace app
