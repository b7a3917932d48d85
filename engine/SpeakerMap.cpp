// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/SpeakerMap.h"

#include <algorithm>
#include <vector>

namespace engine {
namespace {

/// The usual order of channels, for devices that do not say what is connected where.
constexpr std::array kUsualOrder{Speaker::FrontLeft, Speaker::FrontRight,  Speaker::RearLeft,
                                 Speaker::RearRight, Speaker::FrontCentre, Speaker::Lfe,
                                 Speaker::SideLeft,  Speaker::SideRight};

struct Pair {
  Speaker left;
  Speaker right;
};
constexpr std::array<Pair, SpeakerMap::kCodes> kPairs{{{},
                                                       {Speaker::FrontLeft, Speaker::FrontRight},
                                                       {Speaker::RearLeft, Speaker::RearRight},
                                                       {Speaker::FrontCentre, Speaker::Lfe},
                                                       {Speaker::SideLeft, Speaker::SideRight}}};

int Find(std::span<const Speaker> speakers, Speaker speaker) {
  const auto found = std::find(speakers.begin(), speakers.end(), speaker);
  return found == speakers.end() ? -1 : static_cast<int>(found - speakers.begin());
}

std::vector<Speaker> Named(std::span<const Speaker> speakers) {
  std::vector<Speaker> named(speakers.begin(), speakers.end());
  if (named.size() > kMaxDeviceChannels) named.resize(kMaxDeviceChannels);
  const bool nameless =
      std::all_of(named.begin(), named.end(), [](Speaker s) { return s == Speaker::Other; });
  for (std::size_t i = 0; nameless && i < std::min(named.size(), kUsualOrder.size()); ++i)
    named[i] = kUsualOrder[i];
  return named;
}

}  // namespace

SpeakerMap::SpeakerMap(std::span<const Speaker> speakers) {
  const std::vector<Speaker> named = Named(speakers);
  channels_ = static_cast<int>(named.size());
  for (std::size_t code = 1; code < kPairs.size(); ++code) {
    const int left = Find(named, kPairs[code].left);
    const int right = Find(named, kPairs[code].right);
    if (left < 0 || right < 0) continue;
    SeatPair(left, right);
    Add(code, left, 1, 0);
    Add(code, right, 0, 1);
  }
  for (int channel = 0; channel < channels_; ++channel) {
    switch (named[static_cast<std::size_t>(channel)]) {
      case Speaker::FrontLeft:
      case Speaker::RearLeft:
      case Speaker::SideLeft:
        Add(0, channel, channels_ == 1 ? 0.5F : 1.0F, channels_ == 1 ? 0.5F : 0.0F);
        break;
      case Speaker::FrontRight:
      case Speaker::RearRight:
      case Speaker::SideRight:
        Add(0, channel, 0, 1);
        break;
      case Speaker::FrontCentre:
      case Speaker::Lfe:
      case Speaker::Mono:
        Add(0, channel, 0.5F, 0.5F);
        break;
      case Speaker::Other:
        break;
    }
  }
  for (std::size_t code = 1; code < codes_.size(); ++code) {
    if (codes_[code].count == 0) codes_[code] = codes_[0];
  }
}

void SpeakerMap::SeatPair(int left, int right) {
  buses_[static_cast<std::size_t>(bus_count_)] = {left, right};
  seats_[static_cast<std::size_t>(left)] = {bus_count_, 0};
  seats_[static_cast<std::size_t>(right)] = {bus_count_++, 1};
}

void SpeakerMap::Add(std::size_t code, int channel, float left, float right) {
  Seat& seat = seats_[static_cast<std::size_t>(channel)];
  if (seat.bus < 0) {
    buses_[static_cast<std::size_t>(bus_count_)] = {channel, -1};
    seat = {bus_count_++, 0};
  }
  Shares& shares = codes_[code];
  shares.share[static_cast<std::size_t>(shares.count++)] = {seat.bus, seat.side, left, right};
}

std::span<const SpeakerShare> SpeakerMap::Of(int pair) const noexcept {
  const Shares& shares = codes_[pair >= 1 && pair < kCodes ? static_cast<std::size_t>(pair) : 0];
  return {shares.share.data(), static_cast<std::size_t>(shares.count)};
}

}  // namespace engine
