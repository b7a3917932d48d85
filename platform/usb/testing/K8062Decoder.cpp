// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/testing/K8062Decoder.h"

#include <algorithm>

namespace platform::usb::testing {

void K8062Decoder::Take(std::span<const std::uint8_t> packet) {
  ++packets_;
  const bool upgraded = packet.size() == 64;
  if (packet.size() != 8 && !upgraded) return faults_.push_back("length");
  const int kind = packet[0];
  const bool counted = kind == 6 || kind == 7;
  if (counted && (!upgraded || packet[1] == 0 || packet[1] > 62)) return faults_.push_back("kind");
  if (kind != 4 && kind != 7 && at_ == 0) return faults_.push_back("no start");
  switch (kind) {
    case 4:
      if (packet[1] == 0) faults_.push_back("start without start code");
      Start();
      return Put(packet[1] - 1, packet.subspan(2));
    case 7:
      Start();
      return Put(0, packet.subspan(2, packet[1]));
    case 6:
      return Put(0, packet.subspan(2, packet[1]));
    case 5:
      if (packet[1] > 100) faults_.push_back("zeros");
      return Put(packet[1], packet.subspan(2));
    case 2:
      return Put(0, packet.subspan(1));
    case 3:
      return Put(0, packet.subspan(1, 1));
    default:
      faults_.push_back("kind");
  }
}

void K8062Decoder::Start() {
  if (at_ > 0) {
    shown_ = frame_;
    shown_channels_ = at_;
    widest_shown_ = std::max(widest_shown_, at_);
    ++frames_shown_;
  }
  frame_ = {};
  at_ = 0;
}

void K8062Decoder::Put(int zeros, std::span<const std::uint8_t> levels) {
  for (; zeros > 0; --zeros, ++at_) {
    if (at_ < dmx::kUniverseChannels) received_[static_cast<std::size_t>(at_)] = 0;
  }
  for (const std::uint8_t level : levels) {
    if (at_ >= dmx::kUniverseChannels) return faults_.push_back("overrun");
    received_[static_cast<std::size_t>(at_)] = level;
    frame_[static_cast<std::size_t>(at_++)] = level;
  }
}

void K8062Decoder::Reset() {
  frame_ = {};
  at_ = 0;
  widest_shown_ = 0;
}

int GreedyK8062Packets(std::span<const dmx::DmxLevel, dmx::kUniverseChannels> levels, int count) {
  const auto zeros_from = [&](int from) {
    int zeros = 0;
    while (zeros < 100 && from + zeros + 6 < count && levels[static_cast<std::size_t>(from + zeros)] == 0)
      ++zeros;
    return zeros;
  };
  int packets = 1;
  int at = zeros_from(0) + 6;
  while (count - at >= 7) {
    const int zeros = zeros_from(at);
    at += zeros > 0 ? zeros + 6 : 7;
    ++packets;
  }
  return packets + count - at;
}

}  // namespace platform::usb::testing
