// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/UsbBus.h"

#include <libusb.h>

#include <cstddef>

#include "support/Sentences.h"

namespace platform::usb {

support::Result<std::unique_ptr<UsbContext>> UsbContext::Open() {
  libusb_context* context = nullptr;
  const int code = libusb_init(&context);
  if (code == LIBUSB_SUCCESS) return std::unique_ptr<UsbContext>(new UsbContext(context));
  return support::Failed(support::ErrorCode::Unavailable, support::Sentence::UsbNotUsable,
                         {libusb_strerror(code)});
}

UsbContext::~UsbContext() {
  libusb_exit(context_);
}

UsbDevices::UsbDevices(const UsbContext& usb) : count_(libusb_get_device_list(usb.Handle(), &list_)) {}

UsbDevices::~UsbDevices() {
  if (count_ >= 0) libusb_free_device_list(list_, 1);
}

std::span<libusb_device*> UsbDevices::All() const {
  return {list_, count_ > 0 ? static_cast<std::size_t>(count_) : 0};
}

}  // namespace platform::usb
