// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/K8062Frame.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <limits>

namespace platform::usb {
namespace {

constexpr int kLongestZeros = 100;  ///< what the box's other drivers keep to
constexpr int kStartLevels = 6;     ///< also behind zeros
constexpr int kPlainLevels = 7;
constexpr int kFewestChannels = 24;

constexpr std::uint8_t kPlain = 2;
constexpr std::uint8_t kSingle = 3;
constexpr std::uint8_t kStart = 4;
constexpr std::uint8_t kZeros = 5;

using Levels = std::span<const dmx::DmxLevel, dmx::kUniverseChannels>;

/// How the rest of a frame from a channel on is sent best.
struct Best {
  int packets = std::numeric_limits<int>::max() / 2;
  std::uint8_t kind = 0;
  int zeros = 0;
};

class Encoding {
 public:
  Encoding(Levels levels, int count) : levels_(levels), count_(count) {
    best_[static_cast<std::size_t>(count)].packets = 0;
    for (int from = count - 1; from >= kStartLevels; --from) Decide(from);
  }

  std::vector<K8062Packet> Packets() const {
    const Best start = AfterZeros(0, kStart);
    std::vector<K8062Packet> packets;
    packets.reserve(static_cast<std::size_t>(start.packets));
    packets.push_back(Packet(start, 0));
    for (int at = start.zeros + kStartLevels; at < count_;) {
      const Best& best = BestFrom(at);
      packets.push_back(Packet(best, at));
      at += best.kind == kPlain ? kPlainLevels : best.kind == kZeros ? best.zeros + kStartLevels : 1;
    }
    return packets;
  }

 private:
  const Best& BestFrom(int channel) const { return best_[static_cast<std::size_t>(channel)]; }

  /// The best choice among all lengths of the zeros that stand here; only a start may have none.
  Best AfterZeros(int from, std::uint8_t kind) const {
    Best best;
    for (int zeros = 0; zeros <= kLongestZeros && from + zeros + kStartLevels <= count_; ++zeros) {
      const int packets = 1 + BestFrom(from + zeros + kStartLevels).packets;
      const bool allowed = zeros > 0 || kind == kStart;
      if (allowed && packets < best.packets) best = {packets, kind, zeros};
      if (levels_[static_cast<std::size_t>(from + zeros)] != 0) break;
    }
    return best;
  }

  void Decide(int from) {
    Best best{1 + BestFrom(from + 1).packets, kSingle, 0};
    if (from + kPlainLevels <= count_ && 1 + BestFrom(from + kPlainLevels).packets < best.packets)
      best = {1 + BestFrom(from + kPlainLevels).packets, kPlain, 0};
    if (levels_[static_cast<std::size_t>(from)] == 0) {
      const Best zeros = AfterZeros(from, kZeros);
      if (zeros.packets < best.packets) best = zeros;
    }
    best_[static_cast<std::size_t>(from)] = best;
  }

  K8062Packet Packet(const Best& best, int from) const {
    K8062Packet packet{best.kind};
    std::size_t at = 1;
    if (best.kind == kStart) packet[at++] = static_cast<std::uint8_t>(best.zeros + 1);
    if (best.kind == kZeros) packet[at++] = static_cast<std::uint8_t>(best.zeros);
    const auto end = best.kind == kSingle ? at + 1 : packet.size();
    const auto* level = levels_.data() + from + best.zeros;
    std::copy(level, level + (end - at), packet.begin() + static_cast<std::ptrdiff_t>(at));
    return packet;
  }

  Levels levels_;
  int count_;
  std::array<Best, dmx::kUniverseChannels + 1> best_{};
};

}  // namespace

std::vector<K8062Packet> EncodeK8062Frame(Levels levels, int count) {
  assert(count >= kStartLevels && count <= dmx::kUniverseChannels);
  return Encoding(levels, count).Packets();
}

int CarriedChannels(int needed) {
  needed = std::clamp(needed, kFewestChannels, dmx::kUniverseChannels);
  const int plain_packets = (needed - kStartLevels + kPlainLevels - 1) / kPlainLevels;
  return std::min(kStartLevels + plain_packets * kPlainLevels, dmx::kUniverseChannels);
}

}  // namespace platform::usb
