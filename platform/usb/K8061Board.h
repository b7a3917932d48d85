// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "platform/boards/BoardLine.h"
#include "platform/usb/UsbBus.h"
#include "support/Result.h"

struct libusb_device_handle;

namespace platform::usb {

/// A K8061 that is open.
///
/// Every command is written and its one answer read. An answer that comes too late, or belongs to a command
/// before, is read away before the next one is believed. A driver of the system's that sits on the board is
/// put aside until it is closed.
/// Threads: one at a time. Owns: the device; the context outlives it.
class K8061Board {
 public:
  /// Told from its sister, the K8062, which may bear the same number, by its description.
  [[nodiscard]] static bool IsOne(libusb_device* device);
  /// Requires: IsOne. What fails, here and below, is ErrorCode::NotFound when the board has gone, else
  /// ErrorCode::Unavailable.
  [[nodiscard]] static support::Result<std::unique_ptr<K8061Board>> Open(libusb_device* device);
  ~K8061Board();
  K8061Board(const K8061Board&) = delete;
  K8061Board& operator=(const K8061Board&) = delete;

  [[nodiscard]] libusb_device* Device() const;
  /// As its jumpers are set, 0 to 7.
  [[nodiscard]] int Address() const { return address_; }
  /// Its lamps' side runs; it has a supply of its own, without which the board answers all the same.
  support::Result<bool> Powered();
  /// Bit (channel - 1) is the channel.
  support::Result<void> Switch(std::uint8_t channels);
  support::Result<void> Dim(const boards::DimmedValues& values);

 private:
  struct Endpoints {
    std::uint8_t out = 0;  ///< 0: this is no K8061
    std::uint8_t in = 0;
    bool interrupt = false;
  };
  using Packet = std::array<std::uint8_t, 64>;

  K8061Board(libusb_device_handle* device, Endpoints endpoints) : device_(device), endpoints_(endpoints) {}
  static Endpoints EndpointsOf(libusb_device* device);
  /// Up to so many bytes; the code of the library, and how many there were.
  int Transfer(std::uint8_t endpoint, std::span<std::uint8_t> bytes, int timeout_ms, int& moved);
  void ReadAway();
  /// The second byte of the answer.
  support::Result<std::uint8_t> Exchange(std::span<const std::uint8_t> command, int answer_bytes);
  int ExchangeOnce(std::span<const std::uint8_t> command, int answer_bytes, std::uint8_t& answer);

  libusb_device_handle* device_;
  Endpoints endpoints_;
  int address_ = 0;
  bool answers_open_ = true;  ///< an answer that nobody waited for may still come
};

}  // namespace platform::usb
