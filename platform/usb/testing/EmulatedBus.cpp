// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/testing/EmulatedBus.h"

// The second needs the first.
#include <sys/ioctl.h>

#include <linux/usbdevice_fs.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <stdexcept>
#include <vector>

namespace platform::usb::testing {
namespace {

constexpr const char* kNode = "/dev/bus/usb/001/002";
constexpr const char* kPath = "/sys/devices/pci0000:00/0000:00:14.0/usb1/1-2";

using Bytes = std::initializer_list<std::uint8_t>;

/// Device, configuration, interface and its two endpoints, as the standard lays them out.
std::string Descriptors(EmulatedBus::Board board) {
  const bool hid = board == EmulatedBus::Board::K8062;
  const std::uint8_t size = hid ? 8 : 64;
  const std::uint8_t type = hid ? 3 : 2;  // interrupt or bulk
  const std::uint8_t interface_class = hid ? 3 : 0xFF;
  const std::uint8_t total = hid ? 41 : 32;
  std::vector<std::uint8_t> bytes{18,   1, 0, 2,    0,  0, 0, size, 0xCF, 0x10,  0x62,
                                  0x80, 0, 1, 0,    0,  0, 1, 9,    2,    total, 0,
                                  1,    1, 0, 0x80, 50, 9, 4, 0,    0,    2,     interface_class,
                                  0,    0, 0};
  if (hid) {
    for (const std::uint8_t byte : Bytes{9, 0x21, 0, 1, 0, 1, 0x22, 34, 0}) bytes.push_back(byte);
  }
  for (const std::uint8_t address : Bytes{0x81, 0x01}) {
    for (const std::uint8_t byte : Bytes{7, 5, address, type, size, 0, 10}) bytes.push_back(byte);
  }
  std::string text;
  for (const std::uint8_t byte : bytes) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    text += {kDigits[byte >> 4], kDigits[byte & 15]};
  }
  return text;
}

std::string Description(EmulatedBus::Board board) {
  return "P: /devices/pci0000:00/0000:00:14.0/usb1/1-2\nN: bus/usb/001/002=" + Descriptors(board) +
         "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nE: DEVNAME=/dev/bus/usb/001/002\nE: BUSNUM=001\n"
         "E: DEVNUM=002\nE: MAJOR=189\nE: MINOR=1\nA: busnum=1\\n\nA: devnum=2\\n\nA: speed=1.5\\n\n"
         "A: bConfigurationValue=1\\n\nA: bNumConfigurations=1\\n\nA: idVendor=10cf\\n\nA: "
         "idProduct=8062\\n\n"
         "H: descriptors=" +
         Descriptors(board) + "\n";
}

template <typename T>
T* Resolved(UMockdevIoctlData* data, std::size_t offset, std::size_t size) {
  UMockdevIoctlData* inner = umockdev_ioctl_data_resolve(data, offset, size, nullptr);
  if (inner == nullptr) throw std::runtime_error("The request of the library cannot be followed.");
  return reinterpret_cast<T*>(inner->data);
}

}  // namespace

EmulatedBus::EmulatedBus() : bed_(umockdev_testbed_new()) {
  if (!umockdev_in_mock_environment())
    throw std::runtime_error("Run this program with umockdev-wrapper, as ctest does.");
}

EmulatedBus::~EmulatedBus() {
  Unplug();
  g_object_unref(bed_);
}

void EmulatedBus::Plug(Board board) {
  {
    support::MutexLock lock(mutex_);
    gone_ = false;
    box_.Reset();
  }
  calls_ = umockdev_ioctl_base_new();
  g_signal_connect(calls_, "handle-ioctl", G_CALLBACK(&EmulatedBus::OnCall), this);
  // First, so that whoever finds the device is answered.
  umockdev_testbed_attach_ioctl(bed_, kNode, calls_, nullptr);
  umockdev_testbed_add_from_string(bed_, Description(board).c_str(), nullptr);
  umockdev_testbed_uevent(bed_, kPath, "add");
}

void EmulatedBus::Unplug() {
  {
    support::MutexLock lock(mutex_);
    gone_ = true;
  }
  if (calls_ == nullptr) return;
  umockdev_testbed_uevent(bed_, kPath, "remove");
  umockdev_testbed_remove_device(bed_, kPath);
  umockdev_testbed_detach_ioctl(bed_, kNode, nullptr);
  g_clear_object(&calls_);
}

void EmulatedBus::PullAfter(int packets) {
  support::MutexLock lock(mutex_);
  pull_after_ = packets;
}

void EmulatedBus::BindDriver() {
  support::MutexLock lock(mutex_);
  driver_bound_ = true;
}

void EmulatedBus::SetPace(std::chrono::milliseconds pace) {
  support::MutexLock lock(mutex_);
  pace_ = pace;
}

void EmulatedBus::FailOnce() {
  support::MutexLock lock(mutex_);
  fail_once_ = true;
}

bool EmulatedBus::WaitUntil(const std::function<bool(const K8062Decoder&)>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
  support::MutexLock lock(mutex_);
  while (!condition(box_)) {
    if (std::chrono::steady_clock::now() >= deadline) return false;
    lock.WaitUntil(changed_, deadline);
  }
  return true;
}

K8062Decoder EmulatedBus::Box() {
  support::MutexLock lock(mutex_);
  return box_;
}

int EmulatedBus::DriversDetached() {
  support::MutexLock lock(mutex_);
  return detached_;
}

int EmulatedBus::DriversAttached() {
  support::MutexLock lock(mutex_);
  return attached_;
}

gboolean EmulatedBus::OnCall(UMockdevIoctlBase*, UMockdevIoctlClient* client, void* self) {
  return static_cast<EmulatedBus*>(self)->Answer(client);
}

gboolean EmulatedBus::Answer(UMockdevIoctlClient* client) {
  const auto done = [&](int error) {
    umockdev_ioctl_client_complete(client, error == 0 ? 0 : -1, error);
    return TRUE;
  };
  support::MutexLock lock(mutex_);
  const gulong request = umockdev_ioctl_client_get_request(client);
  const bool reaps = request == USBDEVFS_REAPURB || request == USBDEVFS_REAPURBNDELAY;
  if (reaps) return done(Reap(client));
  if (gone_) return done(ENODEV);
  switch (request) {
    case USBDEVFS_GET_CAPABILITIES:
      *Resolved<guint32>(umockdev_ioctl_client_get_arg(client), 0, sizeof(guint32)) =
          USBDEVFS_CAP_ZERO_PACKET | USBDEVFS_CAP_REAP_AFTER_DISCONNECT;
      return done(0);
    case USBDEVFS_CLAIMINTERFACE:
      return done(driver_bound_ ? EBUSY : 0);
    case USBDEVFS_GETDRIVER:
    case USBDEVFS_DISCONNECT_CLAIM:
    case USBDEVFS_IOCTL:
      return done(DriverCall(client));
    case USBDEVFS_RELEASEINTERFACE:
      return done(0);
    case USBDEVFS_SUBMITURB:
      Submit(client);
      return done(0);
    case USBDEVFS_DISCARDURB:
      return done(Discard(client) ? 0 : EINVAL);
    default:
      return done(ENOTTY);
  }
}

int EmulatedBus::DriverCall(UMockdevIoctlClient* client) {
  UMockdevIoctlData* argument = umockdev_ioctl_client_get_arg(client);
  const gulong request = umockdev_ioctl_client_get_request(client);
  if (request == USBDEVFS_GETDRIVER) {
    if (!driver_bound_) return ENODATA;
    auto* answer = Resolved<usbdevfs_getdriver>(argument, 0, sizeof(usbdevfs_getdriver));
    std::strncpy(answer->driver, "vmk80xx", sizeof(answer->driver) - 1);
    return 0;
  }
  const bool attach =
      request == USBDEVFS_IOCTL &&
      Resolved<usbdevfs_ioctl>(argument, 0, sizeof(usbdevfs_ioctl))->ioctl_code == USBDEVFS_CONNECT;
  if (attach == driver_bound_) return 0;
  driver_bound_ = attach;
  ++(attach ? attached_ : detached_);
  return 0;
}

void EmulatedBus::Submit(UMockdevIoctlClient* client) {
  UMockdevIoctlData* request =
      umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, sizeof(usbdevfs_urb), nullptr);
  auto* urb = reinterpret_cast<usbdevfs_urb*>(request->data);
  const auto size = static_cast<std::size_t>(urb->buffer_length);
  const auto* bytes = Resolved<std::uint8_t>(request, offsetof(usbdevfs_urb, buffer), size);
  urb->status = fail_once_ ? -EPIPE : 0;
  urb->actual_length = fail_once_ ? 0 : urb->buffer_length;
  if (!fail_once_) box_.Take({bytes, size});
  fail_once_ = false;
  if (pull_after_ && --*pull_after_ <= 0) {
    gone_ = true;
    pull_after_.reset();
  }
  next_slot_ = std::max(next_slot_, std::chrono::steady_clock::now()) + pace_;
  pending_.push_back({request, next_slot_, false});
  changed_.notify_all();
}

bool EmulatedBus::Discard(UMockdevIoctlClient* client) {
  gulong wanted = 0;
  std::memcpy(&wanted, umockdev_ioctl_client_get_arg(client)->data, sizeof wanted);
  const auto found = std::find_if(pending_.begin(), pending_.end(), [&](const Pending& pending) {
    return pending.request->client_addr == wanted;
  });
  if (found == pending_.end()) return false;
  found->discarded = true;
  return true;
}

int EmulatedBus::Reap(UMockdevIoctlClient* client) {
  if (pending_.empty()) return gone_ ? ENODEV : EAGAIN;
  const Pending pending = pending_.front();
  const bool over = gone_ || pending.discarded;
  if (!over && pace_.count() > 0 && pending.ready > std::chrono::steady_clock::now()) return EAGAIN;
  pending_.pop_front();
  auto* urb = reinterpret_cast<usbdevfs_urb*>(pending.request->data);
  if (over) {
    urb->status = gone_ ? -ESHUTDOWN : -ENOENT;
    urb->actual_length = 0;
  }
  UMockdevIoctlData* place =
      umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, sizeof(gpointer), nullptr);
  umockdev_ioctl_data_set_ptr(place, 0, pending.request);
  g_object_unref(place);
  g_object_unref(pending.request);
  return 0;
}

}  // namespace platform::usb::testing
