// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/net/UdpSender.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "support/Sentences.h"

namespace platform::net {

using support::Sentence;

std::optional<Ip4> ParseIp4(const std::string& text) {
  Ip4 address{};
  if (inet_pton(AF_INET, text.c_str(), address.data()) != 1) return std::nullopt;
  return address;
}

support::Result<UdpSender> UdpSender::Open() {
  const int opened = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (opened < 0)
    return support::Failed(support::ErrorCode::Unavailable, Sentence::NetDoesNotOpen, {std::strerror(errno)});
  const int yes = 1;
  const unsigned char hops = 4, own_too = 1;
  setsockopt(opened, SOL_SOCKET, SO_BROADCAST, &yes, sizeof yes);
  setsockopt(opened, IPPROTO_IP, IP_MULTICAST_TTL, &hops, sizeof hops);
  setsockopt(opened, IPPROTO_IP, IP_MULTICAST_LOOP, &own_too, sizeof own_too);
  return UdpSender(opened);
}

UdpSender::~UdpSender() {
  if (socket_ >= 0) close(socket_);
}

UdpSender::UdpSender(UdpSender&& other) noexcept : socket_(std::exchange(other.socket_, -1)) {}

support::Result<void> UdpSender::Send(const Ip4& to, std::uint16_t port,
                                      std::span<const std::uint8_t> datagram) {
  sockaddr_in receiver{};
  receiver.sin_family = AF_INET;
  receiver.sin_port = htons(port);
  std::memcpy(&receiver.sin_addr, to.data(), to.size());
  const ssize_t sent = sendto(socket_, datagram.data(), datagram.size(), MSG_NOSIGNAL,
                              reinterpret_cast<const sockaddr*>(&receiver), sizeof receiver);
  // A full queue loses a frame; the next one is on its way.
  if (sent >= 0 || errno == EAGAIN || errno == ENOBUFS || errno == ECONNREFUSED) return {};
  return support::Failed(support::ErrorCode::Unavailable, Sentence::NetDoesNotTake, {std::strerror(errno)});
}

}  // namespace platform::net
