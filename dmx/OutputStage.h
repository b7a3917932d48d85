// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "dmx/ports/DmxInterface.h"
#include "dmx/show.h"

namespace dmx {

/// What grand master, blackout and flash guard may do to a channel.
struct OutputRule {
  enum class Role : std::uint8_t {
    Other,        ///< stays as it is: movement, gobo, wheel
    Light,        ///< follows the master, and goes dark in a blackout
    Shutter,      ///< closes in a blackout
    LoneShutter,  ///< closes when the master is at the bottom as well
  } role = Role::Light;
  DmxLevel closed = 0;  ///< the level that is dark
  /// Levels that flash, and the level that takes their place.
  struct Flash {
    DmxLevel first = 0;
    DmxLevel last = 0;
    DmxLevel instead = 0;
  };
  std::vector<Flash> flashes;
};

/// A rule for every channel; those that no fixture has are lights.
using OutputRules = std::array<OutputRule, kUniverseChannels>;

/// The master of a fixture lies on its dimmers; without one on its colours, without those on its shutter.
/// Such a shutter follows it only where no preset lies: else it would run through them.
[[nodiscard]] OutputRules RulesFor(const DMXname& fixtures);

/// Stands between all that move faders and the interface: grand master, blackout and flash guard.
///
/// Law: with the master at full, no blackout and the guard lifted, every call is passed on as it is. Levels
/// that come while the interface is not started are dropped. Threads: one at a time.
class OutputStage final : public DmxInterface {
 public:
  explicit OutputStage(DmxInterface& wire);

  void StartDevice() override;
  void SetChannelCount(int count) override;
  void SetData(int channel, DmxLevel level) override;
  void StopDevice() override;
  [[nodiscard]] DmxInterfaceStatus Status() const override { return wire_.Status(); }

  static constexpr int kFullMaster = 255;
  /// 0 to kFullMaster.
  void SetGrandMaster(int master);
  enum class Blackout { Off, On };
  void SetBlackout(Blackout blackout);
  /// Dark as well, for as long as somebody holds a button; the blackout itself stays as it is.
  void SetHeldDark(Blackout held);
  enum class FlashGuard { Lifted, On };
  /// On until it is lifted.
  void SetFlashGuard(FlashGuard guard);
  void SetRules(OutputRules rules);

  [[nodiscard]] int GrandMaster() const { return master_; }
  [[nodiscard]] Blackout IsBlackout() const { return blackout_; }
  [[nodiscard]] FlashGuard Guard() const { return guard_; }
  /// What went to the interface last.
  [[nodiscard]] const std::array<DmxLevel, kUniverseChannels>& OnTheWire() const { return on_wire_; }

 private:
  [[nodiscard]] DmxLevel Shaped(std::size_t place) const;
  [[nodiscard]] DmxLevel Guarded(const OutputRule& rule, DmxLevel level) const;
  /// Sends what a change of the controls changes.
  void Refresh();

  DmxInterface& wire_;
  OutputRules rules_{};
  std::array<DmxLevel, kUniverseChannels> sent_to_us_{};
  std::array<DmxLevel, kUniverseChannels> on_wire_{};
  int master_ = kFullMaster;
  Blackout blackout_ = Blackout::Off;
  Blackout held_dark_ = Blackout::Off;
  FlashGuard guard_ = FlashGuard::On;
  bool started_ = false;
};

}  // namespace dmx
