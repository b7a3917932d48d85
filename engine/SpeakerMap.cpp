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
  for (int channel = 0; channel < channels_; ++channel) {
    switch (named[static_cast<std::size_t>(channel)]) {
      case Speaker::FrontLeft:
      case Speaker::RearLeft:
      case Speaker::SideLeft:
        codes_[0].Add(channel, channels_ == 1 ? 0.5F : 1.0F, channels_ == 1 ? 0.5F : 0.0F);
        break;
      case Speaker::FrontRight:
      case Speaker::RearRight:
      case Speaker::SideRight:
        codes_[0].Add(channel, 0, 1);
        break;
      case Speaker::FrontCentre:
      case Speaker::Lfe:
      case Speaker::Mono:
        codes_[0].Add(channel, 0.5F, 0.5F);
        break;
      case Speaker::Other:
        break;
    }
  }
  for (std::size_t code = 1; code < kPairs.size(); ++code) {
    const int left = Find(named, kPairs[code].left);
    const int right = Find(named, kPairs[code].right);
    if (left < 0 || right < 0) {
      codes_[code] = codes_[0];
      continue;
    }
    codes_[code].Add(left, 1, 0);
    codes_[code].Add(right, 0, 1);
  }
}

std::span<const SpeakerShare> SpeakerMap::Of(int pair) const noexcept {
  const Shares& shares = codes_[pair >= 1 && pair < kCodes ? static_cast<std::size_t>(pair) : 0];
  return {shares.share.data(), static_cast<std::size_t>(shares.count)};
}

}  // namespace engine
