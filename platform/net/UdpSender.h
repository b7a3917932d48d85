// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "support/Result.h"

namespace platform::net {

using Ip4 = std::array<std::uint8_t, 4>;
inline constexpr Ip4 kEverybody{255, 255, 255, 255};

/// Nothing for what is no address of four numbers.
[[nodiscard]] std::optional<Ip4> ParseIp4(const std::string& text);

/// Sends datagrams, also to everybody and to groups. Threads: one at a time.
class UdpSender {
 public:
  [[nodiscard]] static support::Result<UdpSender> Open();
  ~UdpSender();
  UdpSender(UdpSender&& other) noexcept;
  UdpSender& operator=(UdpSender&&) = delete;
  UdpSender(const UdpSender&) = delete;
  UdpSender& operator=(const UdpSender&) = delete;

  /// Whether the system took it; nobody knows who gets it. Does not block.
  [[nodiscard]] support::Result<void> Send(const Ip4& to, std::uint16_t port,
                                           std::span<const std::uint8_t> datagram);

 private:
  explicit UdpSender(int socket) : socket_(socket) {}
  int socket_;
};

}  // namespace platform::net
