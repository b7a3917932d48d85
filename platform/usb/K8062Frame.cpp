// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/K8062Frame.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <limits>

namespace platform::usb {
namespace {

constexpr int kLongestZeros = 100;  ///< what the box's other drivers keep to
constexpr int kFewestChannels = 24;

constexpr std::uint8_t kPlain = 2;
constexpr std::uint8_t kSingle = 3;
constexpr std::uint8_t kStart = 4;
constexpr std::uint8_t kZeros = 5;
constexpr std::uint8_t kTail = 6;
constexpr std::uint8_t kWhole = 7;

using Levels = std::span<const dmx::DmxLevel, dmx::kUniverseChannels>;

/// How the rest of a frame from a channel on is sent best.
struct Best {
  int packets = std::numeric_limits<int>::max() / 2;
  std::uint8_t kind = 0;
  int zeros = 0;
};

class Encoding {
 public:
  Encoding(Levels levels, int count, K8062Size size)
      : levels_(levels),
        count_(count),
        bytes_(static_cast<int>(size)),
        start_levels_(bytes_ - 2),
        upgraded_(size == K8062Size::Upgraded) {
    best_[static_cast<std::size_t>(count)].packets = 0;
    for (int from = count - 1; from >= start_levels_; --from) Decide(from);
  }

  std::vector<K8062Packet> Packets() const {
    if (upgraded_ && count_ <= start_levels_) return {Packet({1, kWhole, 0}, 0)};
    const Best start = AfterZeros(0, kStart);
    std::vector<K8062Packet> packets;
    packets.reserve(static_cast<std::size_t>(start.packets));
    packets.push_back(Packet(start, 0));
    for (int at = start.zeros + start_levels_; at < count_;) {
      const Best& best = BestFrom(at);
      packets.push_back(Packet(best, at));
      at += best.zeros + LevelsOf(best.kind, at);
    }
    return packets;
  }

 private:
  /// How many levels a packet of the kind carries, which begins at the channel.
  int LevelsOf(std::uint8_t kind, int from) const {
    if (kind == kSingle) return 1;
    if (kind == kPlain) return bytes_ - 1;
    return kind == kTail || kind == kWhole ? count_ - from : start_levels_;
  }

  const Best& BestFrom(int channel) const { return best_[static_cast<std::size_t>(channel)]; }

  /// The best choice among all lengths of the zeros that stand here; only a start may have none.
  Best AfterZeros(int from, std::uint8_t kind) const {
    Best best;
    for (int zeros = 0; zeros <= kLongestZeros && from + zeros + start_levels_ <= count_; ++zeros) {
      const int packets = 1 + BestFrom(from + zeros + start_levels_).packets;
      const bool allowed = zeros > 0 || kind == kStart;
      if (allowed && packets < best.packets) best = {packets, kind, zeros};
      if (levels_[static_cast<std::size_t>(from + zeros)] != 0) break;
    }
    return best;
  }

  void Decide(int from) {
    Best best{1 + BestFrom(from + 1).packets, kSingle, 0};
    if (upgraded_) best = count_ - from <= start_levels_ ? Best{1, kTail, 0} : Best{};
    const int behind_plain = from + bytes_ - 1;
    if (behind_plain <= count_ && 1 + BestFrom(behind_plain).packets < best.packets)
      best = {1 + BestFrom(behind_plain).packets, kPlain, 0};
    if (levels_[static_cast<std::size_t>(from)] == 0) {
      const Best zeros = AfterZeros(from, kZeros);
      if (zeros.packets < best.packets) best = zeros;
    }
    best_[static_cast<std::size_t>(from)] = best;
  }

  K8062Packet Packet(const Best& best, int from) const {
    K8062Packet packet(static_cast<std::size_t>(bytes_));
    const int count = LevelsOf(best.kind, from);
    std::size_t at = 0;
    packet[at++] = best.kind;
    if (best.kind == kStart) packet[at++] = static_cast<std::uint8_t>(best.zeros + 1);
    if (best.kind == kZeros) packet[at++] = static_cast<std::uint8_t>(best.zeros);
    if (best.kind == kTail || best.kind == kWhole) packet[at++] = static_cast<std::uint8_t>(count);
    std::copy_n(levels_.data() + from + best.zeros, count, packet.begin() + static_cast<std::ptrdiff_t>(at));
    return packet;
  }

  Levels levels_;
  int count_;
  int bytes_;
  int start_levels_;  ///< also behind zeros, and the most of a tail
  bool upgraded_;
  std::array<Best, dmx::kUniverseChannels + 1> best_{};
};

}  // namespace

std::vector<K8062Packet> EncodeK8062Frame(Levels levels, int count, K8062Size size) {
  assert(count >= 6 && count <= dmx::kUniverseChannels);
  return Encoding(levels, count, size).Packets();
}

int CarriedChannels(int needed, K8062Size size) {
  const int start_levels = static_cast<int>(size) - 2;
  const int plain_levels = static_cast<int>(size) - 1;
  needed = std::clamp(needed, kFewestChannels, dmx::kUniverseChannels);
  const int plain_packets = std::max(0, needed - start_levels + plain_levels - 1) / plain_levels;
  return std::min(start_levels + plain_packets * plain_levels, dmx::kUniverseChannels);
}

}  // namespace platform::usb
