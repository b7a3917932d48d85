// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/DiscImage.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "karaoke/testing/DiscBytes.h"

namespace karaoke {
namespace {

using namespace std::chrono_literals;
using testing::DiscBytes;
using Move = DiscBytes::Move;

constexpr DiscBytes::Tile kFull{0x3F, 0x3F, 0x3F, 0x3F, 0x3F, 0x3F, 0x3F, 0x3F, 0x3F, 0x3F, 0x3F, 0x3F};
constexpr DiscBytes::Tile kLeftColumn{0x20, 0x20, 0x20, 0x20, 0x20, 0x20, 0x20, 0x20, 0x20, 0x20, 0x20, 0x20};
constexpr DiscBytes::Tile kTopRow{0x3F};
constexpr std::array<int, 8> kRainbow{0x000, 0xF00, 0x0F0, 0x00F, 0xFF0, 0xF0F, 0x0FF, 0xFFF};

std::shared_ptr<const DiscImage> ImageOf(const DiscBytes& bytes) {
  auto image = DiscImage::Read(bytes.Content(), "song.mp3");
  return image ? image.Value() : nullptr;
}

/// The picture that all packets drew.
DiscPicture PictureOf(const DiscBytes& bytes) {
  DiscPicture picture;
  const auto image = ImageOf(bytes);
  if (image != nullptr) image->Draw(0, image->Packets(), picture);
  return picture;
}

int SeenAt(const DiscPicture& picture, int x, int y) {
  return picture.SeenRow(y)[static_cast<std::size_t>(x)];
}

/// A number for every tile of the memory, so that every move can be told.
DiscBytes Chequered() {
  DiscBytes bytes;
  bytes.Colours(0, kRainbow).Colours(8, {0x111, 0x222, 0x333, 0x444, 0x555, 0x666, 0x777, 0x888});
  for (int row = 0; row < 18; ++row) {
    for (int column = 0; column < 50; ++column) bytes.Draw(row, column, 0, (3 * row + column) % 16, kFull);
  }
  return bytes;
}

int ChequeredAt(int memory_x, int memory_y) {
  return (3 * (memory_y / 12) + memory_x / 6) % 16;
}

TEST(DiscPictureTest, EachPacketDrawsWhatItSays) {
  struct Case {
    const char* name;
    DiscBytes bytes;
    std::function<int(int x, int y)> colour;  ///< of what is seen
  };
  const Case cases[] = {
      {"memory cleared", DiscBytes().Clear(5), [](int, int) { return 5; }},
      {"cleared again, although it is a repeat", DiscBytes().Clear(5).Clear(6, 3),
       [](int, int) { return 6; }},
      {"border alone", DiscBytes().Clear(5).Border(2), [](int, int) { return 5; }},
      {"border, looked at by an offset",
       DiscBytes().Clear(5).Border(2).ScrollRound({Move::None, 5}, {Move::None, 11}),
       [](int x, int y) { return x >= 283 || y >= 181 ? 2 : 5; }},
      {"tile", DiscBytes().Draw(1, 1, 3, 7, kLeftColumn),
       [](int x, int y) { return x >= 6 || y >= 12 ? 0
                                 : x == 0          ? 7
                                                   : 3; }},
      {"tile, its rows from the top", DiscBytes().Draw(16, 48, 3, 7, kTopRow),
       [](int x, int y) { return x < 282 || y < 180 ? 0
                                 : y == 180         ? 7
                                                    : 3; }},
      {"tile with bits beside the colours", DiscBytes().Draw(1 | 0x20, 1, 0x33, 0x17, kLeftColumn),
       [](int x, int y) { return x >= 6 || y >= 12 ? 0
                                 : x == 0          ? 7
                                                   : 3; }},
      {"exclusive tile", DiscBytes().Clear(5).Xor(1, 1, 0, 15, kLeftColumn),
       [](int x, int y) { return x == 0 && y < 12 ? 5 ^ 15 : 5; }},
      {"tile outside the memory", DiscBytes().Clear(5).Draw(18, 1, 7, 7, kFull).Draw(1, 50, 7, 7, kFull),
       [](int, int) { return 5; }},
      {"offsets beyond a tile", Chequered().ScrollRound({Move::None, 7}, {Move::None, 15}),
       [](int x, int y) { return ChequeredAt(x + 11, y + 23); }},
      {"offsets until the next memory clear",
       DiscBytes().ScrollRound({Move::None, 3}, {Move::None, 4}).Clear(5).Draw(1, 1, 3, 7, kLeftColumn),
       [](int x, int y) { return x >= 6 || y >= 12 ? 5
                                 : x == 0          ? 7
                                                   : 3; }},
      {"all bits set", DiscBytes().Clear(5).Draw(1, 1, 3, 7, kLeftColumn).FillOtherBits(),
       [](int x, int y) { return x >= 6 || y >= 12 ? 5
                                 : x == 0          ? 7
                                                   : 3; }},
      {"what is no graphics", DiscBytes().Clear(5).Raw({8, 1, 0, 0, 7}).Until(0.01),
       [](int, int) { return 5; }},
      {"half a packet", DiscBytes().Clear(5).Raw({9, 1, 0, 0, 7}), [](int, int) { return 5; }},
  };
  for (const Case& one : cases) {
    const DiscPicture picture = PictureOf(one.bytes);
    int wrong = 0;
    for (int y = 0; y < DiscPicture::kSeenHeight; ++y) {
      for (int x = 0; x < DiscPicture::kSeenWidth; ++x) wrong += SeenAt(picture, x, y) != one.colour(x, y);
    }
    EXPECT_EQ(wrong, 0) << one.name;
  }
}

TEST(DiscPictureTest, AScrollMovesTheWholeMemoryAndFillsOrBringsRound) {
  struct Case {
    Move across, along;
    int dx, dy;
  };
  const Case cases[] = {
      {Move::Forward, Move::None, 6, 0},   {Move::Back, Move::None, -6, 0},
      {Move::None, Move::Forward, 0, 12},  {Move::None, Move::Back, 0, -12},
      {Move::Forward, Move::Back, 6, -12}, {static_cast<Move>(3), static_cast<Move>(3), 0, 0}};
  for (const Case& one : cases) {
    const DiscPicture round = PictureOf(Chequered().ScrollRound({one.across, 0}, {one.along, 0}));
    const DiscPicture filled = PictureOf(Chequered().ScrollFilling(9, {one.across, 0}, {one.along, 0}));
    int wrong = 0;
    for (int y = 0; y < DiscPicture::kHeight; ++y) {
      for (int x = 0; x < DiscPicture::kWidth; ++x) {
        const int from_x = x - one.dx, from_y = y - one.dy;
        const bool inside = from_x >= 0 && from_x < 300 && from_y >= 0 && from_y < 216;
        const int moved = ChequeredAt((from_x + 300) % 300, (from_y + 216) % 216);
        const auto place = static_cast<std::size_t>(y * DiscPicture::kWidth + x);
        wrong += round.memory[place] != moved;
        wrong += filled.memory[place] != (inside ? moved : 9);
      }
    }
    EXPECT_EQ(wrong, 0) << one.dx << " " << one.dy;
  }
}

TEST(DiscPictureTest, ColoursChangeWhatIsDrawnAlready) {
  DiscPicture picture = PictureOf(DiscBytes().Clear(9).Draw(3, 3, 9, 2, kFull));
  EXPECT_EQ(picture.Ground(), 0U);
  picture = PictureOf(DiscBytes().Clear(9).Colours(8, {0, 0x18F, 0, 0, 0, 0, 0, 0}).Colours(0, kRainbow));
  EXPECT_EQ(picture.Ground(), 0x1188FFU);
  EXPECT_EQ(picture.colours[4], 0xFFFF00U);
}

TEST(DiscImageTest, ItsFiguresAreThoseOfThePackets) {
  DiscBytes bytes;
  bytes.Colours(0, kRainbow).Clear(1).Until(2).Draw(1, 1, 1, 2, kFull);  // seen for the last time
  bytes.Until(3).Draw(1, 1, 1, 2, kFull).Draw(0, 0, 1, 2, kFull).Clear(1).Xor(0, 1, 0, 3, kFull);
  bytes.Until(4).Clear(1, 1).Colours(8, kRainbow).Transparent(3).Border(4);
  bytes.Packet(7, {}).Draw(18, 0, 0, 0, kFull).Until(5);
  const auto image = ImageOf(bytes);
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->Packets(), 1500U);
  EXPECT_EQ(image->Length(), 5s);
  EXPECT_EQ(image->Unknown(), 2U);
  EXPECT_EQ(image->GraphicsEnd(), std::chrono::microseconds(902 * 10000 / 3));  // the tile is cleared away
}

TEST(DiscImageTest, WithoutGraphicsThereIsNone) {
  const DiscBytes none[] = {DiscBytes(), DiscBytes().Raw({9, 1, 0}), DiscBytes().Until(1),
                            DiscBytes().Packet(63, {})};
  for (const DiscBytes& bytes : none) {
    const auto image = DiscImage::Read(bytes.Content(), "song.mp3");
    ASSERT_FALSE(image.Ok());
    EXPECT_EQ(image.Failure().text, "The disc image of song.mp3 holds no graphics.");
  }
}

TEST(DiscImageTest, APacketIsDueAtItsThreeHundredthPart) {
  const auto image = ImageOf(DiscBytes().Clear(1).Until(1));
  EXPECT_EQ(image->DueAt(-1us), 0U);
  EXPECT_EQ(image->DueAt(0us), 1U);
  EXPECT_EQ(image->DueAt(24h * 365000), 300U);
  for (std::size_t packet = 1; packet < 300; ++packet) {
    const auto due = std::chrono::microseconds(packet * 10000 / 3);
    EXPECT_EQ(image->DueAt(due - 1us), packet);
    EXPECT_EQ(image->DueAt(due), packet + 1);
  }
}

/// Packets of every kind by the dice, over a minute and a half.
std::shared_ptr<const DiscImage> AnyDisc() {
  std::mt19937 dice(8);
  const auto upto = [&dice](unsigned most) { return static_cast<int>(dice() % (most + 1)); };
  DiscBytes bytes;
  while (bytes.Packets() < 27000) {
    constexpr int kInstructions[] = {1, 2, 6, 6, 6, 6, 20, 24, 28, 30, 31, 38, 38, 7};
    std::vector<int> data;
    for (int i = 0; i < 16; ++i) data.push_back(upto(255));
    bytes.Packet(kInstructions[upto(13)], data);
    bytes.Until(static_cast<double>(bytes.Packets()) / 300 + upto(9) / 100.0);
  }
  return ImageOf(bytes);
}

TEST(DiscShowTest, ASeekShowsWhatPlayingThroughShows) {
  const auto image = AnyDisc();
  DiscShow straight(image), seeking(image);
  std::vector<std::uint64_t> hashes;
  for (auto time = 0s; time <= 90s; ++time) hashes.push_back(HashOf(straight.At(time)));
  std::mt19937 dice(3);
  for (int seek = 0; seek < 60; ++seek) {
    const std::size_t second = dice() % 91;
    EXPECT_EQ(HashOf(seeking.At(std::chrono::seconds(second))), hashes[second]) << second;
    DiscShow fresh(image);
    EXPECT_EQ(fresh.At(std::chrono::seconds(second)), seeking.At(std::chrono::seconds(second)));
  }
}

TEST(DiscShowTest, ItTellsWhenNothingChanged) {
  DiscShow show(ImageOf(DiscBytes().Colours(0, kRainbow).Clear(1).Until(1).Clear(2).Until(2)));
  const auto changed = [&](std::chrono::milliseconds time) {
    static_cast<void>(show.At(time));
    return show.Changed();
  };
  EXPECT_TRUE(changed(500ms));
  EXPECT_FALSE(changed(900ms));
  EXPECT_TRUE(changed(1500ms));
  EXPECT_FALSE(changed(1500ms));
  EXPECT_TRUE(changed(0ms));
}

}  // namespace
}  // namespace karaoke
