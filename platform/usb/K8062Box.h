// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/usb/K8062Frame.h"
#include "platform/usb/UsbBus.h"
#include "support/Result.h"

struct libusb_device;
struct libusb_device_handle;

namespace platform::usb {

/// A K8062 that is open for sending.
///
/// It is told from its sister boards, which may bear the same number, by its interface and endpoint: it takes
/// eight bytes at a time or, with the upgraded firmware, 64 and calls itself an input device. A driver of the
/// system's that sits on it is put aside until it is closed. Threads: one at a time. Owns: the device; the
/// context outlives it.
class K8062Box {
 public:
  /// The first box at the bus. ErrorCode::NotFound when there is none, ErrorCode::Unavailable when there is
  /// one that cannot be opened.
  [[nodiscard]] static support::Result<std::unique_ptr<K8062Box>> Find(const UsbContext& usb);
  ~K8062Box();
  K8062Box(const K8062Box&) = delete;
  K8062Box& operator=(const K8062Box&) = delete;

  [[nodiscard]] K8062Size Size() const { return endpoint_.size; }
  /// Waits until the box has taken it, which is about 10 ms; fails when the box is gone. Requires: a packet
  /// of that size.
  support::Result<void> Send(const K8062Packet& packet);

 private:
  struct Endpoint {
    unsigned char address = 0;  ///< 0: this is no K8062
    bool interrupt = true;
    K8062Size size = K8062Size::Maker;
  };
  K8062Box(libusb_device_handle* device, Endpoint endpoint) : device_(device), endpoint_(endpoint) {}
  static Endpoint EndpointOf(libusb_device* device);
  static support::Result<std::unique_ptr<K8062Box>> Open(libusb_device* device, Endpoint endpoint);

  libusb_device_handle* device_;
  Endpoint endpoint_;
};

}  // namespace platform::usb
