// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/net/NetPackets.h"

#include <algorithm>
#include <string_view>

namespace platform::net {
namespace {

constexpr std::string_view kSourceName = "dj TOLVEN";
constexpr std::uint8_t kPriority = 100;

/// Fills a packet that is all 0 from its begin.
class Filler {
 public:
  explicit Filler(std::span<std::uint8_t> packet) : packet_(packet) {}
  Filler& Byte(unsigned value) {
    packet_[at_++] = static_cast<std::uint8_t>(value);
    return *this;
  }
  /// High byte first.
  Filler& Word(unsigned value) { return Byte(value >> 8).Byte(value); }
  Filler& Long(unsigned value) { return Word(value >> 16).Word(value); }
  Filler& Bytes(std::span<const std::uint8_t> bytes) {
    std::copy(bytes.begin(), bytes.end(), packet_.begin() + static_cast<std::ptrdiff_t>(at_));
    at_ += bytes.size();
    return *this;
  }
  Filler& Text(std::string_view text, std::size_t room) {
    std::copy_n(text.begin(), std::min(text.size(), room),
                packet_.begin() + static_cast<std::ptrdiff_t>(at_));
    at_ += room;
    return *this;
  }
  /// The length of all that follows, itself included.
  Filler& Length() { return Word(0x7000U | static_cast<unsigned>(packet_.size() - at_)); }

 private:
  std::span<std::uint8_t> packet_;
  std::size_t at_ = 0;
};

}  // namespace

std::array<std::uint8_t, kArtDmxBytes> ArtDmx(int universe, std::uint8_t sequence, const Levels& levels) {
  constexpr unsigned kDmx = 0x5000, kVersion = 14;
  std::array<std::uint8_t, kArtDmxBytes> packet{};
  const auto address = static_cast<unsigned>(universe);
  Filler(packet)
      .Text("Art-Net", 8)
      .Byte(kDmx)
      .Byte(kDmx >> 8)
      .Word(kVersion)
      .Byte(sequence)
      .Byte(0)
      .Byte(address)
      .Byte(address >> 8)
      .Word(static_cast<unsigned>(levels.size()))
      .Bytes(levels);
  return packet;
}

std::array<std::uint8_t, kSacnBytes> SacnData(int universe, std::uint8_t sequence, SacnEnd end,
                                              std::span<const std::uint8_t, 16> source,
                                              const Levels& levels) {
  constexpr unsigned kRootData = 4, kFramingData = 2, kSetProperty = 2, kAddresses = 0xA1, kTerminated = 0x40;
  constexpr std::size_t kNameBytes = 64;
  std::array<std::uint8_t, kSacnBytes> packet{};
  Filler(packet)
      .Word(0x10)
      .Word(0)
      .Text("ASC-E1.17", 12)
      .Length()
      .Long(kRootData)
      .Bytes(source)
      .Length()
      .Long(kFramingData)
      .Text(kSourceName, kNameBytes)
      .Byte(kPriority)
      .Word(0)
      .Byte(sequence)
      .Byte(end == SacnEnd::Terminated ? kTerminated : 0)
      .Word(static_cast<unsigned>(universe))
      .Length()
      .Byte(kSetProperty)
      .Byte(kAddresses)
      .Word(0)
      .Word(1)
      .Word(1 + static_cast<unsigned>(levels.size()))
      .Byte(0)
      .Bytes(levels);
  return packet;
}

std::array<std::uint8_t, 4> SacnGroup(int universe) {
  return {239, 255, static_cast<std::uint8_t>(universe >> 8), static_cast<std::uint8_t>(universe)};
}

}  // namespace platform::net
