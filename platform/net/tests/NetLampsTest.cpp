// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/net/NetLamps.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <functional>
#include <memory>
#include <string>

#include "dmx/OutputStage.h"
#include "dmx/dmx_output.h"

namespace platform::net {
namespace {

using namespace std::chrono_literals;
using Packet = std::vector<std::uint8_t>;
using Protocol = dmx::NetWish::Protocol;
using State = dmx::DmxInterfaceStatus::State;

/// Whoever has the lamps.
class Receiver {
 public:
  Receiver() : socket_(socket(AF_INET, SOCK_DGRAM, 0)) {
    sockaddr_in here{};
    here.sin_family = AF_INET;
    here.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(bind(socket_, reinterpret_cast<sockaddr*>(&here), sizeof here), 0);
    socklen_t size = sizeof here;
    getsockname(socket_, reinterpret_cast<sockaddr*>(&here), &size);
    port_ = ntohs(here.sin_port);
  }
  ~Receiver() { close(socket_); }
  Receiver(const Receiver&) = delete;
  Receiver& operator=(const Receiver&) = delete;

  [[nodiscard]] std::uint16_t Port() const { return port_; }
  /// The first packet from now on that is so; empty when none comes.
  Packet Await(const std::function<bool(const Packet&)>& wanted) {
    for (int looks = 0; looks < 2000; ++looks) {
      pollfd one{socket_, POLLIN, 0};
      if (poll(&one, 1, 10'000) <= 0) return {};
      Packet packet(1500);
      const ssize_t got = recv(socket_, packet.data(), packet.size(), 0);
      packet.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
      if (wanted(packet)) return packet;
    }
    return {};
  }

 private:
  const int socket_;
  std::uint16_t port_ = 0;
};

unsigned Word(const Packet& packet, std::size_t at) {
  return packet[at] * 256U + packet[at + 1];
}

/// Levels of an Art-Net or sACN packet, from channel 1 on.
std::size_t FirstLevel(const Packet& packet) {
  return packet.size() == kArtDmxBytes ? 18 : 126;
}
bool Shows(const Packet& packet, int channel, int level) {
  return packet.size() > 500 && packet[FirstLevel(packet) + static_cast<std::size_t>(channel - 1)] == level;
}

class NetLampsTest : public ::testing::Test {
 protected:
  dmx::NetWish WishFor(Protocol protocol, int universe) {
    dmx::NetWish wish;
    wish.protocol = protocol;
    wish.universe = universe;
    wish.address = "127.0.0.1";
    wish.source = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    return wish;
  }
  void Start() {
    stage_.StartDevice();
    stage_.SetChannelCount(512);
  }
  void Move(int channel, int level) { universe_.MoveFader(channel, static_cast<dmx::DmxLevel>(level)); }

  Receiver art_net_, sacn_;
  std::unique_ptr<NetLamps> wire_ =
      std::make_unique<NetLamps>(NetLamps::PortNumbers{art_net_.Port(), sacn_.Port()});
  dmx::OutputStage stage_{*wire_};
  dmx::Universe universe_{stage_};
};

TEST_F(NetLampsTest, ArtNetFromTheFirstFaderToTheDarkFrame) {
  wire_->Choose(WishFor(Protocol::ArtNet, 0x1234));
  Start();
  Move(1, 255);
  Move(512, 3);
  const Packet packet = art_net_.Await([](const Packet& p) { return Shows(p, 1, 255) && Shows(p, 512, 3); });
  ASSERT_EQ(packet.size(), kArtDmxBytes);
  EXPECT_EQ(std::string(packet.begin(), packet.begin() + 8), std::string("Art-Net\0", 8));
  EXPECT_EQ(Word(packet, 8), 0x0050U) << "low byte first";
  EXPECT_EQ(Word(packet, 10), 14U);
  EXPECT_EQ(packet[14], 0x34) << "sub-net and universe";
  EXPECT_EQ(packet[15], 0x12) << "net";
  EXPECT_EQ(Word(packet, 16), 512U);
  const unsigned number = packet[12];
  const Packet again = art_net_.Await([](const Packet&) { return true; });
  ASSERT_TRUE(Shows(again, 1, 255)) << "said again although nothing changes";
  EXPECT_EQ(again[12], number % 255 + 1);
  EXPECT_EQ(wire_->Status().state, State::Sending);
  stage_.StopDevice();
  EXPECT_FALSE(art_net_.Await([](const Packet& p) { return Shows(p, 1, 0) && Shows(p, 512, 0); }).empty());
}

TEST_F(NetLampsTest, SacnTellsWhoSendsAndThatItEnds) {
  wire_->Choose(WishFor(Protocol::Sacn, 0x0102));
  Start();
  Move(2, 77);
  const Packet packet = sacn_.Await([](const Packet& p) { return Shows(p, 2, 77); });
  ASSERT_EQ(packet.size(), kSacnBytes);
  EXPECT_EQ(std::string(packet.begin() + 4, packet.begin() + 13), "ASC-E1.17");
  EXPECT_EQ(Word(packet, 16), 0x7000U + 638 - 16);
  EXPECT_EQ(packet[22], 1) << "its id";
  EXPECT_EQ(packet[37], 16);
  EXPECT_EQ(Word(packet, 38), 0x7000U + 638 - 38);
  EXPECT_EQ(packet[108], 100) << "priority";
  EXPECT_EQ(Word(packet, 113), 0x0102U);
  EXPECT_EQ(Word(packet, 115), 0x7000U + 638 - 115);
  EXPECT_EQ(Word(packet, 123), 513U);
  EXPECT_EQ(packet[125], 0) << "start code";
  wire_.reset();
  const Packet dark = sacn_.Await([](const Packet& p) { return Shows(p, 2, 0); });
  EXPECT_FALSE(dark.empty());
  EXPECT_FALSE(sacn_.Await([](const Packet& p) { return p.size() == kSacnBytes && p[112] == 0x40; }).empty());
}

TEST_F(NetLampsTest, GoesElsewhereInTheMiddleWithWhatIsLit) {
  wire_->Choose(WishFor(Protocol::ArtNet, 0));
  Start();
  Move(5, 200);
  ASSERT_FALSE(art_net_.Await([](const Packet& p) { return Shows(p, 5, 200); }).empty());
  wire_->Choose(WishFor(Protocol::Sacn, 1));
  EXPECT_FALSE(sacn_.Await([](const Packet& p) { return Shows(p, 5, 200); }).empty());
  EXPECT_FALSE(art_net_.Await([](const Packet& p) { return Shows(p, 5, 0); }).empty()) << "no lamp stays lit";
  dmx::NetWish wrong = WishFor(Protocol::ArtNet, 0);
  wrong.address = "the lamps";
  wire_->Choose(wrong);
  ASSERT_FALSE(sacn_.Await([](const Packet& p) { return p.size() == kSacnBytes && p[112] == 0x40; }).empty());
  wire_->Choose(WishFor(Protocol::ArtNet, 0));
  EXPECT_FALSE(art_net_.Await([](const Packet& p) { return Shows(p, 5, 200); }).empty());
}

TEST_F(NetLampsTest, AWrongAddressIsSaid) {
  dmx::NetWish wrong = WishFor(Protocol::ArtNet, 0);
  wrong.address = "10.0.0.300";
  wire_->Choose(wrong);
  Start();
  for (int i = 0; i < 10'000 && wire_->Status().state != State::Searching; ++i) usleep(1000);
  EXPECT_EQ(wire_->Status().text, "\"10.0.0.300\" is no address of four numbers, such as 192.168.1.20.");
}

}  // namespace
}  // namespace platform::net
