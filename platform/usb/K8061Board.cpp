// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/K8061Board.h"

#include <libusb.h>

#include <algorithm>
#include <cstddef>

#include "support/Clock.h"
#include "support/Sentences.h"

namespace platform::usb {
namespace {

constexpr int kFirstProduct = 0x8061;  // the last bits are the address, on boards of some years
constexpr int kLastProduct = 0x8068;
constexpr int kBoardInterface = 0;
constexpr int kBoardPacket = 64;
constexpr int kExchangeMs = 50;
constexpr int kReadAwayMs = 10;
constexpr int kMostReadAway = 16;
constexpr int kExchangeTries = 3;

enum Command : std::uint8_t { kAllAnalog = 0x03, kAllDigital = 0x06, kAddress = 0x0C, kPower = 0x0D };

support::Error BoardTrouble(int code) {
  if (code == LIBUSB_ERROR_ACCESS) {
    return support::Failed(support::ErrorCode::Unavailable, support::Sentence::BoardNoRights);
  }
  if (code == LIBUSB_ERROR_NO_DEVICE)
    return support::Failed(support::ErrorCode::NotFound, support::Sentence::NoBoard);
  return support::Failed(support::ErrorCode::Unavailable, support::Sentence::BoardDoesNotAnswer,
                         {libusb_strerror(code)});
}

int ProductOf(libusb_device* device) {
  libusb_device_descriptor descriptor{};
  const bool ours = libusb_get_device_descriptor(device, &descriptor) == LIBUSB_SUCCESS &&
                    descriptor.idVendor == kVelleman && descriptor.idProduct >= kFirstProduct &&
                    descriptor.idProduct <= kLastProduct;
  return ours ? descriptor.idProduct : 0;
}

}  // namespace

K8061Board::Endpoints K8061Board::EndpointsOf(libusb_device* device) {
  libusb_config_descriptor* config = nullptr;
  if (libusb_get_active_config_descriptor(device, &config) != LIBUSB_SUCCESS) return {};
  Endpoints found;
  if (config->bNumInterfaces > 0 && config->interface[0].num_altsetting > 0) {
    const libusb_interface_descriptor& description = config->interface[0].altsetting[0];
    const bool hid = description.bInterfaceClass == LIBUSB_CLASS_HID;
    for (const auto& endpoint : std::span(description.endpoint, description.bNumEndpoints)) {
      if (hid || endpoint.wMaxPacketSize != kBoardPacket) continue;
      const bool in = (endpoint.bEndpointAddress & LIBUSB_ENDPOINT_DIR_MASK) == LIBUSB_ENDPOINT_IN;
      (in ? found.in : found.out) = endpoint.bEndpointAddress;
      const int type = endpoint.bmAttributes & LIBUSB_TRANSFER_TYPE_MASK;
      found.interrupt = type == LIBUSB_TRANSFER_TYPE_INTERRUPT;
    }
  }
  libusb_free_config_descriptor(config);
  return found.in != 0 ? found : Endpoints{};
}

bool K8061Board::IsOne(libusb_device* device) {
  return ProductOf(device) != 0 && EndpointsOf(device).out != 0;
}

support::Result<std::unique_ptr<K8061Board>> K8061Board::Open(libusb_device* device) {
  libusb_device_handle* handle = nullptr;
  const int opened = libusb_open(device, &handle);
  if (opened != LIBUSB_SUCCESS) return BoardTrouble(opened);
  std::unique_ptr<K8061Board> board(new K8061Board(handle, EndpointsOf(device)));
  libusb_set_auto_detach_kernel_driver(handle, 1);
  const int claimed = libusb_claim_interface(handle, kBoardInterface);
  if (claimed != LIBUSB_SUCCESS) return BoardTrouble(claimed);
  const std::uint8_t command[] = {kAddress};
  const auto address = board->Exchange(command, 2);
  // Where nobody tells the address, the product's number does.
  board->address_ = address ? address.Value() : ProductOf(device) - kFirstProduct;
  return board;
}

K8061Board::~K8061Board() {
  libusb_release_interface(device_, kBoardInterface);
  libusb_close(device_);
}

libusb_device* K8061Board::Device() const {
  return libusb_get_device(device_);
}

int K8061Board::Transfer(std::uint8_t endpoint, std::span<std::uint8_t> bytes, int timeout_ms, int& moved) {
  const auto transfer = endpoints_.interrupt ? &libusb_interrupt_transfer : &libusb_bulk_transfer;
  moved = 0;
  const int code = transfer(device_, endpoint, bytes.data(), static_cast<int>(bytes.size()), &moved,
                            static_cast<unsigned>(timeout_ms));
  if (code == LIBUSB_ERROR_PIPE) libusb_clear_halt(device_, endpoint);
  return code;
}

void K8061Board::ReadAway() {
  Packet packet;
  int moved = 0;
  for (int i = 0; i < kMostReadAway; ++i) {
    if (Transfer(endpoints_.in, packet, kReadAwayMs, moved) != LIBUSB_SUCCESS) break;
  }
  answers_open_ = false;
}

int K8061Board::ExchangeOnce(std::span<const std::uint8_t> command, int answer_bytes, std::uint8_t& answer) {
  if (answers_open_) ReadAway();
  answers_open_ = true;
  Packet packet{};
  std::copy(command.begin(), command.end(), packet.begin());
  int moved = 0;
  int code = Transfer(endpoints_.out, std::span(packet).first(command.size()), kExchangeMs, moved);
  const support::SteadyClock clock;
  const support::TimePoint deadline = clock.Now() + std::chrono::milliseconds(kExchangeMs);
  while (code == LIBUSB_SUCCESS) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - clock.Now()).count();
    if (left <= 0) return LIBUSB_ERROR_TIMEOUT;
    packet[0] = 0;
    code = Transfer(endpoints_.in, packet, static_cast<int>(left), moved);
    if (code != LIBUSB_SUCCESS || moved < answer_bytes || packet[0] != command[0]) continue;
    answers_open_ = false;
    answer = packet[1];
    break;
  }
  return code;
}

support::Result<std::uint8_t> K8061Board::Exchange(std::span<const std::uint8_t> command, int answer_bytes) {
  int code = LIBUSB_SUCCESS;
  for (int i = 0; i < kExchangeTries; ++i) {
    std::uint8_t answer = 0;
    code = ExchangeOnce(command, answer_bytes, answer);
    if (code == LIBUSB_SUCCESS) {
      answers_open_ = i > 0;  // that of the try before may be on its way
      return answer;
    }
    if (code == LIBUSB_ERROR_NO_DEVICE) break;
  }
  return BoardTrouble(code);
}

support::Result<bool> K8061Board::Powered() {
  const std::uint8_t command[] = {kPower};
  const auto answer = Exchange(command, 2);
  if (!answer) return answer.Failure();
  return answer.Value() != 0;
}

support::Result<void> K8061Board::Switch(std::uint8_t channels) {
  const std::uint8_t command[] = {kAllDigital, channels};
  const auto answer = Exchange(command, 3);
  if (!answer) return answer.Failure();
  return {};
}

support::Result<void> K8061Board::Dim(const boards::DimmedValues& values) {
  std::array<std::uint8_t, 1 + boards::kChannels> command{kAllAnalog};
  std::copy(values.begin(), values.end(), command.begin() + 1);
  const auto answer = Exchange(command, 2);
  if (!answer) return answer.Failure();
  return {};
}

}  // namespace platform::usb
