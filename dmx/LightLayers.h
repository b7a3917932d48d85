// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>

#include "dmx/dmx_output.h"
#include "dmx/ports/DmxInterface.h"

namespace dmx {

using ChannelSet = std::bitset<kUniverseChannels>;

/// Who decides where a fader stands. Beneath are the show and the editors.
enum class LightOwner : std::uint8_t { Beneath, Effect, Hand, Hold };

/// What each fader is asked for, by whom, and where it therefore stands.
///
/// Law: a hold lies above all; a hand keeps its channel until it lets go; below it dimmers take the higher of
/// effect and what is beneath, all others the one that came last. Who lets go gives the channel back to what
/// goes on below, which is never lost. Threads: one at a time.
class LightLayers {
 public:
  /// The faders that stand where the layers say.
  explicit LightLayers(Universe& faders) : faders_(faders) {}

  /// Whoever moves these faders moves what lies beneath.
  [[nodiscard]] Universe& Beneath() { return beneath_; }
  [[nodiscard]] const Universe& Beneath() const { return beneath_; }

  // Channels are numbered from 1; one outside the universe is left out.
  void SetDimmers(const ChannelSet& dimmers);
  void TakeInHand(int channel, DmxLevel level) { Set(&Asked::hand, channel, level); }
  void LetGo(int channel) { Set(&Asked::hand, channel, std::nullopt); }
  void LetAllGo();
  /// An effect that has the channel already goes on without being the newest again.
  void SetEffect(int channel, std::optional<DmxLevel> level);
  /// All that run are the newest again.
  void RenewEffects();
  /// While it lasts, above all others.
  void SetHold(int channel, std::optional<DmxLevel> level) { Set(&Asked::hold, channel, level); }
  enum class Freeze { Off, On };
  /// All faders stay where they are, but for what is held; only holds still move them.
  void SetFreeze(Freeze freeze);

  /// Requires: 1 to kUniverseChannels.
  [[nodiscard]] LightOwner OwnerOf(int channel) const;
  [[nodiscard]] std::optional<DmxLevel> InHand(int channel) const { return At(channel).hand; }
  [[nodiscard]] bool IsFrozen() const { return frozen_.has_value(); }

 private:
  struct Asked {
    std::optional<DmxLevel> hold;
    std::optional<DmxLevel> hand;
    std::optional<DmxLevel> effect;
    bool effect_came_last = false;
  };
  /// Brings the show's and the editors' levels in.
  class FromBeneath final : public DmxInterface {
   public:
    explicit FromBeneath(LightLayers& layers) : layers_(layers) {}
    void StartDevice() override {}
    void SetChannelCount(int /*count*/) override {}
    void SetData(int channel, DmxLevel level) override;
    void StopDevice() override {}

   private:
    LightLayers& layers_;
  };

  void Set(std::optional<DmxLevel> Asked::*who, int channel, std::optional<DmxLevel> level);
  [[nodiscard]] DmxLevel Merged(int channel) const;
  [[nodiscard]] DmxLevel BelowHold(int channel) const;
  void Move(int channel) { faders_.MoveFader(channel, Merged(channel)); }
  [[nodiscard]] const Asked& At(int channel) const { return asked_[static_cast<std::size_t>(channel - 1)]; }
  [[nodiscard]] Asked& At(int channel) { return asked_[static_cast<std::size_t>(channel - 1)]; }
  [[nodiscard]] bool EffectLeads(int channel) const;

  Universe& faders_;
  FromBeneath from_beneath_{*this};
  Universe beneath_{from_beneath_};
  ChannelSet dimmers_;
  std::array<Asked, kUniverseChannels> asked_{};
  std::optional<std::array<DmxLevel, kUniverseChannels>> frozen_;
};

}  // namespace dmx
