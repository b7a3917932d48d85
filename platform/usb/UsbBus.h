// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <span>

#include "support/Result.h"

struct libusb_context;
struct libusb_device;

namespace platform::usb {

inline constexpr int kVelleman = 0x10CF;

/// libusb, from its start to its end. Threads: the library takes any.
class UsbContext {
 public:
  [[nodiscard]] static support::Result<std::unique_ptr<UsbContext>> Open();
  ~UsbContext();
  UsbContext(const UsbContext&) = delete;
  UsbContext& operator=(const UsbContext&) = delete;

  [[nodiscard]] libusb_context* Handle() const { return context_; }

 private:
  explicit UsbContext(libusb_context* context) : context_(context) {}
  libusb_context* context_;
};

/// The devices at the bus now.
class UsbDevices {
 public:
  explicit UsbDevices(const UsbContext& usb);
  ~UsbDevices();
  UsbDevices(const UsbDevices&) = delete;
  UsbDevices& operator=(const UsbDevices&) = delete;

  [[nodiscard]] std::span<libusb_device*> All() const;

 private:
  libusb_device** list_ = nullptr;
  std::ptrdiff_t count_;
};

}  // namespace platform::usb
