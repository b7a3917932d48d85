// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace karaoke::testing {

/// Packets of a karaoke disc from words; a test writes down what a disc may hold.
class DiscBytes {
 public:
  static constexpr int kPacketsASecond = 300;
  using Tile = std::array<std::uint8_t, 12>;  ///< rows, bit 5 is the leftmost
  enum class Move { None = 0, Forward = 1, Back = 2 };
  /// Forward is right and down; offset: of the view.
  struct Way {
    Move move = Move::None;
    int offset = 0;
  };

  DiscBytes& Clear(int colour, int repeat = 0) { return Packet(1, {colour, repeat}); }
  DiscBytes& Border(int colour) { return Packet(2, {colour}); }
  DiscBytes& Draw(int row, int column, int zeros, int ones, const Tile& tile) {
    return DrawBy(6, row, column, zeros, ones, tile);
  }
  DiscBytes& Xor(int row, int column, int zeros, int ones, const Tile& tile) {
    return DrawBy(38, row, column, zeros, ones, tile);
  }
  DiscBytes& ScrollFilling(int colour, Way across, Way along) { return Scroll(20, colour, across, along); }
  DiscBytes& ScrollRound(Way across, Way along) { return Scroll(24, 0, across, along); }
  DiscBytes& Transparent(int colour) { return Packet(28, {colour}); }
  /// Eight colours 0xRGB, from colour 0 or 8 on.
  DiscBytes& Colours(int first, const std::array<int, 8>& colours) {
    std::vector<int> data;
    for (const int colour : colours) {
      data.push_back(colour >> 6 & 0x3F);
      data.push_back((colour >> 4 & 3) << 4 | (colour & 0xF));
    }
    return Packet(first == 0 ? 30 : 31, data);
  }
  /// A packet of graphics by its instruction.
  DiscBytes& Packet(int instruction, const std::vector<int>& data) {
    std::array<std::uint8_t, 24> packet{9, static_cast<std::uint8_t>(instruction)};
    for (std::size_t i = 0; i < data.size() && i < 16; ++i)
      packet[4 + i] = static_cast<std::uint8_t>(data[i]);
    bytes_.insert(bytes_.end(), packet.begin(), packet.end());
    return *this;
  }
  /// Nothing happens until a time.
  DiscBytes& Until(double seconds) {
    const auto packets = static_cast<std::size_t>(seconds * kPacketsASecond);
    if (packets * 24 > bytes_.size()) bytes_.resize(packets * 24);
    return *this;
  }
  DiscBytes& Raw(std::initializer_list<std::uint8_t> bytes) {
    bytes_.insert(bytes_.end(), bytes);
    return *this;
  }
  /// The bits that do not belong to the graphics are set in every byte.
  DiscBytes& FillOtherBits() {
    for (std::uint8_t& byte : bytes_) byte |= 0xC0;
    return *this;
  }
  [[nodiscard]] const std::vector<std::uint8_t>& Content() const { return bytes_; }
  [[nodiscard]] std::size_t Packets() const { return bytes_.size() / 24; }

 private:
  DiscBytes& DrawBy(int instruction, int row, int column, int zeros, int ones, const Tile& tile) {
    std::vector<int> data{zeros, ones, row, column};
    data.insert(data.end(), tile.begin(), tile.end());
    return Packet(instruction, data);
  }
  DiscBytes& Scroll(int instruction, int colour, Way across, Way along) {
    return Packet(instruction, {colour, static_cast<int>(across.move) << 4 | across.offset,
                                static_cast<int>(along.move) << 4 | along.offset});
  }

  std::vector<std::uint8_t> bytes_;
};

}  // namespace karaoke::testing
