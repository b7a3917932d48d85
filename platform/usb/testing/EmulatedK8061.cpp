// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/testing/EmulatedK8061.h"

#include <algorithm>
#include <utility>

namespace platform::usb::testing {
namespace {

constexpr std::chrono::milliseconds kTooLate{70};

}  // namespace

void EmulatedK8061::SetAddress(int address) {
  support::MutexLock lock(mutex_);
  address_ = address;
}

void EmulatedK8061::SwitchSupply(bool on) {
  support::MutexLock lock(mutex_);
  supplied_ = on;
  lamps_ = {0, {}};
}

void EmulatedK8061::FailAnswer(Fault fault, int n) {
  support::MutexLock lock(mutex_);
  fault_ = fault;
  fault_in_ = n;
}

void EmulatedK8061::LeaveAnswer(std::vector<std::uint8_t> answer) {
  support::MutexLock lock(mutex_);
  answers_.push_back({std::move(answer)});
}

bool EmulatedK8061::Shows(const Lamps& lamps) {
  return WaitUntil([&](const Lamps& now, const Counts&) { return now == lamps; });
}

bool EmulatedK8061::WaitUntil(const std::function<bool(const Lamps&, const Counts&)>& condition) {
  return Comes([&]() DJ_NO_THREAD_SAFETY_ANALYSIS { return condition(lamps_, counts_); });
}

EmulatedK8061::Counts EmulatedK8061::TakeCounts() {
  support::MutexLock lock(mutex_);
  return std::exchange(counts_, {});
}

void EmulatedK8061::Reset() {
  lamps_ = {};
  counts_ = {};
  answers_.clear();
}

EmulatedK8061::Bytes EmulatedK8061::Obey(std::span<const std::uint8_t> packet) {
  const std::uint8_t command = packet.empty() ? std::uint8_t{0xFF} : packet[0];
  if (command == 6 && packet.size() == 2) {
    ++counts_.switched;
    if (supplied_) lamps_.switched = packet[1];
    return {command, packet[1], 0};
  }
  if (command == 3 && packet.size() == 9) {
    ++counts_.dimmed;
    if (supplied_) std::copy(packet.begin() + 1, packet.end(), lamps_.dimmed.begin());
    return {command, 0};
  }
  ++counts_.other;
  if (command == 12 && address_ < 0) return {};
  if (command == 12) return {command, static_cast<std::uint8_t>(address_)};
  if (command == 13) return {command, supplied_ ? std::uint8_t{1} : std::uint8_t{0}};
  return {};
}

void EmulatedK8061::Take(std::span<const std::uint8_t> packet) {
  if (!answers_.empty()) ++counts_.overlapped;
  Waiting answer{Obey(packet)};
  const Fault fault = fault_in_ > 0 && --fault_in_ == 0 ? fault_ : Fault::None;
  if (fault == Fault::Silent || answer.bytes.empty()) return;
  if (fault == Fault::Previous) answers_.push_back({{15, 1, 2, 3, 4, 5, 6, 7, 8}});
  if (fault == Fault::Short) answer.bytes.resize(1);
  if (fault == Fault::Late) answer.ready = std::chrono::steady_clock::now() + kTooLate;
  answers_.push_back(std::move(answer));
}

std::optional<std::vector<std::uint8_t>> EmulatedK8061::Give() {
  if (answers_.empty() || answers_.front().ready > std::chrono::steady_clock::now()) return std::nullopt;
  Bytes bytes = std::move(answers_.front().bytes);
  answers_.pop_front();
  return bytes;
}

}  // namespace platform::usb::testing
