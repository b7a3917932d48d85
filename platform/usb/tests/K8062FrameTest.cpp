// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/K8062Frame.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "platform/usb/testing/K8062Decoder.h"

namespace platform::usb {
namespace {

using testing::GreedyK8062Packets;
using testing::K8062Decoder;
using Frame = K8062Decoder::Frame;

/// What a box shows after the frame, of which no channel behind count may be left.
Frame Decoded(const std::vector<K8062Packet>& packets, int count) {
  K8062Decoder box;
  for (const K8062Packet& packet : packets) box.Take(packet);
  K8062Packet next(packets.front().size());
  next[0] = 4;
  next[1] = 1;
  box.Take(next);
  EXPECT_EQ(box.Faults(), std::vector<std::string>());
  EXPECT_EQ(box.ShownChannels(), count);
  return box.Shown();
}

/// The fewest packets that can carry a frame, found by trying every packet that the box knows at every place.
int FewestPackets(const Frame& levels, int count, K8062Size size = K8062Size::Maker) {
  constexpr int kNever = 1 << 20;
  const int bytes = static_cast<int>(size);
  const int behind_zeros = bytes - 2;
  const bool upgraded = size == K8062Size::Upgraded;
  if (upgraded && count <= behind_zeros) return 1;
  std::vector<int> fewest(static_cast<std::size_t>(count) + 1, kNever);
  const auto reach = [&](int channel, int packets) {
    if (channel <= count)
      fewest[static_cast<std::size_t>(channel)] =
          std::min(fewest[static_cast<std::size_t>(channel)], packets);
  };
  const auto dark = [&](int from, int zeros) {
    return std::all_of(levels.begin() + from, levels.begin() + from + zeros,
                       [](int level) { return level == 0; });
  };
  for (int zeros = 0; zeros <= 100 && zeros + behind_zeros <= count && dark(0, zeros); ++zeros)
    reach(zeros + behind_zeros, 1);
  for (int at = behind_zeros; at < count; ++at) {
    const int next = fewest[static_cast<std::size_t>(at)] + 1;
    reach(upgraded && count - at <= behind_zeros ? count : at + (upgraded ? count : 1), next);
    reach(at + bytes - 1, next);
    for (int zeros = 1; zeros <= 100 && at + zeros + behind_zeros <= count && dark(at, zeros); ++zeros)
      reach(at + zeros + behind_zeros, next);
  }
  return fewest.back();
}

struct NastyFrame {
  const char* name;
  int count;
  std::vector<std::pair<int, int>> runs;  ///< channels from ... to ... are lit, the others are dark
  int packets;
};

class NastyFrames : public ::testing::TestWithParam<NastyFrame> {};

TEST_P(NastyFrames, AreShownAsTheyAreInAsFewPacketsAsCanBe) {
  Frame levels{};
  for (const auto& [from, to] : GetParam().runs) {
    for (int channel = from; channel <= to; ++channel)
      levels[static_cast<std::size_t>(channel - 1)] = static_cast<std::uint8_t>(1 + channel % 255);
  }
  const auto packets = EncodeK8062Frame(levels, GetParam().count);
  EXPECT_EQ(static_cast<int>(packets.size()), GetParam().packets);
  EXPECT_EQ(static_cast<int>(packets.size()), FewestPackets(levels, GetParam().count));
  Frame carried = levels;
  std::fill(carried.begin() + GetParam().count, carried.end(), std::uint8_t{0});
  EXPECT_EQ(Decoded(packets, GetParam().count), carried);
}

INSTANTIATE_TEST_SUITE_P(
    Table, NastyFrames,
    ::testing::Values(NastyFrame{"AllDark", 512, {}, 5}, NastyFrame{"AllLit", 512, {{1, 512}}, 75},
                      NastyFrame{"Shortest", 6, {{1, 6}}, 1}, NastyFrame{"TwentyFourLit", 24, {{1, 24}}, 7},
                      NastyFrame{"TwentySevenLit", 27, {{1, 27}}, 4},
                      NastyFrame{"ALoneZeroBeforeALevel", 27, {{1, 8}, {10, 27}}, 4},
                      NastyFrame{"AHundredZerosFirst", 107, {{101, 107}}, 2},
                      NastyFrame{"AHundredAndOneZerosFirst", 107, {{102, 107}}, 2},
                      NastyFrame{"ATailOfOne", 28, {{1, 28}}, 5}, NastyFrame{"ATailOfSix", 33, {{1, 33}}, 10},
                      NastyFrame{"ADarkTail", 33, {{1, 6}}, 2}, NastyFrame{"OnlyTheFirst", 512, {{1, 1}}, 6},
                      NastyFrame{"OnlyTheLast", 512, {{512, 512}}, 5},
                      NastyFrame{"TheLastOfOneMoreThanPlain", 511, {{1, 511}}, 74}),
    [](const auto& frame) { return frame.param.name; });

TEST(K8062FrameTest, RandomFramesNeverTakeMoreThanTheGreedyEncodingAndOftenFewer) {
  std::mt19937 random(1);
  int better = 0;
  constexpr int kFrames = 300;
  for (int i = 0; i < kFrames; ++i) {
    const auto dark_of_ten = random() % 11;
    Frame levels{};
    for (auto& level : levels)
      level = static_cast<std::uint8_t>(random() % 10 < dark_of_ten ? 0 : 1 + random() % 255);
    const int count = 6 + static_cast<int>(random() % 507);
    std::fill(levels.begin() + count, levels.end(), std::uint8_t{0});
    const auto packets = EncodeK8062Frame(levels, count);
    ASSERT_EQ(Decoded(packets, count), levels);
    ASSERT_EQ(static_cast<int>(packets.size()), FewestPackets(levels, count));
    const int greedy = GreedyK8062Packets(levels, count);
    ASSERT_LE(static_cast<int>(packets.size()), greedy);
    if (static_cast<int>(packets.size()) < greedy) ++better;
  }
  EXPECT_GT(better, kFrames / 4);
}

TEST(K8062FrameTest, WithTheUpgradeFramesOfEveryLengthAreShownAsTheyAreInAsFewPacketsAsCanBe) {
  std::mt19937 random(2);
  for (const int count : {6, 24, 61, 62, 63, 64, 124, 125, 126, 162, 187, 188, 511, 512}) {
    for (const unsigned dark_of_ten : {0U, 7U, 10U}) {
      Frame levels{};
      for (int i = 0; i < count; ++i)
        levels[static_cast<std::size_t>(i)] =
            static_cast<std::uint8_t>(random() % 10 < dark_of_ten ? 0 : 1 + random() % 255);
      if (count > 300) std::fill(levels.begin() + 70, levels.begin() + 250, std::uint8_t{0});
      const auto packets = EncodeK8062Frame(levels, count, K8062Size::Upgraded);
      for (const K8062Packet& packet : packets) ASSERT_EQ(packet.size(), 64U);
      ASSERT_EQ(Decoded(packets, count), levels) << count;
      ASSERT_EQ(static_cast<int>(packets.size()), FewestPackets(levels, count, K8062Size::Upgraded)) << count;
    }
  }
}

TEST(K8062FrameTest, CarriesAsManyChannelsAsCostNothing) {
  const std::vector<std::pair<int, int>> cases{{0, 27},    {24, 27},   {27, 27},   {28, 34},   {96, 97},
                                               {128, 132}, {510, 510}, {511, 512}, {512, 512}, {9999, 512}};
  for (const auto& [needed, carried] : cases) EXPECT_EQ(CarriedChannels(needed), carried) << needed;
  const std::vector<std::pair<int, int>> upgraded{{0, 62},    {62, 62},   {63, 125},
                                                  {125, 125}, {500, 503}, {504, 512}};
  for (const auto& [needed, carried] : upgraded)
    EXPECT_EQ(CarriedChannels(needed, K8062Size::Upgraded), carried) << needed;
}

}  // namespace
}  // namespace platform::usb
