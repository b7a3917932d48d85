// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/K8062Box.h"

#include <libusb.h>

#include <span>
#include <string>

#include "support/Sentences.h"

namespace platform::usb {
namespace {

constexpr int kProduct = 0x8062;
constexpr int kInterface = 0;
constexpr unsigned kTimeoutMs = 100;
constexpr int kTries = 5;

bool IsOurProduct(libusb_device* device) {
  libusb_device_descriptor descriptor{};
  return libusb_get_device_descriptor(device, &descriptor) == LIBUSB_SUCCESS &&
         descriptor.idVendor == kVelleman && descriptor.idProduct == kProduct;
}

support::Error Trouble(int code) {
  if (code == LIBUSB_ERROR_ACCESS) {
    return support::Failed(support::ErrorCode::Unavailable, support::Sentence::BoxNoRights);
  }
  return support::Failed(support::ErrorCode::Unavailable, support::Sentence::BoxDoesNotAnswer,
                         {libusb_strerror(code)});
}

}  // namespace

K8062Box::Endpoint K8062Box::EndpointOf(libusb_device* device) {
  libusb_config_descriptor* config = nullptr;
  if (libusb_get_active_config_descriptor(device, &config) != LIBUSB_SUCCESS) return {};
  Endpoint found;
  if (config->bNumInterfaces > 0 && config->interface[0].num_altsetting > 0) {
    const libusb_interface_descriptor& description = config->interface[0].altsetting[0];
    for (const auto& endpoint : std::span(description.endpoint, description.bNumEndpoints)) {
      const bool out = (endpoint.bEndpointAddress & LIBUSB_ENDPOINT_DIR_MASK) == LIBUSB_ENDPOINT_OUT;
      const bool hid = description.bInterfaceClass == LIBUSB_CLASS_HID;
      const bool plain = endpoint.wMaxPacketSize == static_cast<int>(K8062Size::Maker);
      const bool upgraded = hid && endpoint.wMaxPacketSize == static_cast<int>(K8062Size::Upgraded);
      if (!out || !(plain || upgraded)) continue;
      const int type = endpoint.bmAttributes & LIBUSB_TRANSFER_TYPE_MASK;
      found = {endpoint.bEndpointAddress, type == LIBUSB_TRANSFER_TYPE_INTERRUPT,
               upgraded ? K8062Size::Upgraded : K8062Size::Maker};
      break;
    }
  }
  libusb_free_config_descriptor(config);
  return found;
}

support::Result<std::unique_ptr<K8062Box>> K8062Box::Open(libusb_device* device, Endpoint endpoint) {
  libusb_device_handle* handle = nullptr;
  const int opened = libusb_open(device, &handle);
  if (opened != LIBUSB_SUCCESS) return Trouble(opened);
  std::unique_ptr<K8062Box> box(new K8062Box(handle, endpoint));
  libusb_set_auto_detach_kernel_driver(handle, 1);
  const int claimed = libusb_claim_interface(handle, kInterface);
  if (claimed != LIBUSB_SUCCESS) return Trouble(claimed);
  return box;
}

support::Result<std::unique_ptr<K8062Box>> K8062Box::Find(const UsbContext& usb) {
  support::Error error = support::Failed(support::ErrorCode::NotFound, support::Sentence::NoBox);
  const UsbDevices devices(usb);
  for (libusb_device* device : devices.All()) {
    if (!IsOurProduct(device)) continue;
    const Endpoint endpoint = EndpointOf(device);
    if (endpoint.address == 0) continue;
    auto box = Open(device, endpoint);
    if (box) return box;
    error = box.Failure();
  }
  return error;
}

K8062Box::~K8062Box() {
  libusb_release_interface(device_, kInterface);
  libusb_close(device_);
}

support::Result<void> K8062Box::Send(const K8062Packet& packet) {
  K8062Packet bytes = packet;
  const auto transfer = endpoint_.interrupt ? &libusb_interrupt_transfer : &libusb_bulk_transfer;
  int code = LIBUSB_ERROR_TIMEOUT;
  for (int i = 0; i < kTries && code == LIBUSB_ERROR_TIMEOUT; ++i) {
    int taken = 0;
    code = transfer(device_, endpoint_.address, bytes.data(), static_cast<int>(bytes.size()), &taken,
                    kTimeoutMs);
    if (taken == static_cast<int>(bytes.size())) code = LIBUSB_SUCCESS;
  }
  if (code == LIBUSB_SUCCESS) return {};
  return Trouble(code);
}

}  // namespace platform::usb
