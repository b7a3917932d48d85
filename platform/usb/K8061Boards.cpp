// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/K8061Boards.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

#include "support/Sentences.h"

namespace platform::usb {
namespace {

using support::ErrorCode;
using support::Sentence;

/// A board that was left alone takes time from the others when it is tried again.
constexpr auto kBetweenTries = std::chrono::seconds(1);
constexpr auto kBetweenQuestions = std::chrono::seconds(1);

}  // namespace

boards::BoardSet K8061Line::Look(Occasion occasion) {
  if (usb_ == nullptr) {
    auto usb = UsbContext::Open();
    if (!usb) {
      left_alone_ = usb.Failure();
      return {};
    }
    usb_ = std::move(usb).Value();
  }
  const UsbDevices devices(*usb_);
  DropThoseGone(devices);
  boards::BoardSet fresh = AskForPower();
  if (occasion == Occasion::Asked || left_alone_.text.empty() || clock_.Now() >= next_try_) {
    fresh |= TakeThoseNew(devices);
    next_try_ = clock_.Now() + kBetweenTries;
  }
  return fresh;
}

void K8061Line::DropThoseGone(const UsbDevices& devices) {
  const auto all = devices.All();
  for (Place& place : places_) {
    if (place.board == nullptr) continue;
    if (std::find(all.begin(), all.end(), place.board->Device()) == all.end()) place.board.reset();
  }
}

bool K8061Line::Holds(libusb_device* device) const {
  return std::any_of(places_.begin(), places_.end(), [&](const Place& place) {
    return place.board != nullptr && place.board->Device() == device;
  });
}

boards::BoardSet K8061Line::TakeThoseNew(const UsbDevices& devices) {
  boards::BoardSet taken;
  left_alone_ = {};
  for (libusb_device* device : devices.All()) {
    if (!K8061Board::IsOne(device) || Holds(device)) continue;
    auto trouble = Take(device, taken);
    if (!trouble.text.empty()) left_alone_ = std::move(trouble);
  }
  return taken;
}

support::Error K8061Line::Take(libusb_device* device, boards::BoardSet& taken) {
  auto opened = K8061Board::Open(device);
  if (!opened) return opened.Failure();
  std::unique_ptr<K8061Board> board = std::move(opened).Value();
  const std::string address = std::to_string(board->Address());
  const auto number = static_cast<std::size_t>(board->Address());
  if (number >= places_.size())
    return support::Failed(ErrorCode::Unsupported, Sentence::BoardOtherAddress, {address});
  if (places_[number].board != nullptr)
    return support::Failed(ErrorCode::Unsupported, Sentence::BoardsAtOneAddress, {address});
  const auto powered = board->Powered();
  if (!powered) return powered.Failure();
  places_[number] = {std::move(board), powered.Value()};
  taken.set(number);
  return {};
}

boards::BoardSet K8061Line::AskForPower() {
  boards::BoardSet back;
  if (clock_.Now() < next_question_) return back;
  next_question_ = clock_.Now() + kBetweenQuestions;
  for (std::size_t number = 0; number < places_.size(); ++number) {
    Place& place = places_[number];
    if (place.board == nullptr) continue;
    const auto powered = place.board->Powered();
    if (!Told(number, powered ? support::Result<void>() : support::Result<void>(powered.Failure()))) continue;
    // Its lamps went dark with the supply.
    if (powered.Value() && !place.powered) back.set(number);
    place.powered = powered.Value();
  }
  return back;
}

boards::BoardSet K8061Line::Held() const {
  boards::BoardSet held;
  for (std::size_t number = 0; number < places_.size(); ++number)
    held.set(number, places_[number].board != nullptr);
  return held;
}

bool K8061Line::Told(std::size_t board, const support::Result<void>& told) {
  if (told) return true;
  places_[board].board.reset();
  if (told.Failure().code == ErrorCode::NotFound) return false;
  left_alone_ = told.Failure();
  next_try_ = clock_.Now() + kBetweenTries;
  return false;
}

bool K8061Line::Switch(std::size_t board, std::uint8_t channels) {
  return Told(board, places_[board].board->Switch(channels));
}

bool K8061Line::Dim(std::size_t board, const boards::DimmedValues& values,
                    const boards::DimmedValues* /*before*/) {
  return Told(board, places_[board].board->Dim(values));
}

void K8061Line::Release() {
  for (Place& place : places_) place.board.reset();
  usb_.reset();
  left_alone_ = {};
}

support::Error K8061Line::Trouble() const {
  if (!left_alone_.text.empty()) return left_alone_;
  for (std::size_t number = 0; number < places_.size(); ++number) {
    if (places_[number].board != nullptr && !places_[number].powered)
      return support::Failed(ErrorCode::Unavailable, Sentence::BoardNoPower, {std::to_string(number)});
  }
  if (Held().any()) return {};
  return support::Failed(ErrorCode::NotFound, Sentence::NoBoard);
}

}  // namespace platform::usb
