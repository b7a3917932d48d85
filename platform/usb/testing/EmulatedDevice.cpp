// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/testing/EmulatedDevice.h"

// The second needs the first.
#include <sys/ioctl.h>

#include <dlfcn.h>
#include <linux/usbdevice_fs.h>
#include <sys/socket.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <stdexcept>
#include <vector>

/// umockdev looks for the listeners to an event, then writes to each, and aborts the program when one closed
/// in between, as the adapter's thread does after CloseDevices(). To a listener that is gone, nothing is to
/// be said.
extern "C" ssize_t sendmsg(int socket, const msghdr* message, int flags) {
  using Send = ssize_t (*)(int, const msghdr*, int);
  static const auto send = reinterpret_cast<Send>(dlsym(RTLD_NEXT, "sendmsg"));
  const ssize_t sent = send(socket, message, flags);
  if (sent >= 0 || errno != ECONNREFUSED) return sent;
  std::size_t bytes = 0;
  for (std::size_t part = 0; part < message->msg_iovlen; ++part) bytes += message->msg_iov[part].iov_len;
  return static_cast<ssize_t>(bytes);
}

namespace platform::usb::testing {
namespace {

using Bytes = std::initializer_list<std::uint8_t>;

/// Device, configuration, interface and its two endpoints, as the standard lays them out.
std::string Descriptors(int product, bool hid, int packet_size) {
  const auto size = static_cast<std::uint8_t>(packet_size);
  const std::uint8_t type = hid ? 3 : 2;  // interrupt or bulk
  const std::uint8_t interface_class = hid ? 3 : 0xFF;
  const std::uint8_t total = hid ? 41 : 32;
  const auto low = static_cast<std::uint8_t>(product & 0xFF);
  std::vector<std::uint8_t> bytes{18,   1, 0, 2,    0,  0, 0, size, 0xCF, 0x10,  low,
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
  g_object_unref(bed_);
}

EmulatedDevice::EmulatedDevice(EmulatedBus& bus, int number)
    : bed_(bus.Bed()),
      number_(number),
      node_("/dev/bus/usb/001/00" + std::to_string(number)),
      path_("/sys/devices/pci0000:00/0000:00:14.0/usb1/1-" + std::to_string(number)) {
  assert(number >= 2 && number <= 9);
}

EmulatedDevice::~EmulatedDevice() {
  Unplug();
}

std::string EmulatedDevice::Description(Kind kind) const {
  const std::string descriptors = Descriptors(kind.product, kind.hid, kind.packet_size);
  const std::string number = std::to_string(number_);
  return "P: " + path_.substr(4) + "\nN: bus/usb/001/00" + number + "=" + descriptors +
         "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nE: DEVNAME=" + node_ + "\nE: BUSNUM=001\nE: DEVNUM=00" +
         number + "\nE: MAJOR=189\nE: MINOR=" + std::to_string(number_ - 1) +
         "\nA: busnum=1\\n\nA: devnum=" + number + "\\n\nA: speed=" + (kind.packet_size == 8 ? "1.5" : "12") +
         "\\n\nA: bConfigurationValue=1\\n\nA: bNumConfigurations=1\\n\nA: idVendor=10cf\\n\nA: "
         "idProduct=806" +
         std::to_string(kind.product & 15) + "\\n\nH: descriptors=" + descriptors + "\n";
}

void EmulatedDevice::PlugIn(Kind kind) {
  {
    support::MutexLock lock(mutex_);
    gone_ = false;
    Reset();
  }
  calls_ = umockdev_ioctl_base_new();
  g_signal_connect(calls_, "handle-ioctl", G_CALLBACK(&EmulatedDevice::OnCall), this);
  // First, so that whoever finds the device is answered.
  umockdev_testbed_attach_ioctl(bed_, node_.c_str(), calls_, nullptr);
  umockdev_testbed_add_from_string(bed_, Description(kind).c_str(), nullptr);
  umockdev_testbed_uevent(bed_, path_.c_str(), "add");
}

void EmulatedDevice::Unplug() {
  {
    support::MutexLock lock(mutex_);
    gone_ = true;
  }
  if (calls_ == nullptr) return;
  umockdev_testbed_uevent(bed_, path_.c_str(), "remove");
  umockdev_testbed_remove_device(bed_, path_.c_str());
  umockdev_testbed_detach_ioctl(bed_, node_.c_str(), nullptr);
  g_clear_object(&calls_);
}

void EmulatedDevice::PullAfter(int packets) {
  support::MutexLock lock(mutex_);
  pull_after_ = packets;
}

void EmulatedDevice::BindDriver() {
  support::MutexLock lock(mutex_);
  driver_bound_ = true;
}

void EmulatedDevice::SetPace(std::chrono::milliseconds pace) {
  support::MutexLock lock(mutex_);
  pace_ = pace;
}

void EmulatedDevice::FailOnce() {
  support::MutexLock lock(mutex_);
  fail_once_ = true;
}

bool EmulatedDevice::Comes(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
  support::MutexLock lock(mutex_);
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= deadline) return false;
    lock.WaitUntil(changed_, deadline);
  }
  return true;
}

int EmulatedDevice::DriversDetached() {
  support::MutexLock lock(mutex_);
  return detached_;
}

int EmulatedDevice::DriversAttached() {
  support::MutexLock lock(mutex_);
  return attached_;
}

gboolean EmulatedDevice::OnCall(UMockdevIoctlBase*, UMockdevIoctlClient* client, void* self) {
  return static_cast<EmulatedDevice*>(self)->Answer(client);
}

gboolean EmulatedDevice::Answer(UMockdevIoctlClient* client) {
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
    case USBDEVFS_CLEAR_HALT:
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

int EmulatedDevice::DriverCall(UMockdevIoctlClient* client) {
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

void EmulatedDevice::Submit(UMockdevIoctlClient* client) {
  UMockdevIoctlData* request =
      umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, sizeof(usbdevfs_urb), nullptr);
  auto* urb = reinterpret_cast<usbdevfs_urb*>(request->data);
  const auto size = static_cast<std::size_t>(urb->buffer_length);
  Pending pending{request, Resolved<std::uint8_t>(request, offsetof(usbdevfs_urb, buffer), size), {}, false};
  if ((urb->endpoint & 0x80) == 0) TakePacket(pending);
  pending_.push_back(pending);
  changed_.notify_all();
}

void EmulatedDevice::TakePacket(Pending& pending) {
  auto* urb = reinterpret_cast<usbdevfs_urb*>(pending.request->data);
  urb->status = fail_once_ ? -EPIPE : 0;
  urb->actual_length = fail_once_ ? 0 : urb->buffer_length;
  if (!fail_once_) Take({pending.buffer, static_cast<std::size_t>(urb->buffer_length)});
  fail_once_ = false;
  if (pull_after_ && --*pull_after_ <= 0) {
    gone_ = true;
    pull_after_.reset();
  }
  next_slot_ = std::max(next_slot_, std::chrono::steady_clock::now()) + pace_;
  pending.ready = next_slot_;
}

bool EmulatedDevice::Discard(UMockdevIoctlClient* client) {
  gulong wanted = 0;
  std::memcpy(&wanted, umockdev_ioctl_client_get_arg(client)->data, sizeof wanted);
  const auto found = std::find_if(pending_.begin(), pending_.end(), [&](const Pending& pending) {
    return pending.request->client_addr == wanted;
  });
  if (found == pending_.end()) return false;
  found->discarded = true;
  return true;
}

bool EmulatedDevice::Complete(Pending& pending) {
  auto* urb = reinterpret_cast<usbdevfs_urb*>(pending.request->data);
  if (gone_ || pending.discarded) {
    urb->status = gone_ ? -ESHUTDOWN : -ENOENT;
    urb->actual_length = 0;
    return true;
  }
  if ((urb->endpoint & 0x80) == 0)
    return pace_.count() == 0 || pending.ready <= std::chrono::steady_clock::now();
  const auto answer = Give();
  if (!answer) return false;
  const std::size_t bytes = std::min(answer->size(), static_cast<std::size_t>(urb->buffer_length));
  std::copy_n(answer->begin(), bytes, pending.buffer);
  urb->status = 0;
  urb->actual_length = static_cast<int>(bytes);
  return true;
}

int EmulatedDevice::Reap(UMockdevIoctlClient* client) {
  auto done = pending_.begin();
  while (done != pending_.end() && !Complete(*done)) ++done;
  if (done == pending_.end()) return gone_ ? ENODEV : EAGAIN;
  UMockdevIoctlData* request = done->request;
  pending_.erase(done);
  UMockdevIoctlData* place =
      umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, sizeof(gpointer), nullptr);
  umockdev_ioctl_data_set_ptr(place, 0, request);
  g_object_unref(place);
  g_object_unref(request);
  return 0;
}

}  // namespace platform::usb::testing
