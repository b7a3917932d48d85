// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "decks/ports/SoundControl.h"
#include "engine/DeviceSlot.h"
#include "support/Executor.h"
#include "support/Mutex.h"

namespace engine {

/// Makes the output that keeps time without sound; the info tells its channels.
using SilentOutputMaker = std::function<std::unique_ptr<OutputDevice>(const OutputDeviceInfo&,
                                                                      const OutputRequest&, RenderSource&)>;

/// The pair code of a speaker flag; 0 is every pair.
[[nodiscard]] constexpr int PairOf(std::uint32_t speaker) {
  return static_cast<int>((speaker & decks::kSpeakerMask) >> 24);
}

/// The outputs by number, and what happens when one goes away.
///
/// A lost output is replaced by a silent one at the next Watch. A worker then looks for a working one: for a
/// main device whatever the system has, except what serves as head-phones; for head-phones the same one only.
/// A main device stays with its stand-in until Return, because a move while music plays is the user's to
/// make. What the user moves with means of the system's is told as Moved; a moment later, when its streams
/// have gone there, the device is put back to its own output. Threads: any but a callback. Open and the
/// worker wait for the sound system, the rest does not. Owned by shared_ptr, because the worker's job may
/// outlive its owner.
class DeviceTable final : public std::enable_shared_from_this<DeviceTable> {
 public:
  DeviceTable(OutputDevices& outputs, SilentOutputMaker make_silent, support::Executor& workers,
              const support::Clock& clock);

  /// Asks the system what there is; once before everything else.
  void Start() DJ_EXCLUDES(opening_, mutex_);
  bool Open(int number, OutputRequest request) DJ_EXCLUDES(opening_, mutex_);
  [[nodiscard]] std::optional<std::string> Description(int number) DJ_EXCLUDES(mutex_);
  /// Null when it is not open.
  [[nodiscard]] std::shared_ptr<DeviceSlot> Find(int number) DJ_EXCLUDES(mutex_);
  [[nodiscard]] std::vector<std::shared_ptr<DeviceSlot>> All() DJ_EXCLUDES(mutex_);
  void SetRole(int number, decks::DeviceRole role) DJ_EXCLUDES(mutex_);
  /// A worker moves a main device from its stand-in back to its own output.
  void Return(int number) DJ_EXCLUDES(mutex_);
  void SetStretch(decks::Stretch choice) DJ_EXCLUDES(mutex_);
  /// Head-phones make do with the stretcher that costs least.
  [[nodiscard]] StretchQuality Quality(int number) DJ_EXCLUDES(mutex_);
  void Watch() DJ_EXCLUDES(mutex_);
  [[nodiscard]] std::vector<decks::DeviceEvent> TakeEvents() DJ_EXCLUDES(mutex_);
  /// Returns when nothing renders any more.
  void CloseAll() DJ_EXCLUDES(opening_, mutex_);

 private:
  /// A slot that plays into nothing, and the outputs that may take it over, the best first.
  struct Homeless {
    std::shared_ptr<DeviceSlot> slot;
    std::vector<OutputDeviceInfo> candidates;
  };

  /// What plays elsewhere because its own output went away.
  struct StandIn {
    bool can_return = false;
    bool own_stayed = false;  ///< in the list, but it took no sound
  };

  [[nodiscard]] decks::DeviceRole RoleOf(int number) const DJ_REQUIRES(mutex_);
  void TakeIn(const std::vector<OutputDeviceInfo>& listed) DJ_REQUIRES(mutex_);
  void Silence(const std::shared_ptr<DeviceSlot>& slot) DJ_REQUIRES(mutex_);
  void FindHomes() DJ_EXCLUDES(opening_, mutex_);
  [[nodiscard]] std::vector<Homeless> ListHomeless(const std::vector<OutputDeviceInfo>& listed)
      DJ_EXCLUDES(mutex_);
  void TellReturns(const std::vector<OutputDeviceInfo>& listed) DJ_EXCLUDES(mutex_);
  void MoveBack(int number) DJ_EXCLUDES(opening_, mutex_);
  /// The user put a device's sound onto another output.
  void FollowHand(const std::shared_ptr<DeviceSlot>& slot) DJ_REQUIRES(mutex_);
  void Settle(int number) DJ_EXCLUDES(opening_, mutex_);
  void FindHome(const Homeless& homeless) DJ_REQUIRES(opening_) DJ_EXCLUDES(mutex_);
  [[nodiscard]] std::unique_ptr<OutputPlug> OpenPlug(int number, const OutputDeviceInfo& info,
                                                     OutputRequest request) DJ_REQUIRES(opening_)
      DJ_EXCLUDES(mutex_);
  [[nodiscard]] std::unique_ptr<OutputPlug> SilentPlug(const DeviceSlot& slot) const;

  OutputDevices& outputs_;
  const SilentOutputMaker make_silent_;
  support::Executor& workers_;
  const support::Clock& clock_;
  const std::shared_ptr<std::atomic<bool>> changed_;  // with the sound system's notice, which may come late
  support::Mutex opening_;  ///< one call of the sound system at a time; taken before mutex_
  support::Mutex mutex_;
  std::vector<OutputDeviceInfo> known_ DJ_GUARDED_BY(mutex_);               ///< number n is known_[n - 1]
  std::map<int, std::shared_ptr<DeviceSlot>> slots_ DJ_GUARDED_BY(mutex_);  // with the feeder's pass
  std::set<int> homeless_ DJ_GUARDED_BY(mutex_);
  std::map<int, StandIn> moved_ DJ_GUARDED_BY(mutex_);
  std::map<int, support::TimePoint> strayed_ DJ_GUARDED_BY(mutex_);  ///< by hand, and when they are put back
  std::map<int, decks::DeviceRole> roles_ DJ_GUARDED_BY(mutex_);
  StretchQuality main_quality_ DJ_GUARDED_BY(mutex_) = StretchQuality::Best;
  std::vector<decks::DeviceEvent> events_ DJ_GUARDED_BY(mutex_);
  bool searching_ DJ_GUARDED_BY(mutex_) = false;
  support::TimePoint next_search_ DJ_GUARDED_BY(mutex_){};
};

}  // namespace engine
