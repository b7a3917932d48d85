// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "decks/ports/Microphone.h"
#include "engine/CaptureRing.h"
#include "engine/DeviceTable.h"
#include "engine/MicrophoneInlet.h"
#include "engine/ports/InputDevice.h"
#include "support/Clock.h"
#include "support/Executor.h"
#include "support/Mutex.h"

namespace engine {

/// The microphone: one input, whose voice goes to every output that the hall hears.
///
/// A worker opens and closes the input, and looks for one that went away once a second; another one, which
/// might howl, does not take its place. While the voice is
/// heard, the outputs hold 10 ms instead of what they were opened with; one that is not given its sound in
/// time holds 5 ms more each time. Afterwards they fill up again 5 ms at a time, so that no stream runs dry.
/// Threads: as the port says; Close by any. Owned by shared_ptr, because the worker's job may outlive its
/// owner.
class HallMicrophone final : public decks::Microphone, public std::enable_shared_from_this<HallMicrophone> {
 public:
  HallMicrophone(InputDevices& inputs, std::shared_ptr<DeviceTable> outputs, support::Executor& workers,
                 const support::Clock& clock);

  void Ask(const decks::MicrophoneWish& wish) override DJ_EXCLUDES(mutex_);
  void LookForInputs() override DJ_EXCLUDES(mutex_);
  void Watch() override DJ_EXCLUDES(mutex_);
  [[nodiscard]] decks::MicrophoneState Now() override DJ_EXCLUDES(mutex_);

  /// Nothing is asked for any more; returns when nothing is recorded.
  void Close() DJ_EXCLUDES(opening_, mutex_);

 private:
  using Inputs = std::vector<InputDeviceInfo>;

  /// A device on which the voice is heard, or was and is not back to its own buffer yet.
  struct Hall {
    int device = 0;
    std::shared_ptr<DeviceSlot> slot;  // with the table
    unsigned pairs = 0;                ///< 0: no more
    std::uint64_t asked = 0;           ///< the wish that it was told last
    bool swift = false;
    int buffer_ms = 0;
    std::uint64_t gaps = 0;
    support::TimePoint stepped{};
  };

  [[nodiscard]] bool Wanted() const DJ_REQUIRES(mutex_) { return wish_.on || wish_.talk_over || wish_.check; }
  [[nodiscard]] bool Heard() const DJ_REQUIRES(mutex_) { return wish_.on || wish_.talk_over; }
  void FollowHalls() DJ_REQUIRES(mutex_);
  void Tell(Hall& hall) DJ_REQUIRES(mutex_);
  void FitBuffer(Hall& hall) DJ_REQUIRES(mutex_);
  void WatchInput() DJ_REQUIRES(mutex_);
  void Report() DJ_REQUIRES(mutex_);
  void MeasureLatency(const Hall& hall) DJ_REQUIRES(mutex_);

  // The worker's.
  void Settle() DJ_EXCLUDES(opening_, mutex_);
  void SettleOn(const std::string& wanted) DJ_REQUIRES(opening_) DJ_EXCLUDES(mutex_);
  [[nodiscard]] support::Result<InputDeviceInfo> Choose(const Inputs& listed, const std::string& wanted)
      DJ_EXCLUDES(mutex_);
  [[nodiscard]] bool Loops(const InputDeviceInfo& info);
  void Publish(const Inputs& listed) DJ_EXCLUDES(mutex_);
  void Open(const InputDeviceInfo& info) DJ_REQUIRES(opening_) DJ_EXCLUDES(mutex_);
  void CloseInput() DJ_REQUIRES(opening_) DJ_EXCLUDES(mutex_);
  void Trouble(support::Saying saying) DJ_EXCLUDES(mutex_);

  InputDevices& inputs_;
  const std::shared_ptr<DeviceTable> outputs_;  // with the engine
  support::Executor& workers_;
  const support::Clock& clock_;
  const std::shared_ptr<CaptureRing> ring_;           // with the outputs' callbacks
  const std::shared_ptr<std::atomic<bool>> changed_;  // with the sound system's notice, which may come late
  MicrophoneInlet inlet_;
  support::Mutex opening_;  ///< one call of the sound system at a time; taken before mutex_
  support::Mutex mutex_;
  decks::MicrophoneWish wish_ DJ_GUARDED_BY(mutex_);
  std::uint64_t asked_ DJ_GUARDED_BY(mutex_) = 0;  ///< counts the wishes
  std::vector<Hall> halls_ DJ_GUARDED_BY(mutex_);
  InputDeviceInfo opened_ DJ_GUARDED_BY(mutex_);  ///< what input_ is
  std::string settled_ DJ_GUARDED_BY(mutex_);     ///< the wished id that this came of
  bool settling_ DJ_GUARDED_BY(mutex_) = false;
  bool look_ DJ_GUARDED_BY(mutex_) = false;
  bool closed_ DJ_GUARDED_BY(mutex_) = false;
  support::TimePoint next_try_ DJ_GUARDED_BY(mutex_){};
  std::string held_ DJ_GUARDED_BY(mutex_);  ///< the default as it was when the microphone was switched on
  std::uint64_t gaps_ DJ_GUARDED_BY(mutex_) = 0;         ///< of all inputs
  std::uint64_t gaps_before_ DJ_GUARDED_BY(mutex_) = 0;  ///< of those before this one
  decks::MicrophoneState state_ DJ_GUARDED_BY(mutex_);
  std::unique_ptr<InputDevice> input_ DJ_GUARDED_BY(mutex_);  // last: it records into the above
};

}  // namespace engine
