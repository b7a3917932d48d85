// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/FlashGuard.h"

#include <chrono>

namespace lightorgan {
namespace {

/// Calls that belong together come closer than this: they are those of one tick.
constexpr std::chrono::milliseconds kMoment{5};

std::size_t Index(int board, int channel) {
  return static_cast<std::size_t>(board * kBoardChannels + channel - 1) % kMostOutputs;
}

}  // namespace

void FlashGuard::Lift(bool lifted) {
  lifted_ = lifted;
  if (lifted) Tick();
}

bool FlashGuard::MayRise(Rises& rises, support::TimePoint now) {
  while (!rises.empty() && now - rises.front() >= std::chrono::seconds(1)) rises.pop_front();
  return rises.size() < kMostFlashes;
}

bool FlashGuard::Flash(Outputs moment, Outputs rising) const {
  const auto many = [this](Outputs outputs) { return static_cast<int>(outputs.count()) * 5 > outputs_; };
  return many(moment | rising) && !many(moment);
}

FlashGuard::Outputs FlashGuard::Moment(support::TimePoint now) const {
  return now - moment_began_ < kMoment ? moment_ : Outputs();
}

FlashGuard::Outputs FlashGuard::Allowed(Outputs rising) {
  if (lifted_ || rising.none()) return rising;
  const support::TimePoint now = clock_.Now();
  for (std::size_t i = 0; i < rising.size(); ++i) {
    if (rising[i] && !MayRise(each_[i], now)) rising.reset(i);
  }
  return Flash(Moment(now), rising) && !MayRise(together_, now) ? Outputs() : rising;
}

void FlashGuard::Rose(Outputs rising) {
  if (rising.none()) return;
  lit_ |= rising;
  const support::TimePoint now = clock_.Now();
  const Outputs moment = Moment(now);
  if (moment.none()) moment_began_ = now;
  moment_ = moment | rising;
  if (Flash(moment, rising)) together_.push_back(now);
  for (std::size_t i = 0; i < rising.size(); ++i) {
    if (rising[i]) each_[i].push_back(now);
    while (each_[i].size() > kMostFlashes) each_[i].pop_front();
  }
  while (together_.size() > kMostFlashes) together_.pop_front();
}

void FlashGuard::Tick() {
  const Outputs waiting = wanted_ & ~lit_;
  const Outputs going = Allowed(waiting);
  for (int output = 1; output <= kMostOutputs; ++output) {
    if (!going[static_cast<std::size_t>(output - 1)]) continue;
    const auto [board, channel] = AddressOf(output);
    boards_.SetDigitalChannel(board, channel);
  }
  Rose(going);
}

void FlashGuard::CloseDevices() {
  wanted_.reset();
  lit_.reset();
  boards_.CloseDevices();
}

void FlashGuard::SetDigitalChannel(int board, int channel) {
  const std::size_t i = Index(board, channel);
  wanted_.set(i);
  if (lit_[i]) return boards_.SetDigitalChannel(board, channel);
  const Outputs going = Allowed(Outputs().set(i));
  if (going.any()) boards_.SetDigitalChannel(board, channel);
  Rose(going);
}

void FlashGuard::ClearDigitalChannel(int board, int channel) {
  wanted_.reset(Index(board, channel));
  lit_.reset(Index(board, channel));
  boards_.ClearDigitalChannel(board, channel);
}

void FlashGuard::OutputAllDigital(int board, std::uint8_t channels) {
  Outputs asked;
  for (int channel = 1; channel <= kBoardChannels; ++channel) {
    const std::size_t i = Index(board, channel);
    const bool on = ((channels >> (channel - 1)) & 1) != 0;
    wanted_.set(i, on);
    asked.set(i, on);
    if (!on) lit_.reset(i);
  }
  Rose(Allowed(asked & ~lit_));
  const auto shift = static_cast<unsigned>(board * kBoardChannels);
  boards_.OutputAllDigital(board, static_cast<std::uint8_t>((asked & lit_).to_ulong() >> shift));
}

void FlashGuard::ClearAllDigital(int board) {
  for (int channel = 1; channel <= kBoardChannels; ++channel) {
    wanted_.reset(Index(board, channel));
    lit_.reset(Index(board, channel));
  }
  boards_.ClearAllDigital(board);
}

}  // namespace lightorgan
