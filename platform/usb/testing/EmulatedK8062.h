// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "platform/usb/testing/EmulatedDevice.h"
#include "platform/usb/testing/K8062Decoder.h"

namespace platform::usb::testing {

/// A bus with a K8062, at which other boxes may be too.
class EmulatedK8062 final : public EmulatedBus, public EmulatedDevice {
 public:
  /// What is at the plug.
  enum class Board {
    K8062,          ///< HID, takes eight bytes
    UpgradedK8062,  ///< HID, takes 64
    K8061,          ///< bears the same number when it is set to the second address; takes 64, is no HID
  };

  EmulatedK8062() : EmulatedDevice(static_cast<EmulatedBus&>(*this), 2) {}
  ~EmulatedK8062() override { Unplug(); }

  void Plug(Board board = Board::K8062) {
    PlugIn({0x8062, board != Board::K8061, board == Board::K8062 ? 8 : 64});
  }

  /// What the box says, at any moment; false when it does not say so within five seconds.
  bool WaitUntil(const std::function<bool(const K8062Decoder&)>& condition) {
    return Comes([&]() DJ_NO_THREAD_SAFETY_ANALYSIS { return condition(box_); });
  }
  [[nodiscard]] K8062Decoder Box() {
    support::MutexLock lock(mutex_);
    return box_;
  }

 protected:
  void Reset() override DJ_REQUIRES(mutex_) { box_.Reset(); }
  void Take(std::span<const std::uint8_t> packet) override DJ_REQUIRES(mutex_) { box_.Take(packet); }

 private:
  K8062Decoder box_ DJ_GUARDED_BY(mutex_);
};

}  // namespace platform::usb::testing
