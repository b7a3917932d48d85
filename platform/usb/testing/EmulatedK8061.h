// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

#include "platform/usb/testing/EmulatedDevice.h"

namespace platform::usb::testing {

/// A K8061 at an emulated bus.
class EmulatedK8061 final : public EmulatedDevice {
 public:
  /// What its lamps show, as the board itself knows it.
  struct Lamps {
    std::uint8_t switched = 0xA5;  ///< something, at first, that nobody asked for
    std::array<std::uint8_t, 8> dimmed{9, 9, 9, 9, 9, 9, 9, 9};
    bool operator==(const Lamps&) const = default;
  };
  /// How the board counts what it is told.
  struct Counts {
    int switched = 0;
    int dimmed = 0;
    int other = 0;
    int overlapped = 0;  ///< that came while an answer was still unread
  };
  enum class Fault {
    None,
    Late,      ///< the answer comes when nobody waits for it any more
    Previous,  ///< the answer to another command stands before it
    Short,     ///< the answer is cut off
    Silent,    ///< there is none
  };

  /// number: of the device at the bus, from 2. address: as the jumpers are set.
  EmulatedK8061(EmulatedBus& bus, int number, int address) : EmulatedDevice(bus, number), address_(address) {}
  ~EmulatedK8061() override { Unplug(); }

  /// Some boards bear their address in their number.
  void Plug(int product = 0x8061) { PlugIn({product, false, 64}); }
  /// Below 0: it does not tell.
  void SetAddress(int address);
  /// Its own supply; without it the lamps are dark and stay so.
  void SwitchSupply(bool on);
  /// Of the answer to the nth command from now on.
  void FailAnswer(Fault fault, int n = 1);
  /// An answer that an earlier program did not read.
  void LeaveAnswer(std::vector<std::uint8_t> answer);

  /// False when it does not come to that within five seconds.
  [[nodiscard]] bool Shows(const Lamps& lamps);
  [[nodiscard]] bool WaitUntil(const std::function<bool(const Lamps&, const Counts&)>& condition);
  [[nodiscard]] Counts TakeCounts();

 protected:
  void Reset() override DJ_REQUIRES(mutex_);
  void Take(std::span<const std::uint8_t> packet) override DJ_REQUIRES(mutex_);
  std::optional<std::vector<std::uint8_t>> Give() override DJ_REQUIRES(mutex_);

 private:
  using Bytes = std::vector<std::uint8_t>;
  struct Waiting {
    Bytes bytes;
    std::chrono::steady_clock::time_point ready{};
  };
  [[nodiscard]] Bytes Obey(std::span<const std::uint8_t> packet) DJ_REQUIRES(mutex_);

  int address_ DJ_GUARDED_BY(mutex_);
  bool supplied_ DJ_GUARDED_BY(mutex_) = true;
  Lamps lamps_ DJ_GUARDED_BY(mutex_);
  Counts counts_ DJ_GUARDED_BY(mutex_);
  std::deque<Waiting> answers_ DJ_GUARDED_BY(mutex_);
  Fault fault_ DJ_GUARDED_BY(mutex_) = Fault::None;
  int fault_in_ DJ_GUARDED_BY(mutex_) = 0;
};

}  // namespace platform::usb::testing
