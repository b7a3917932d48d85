// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "dmx/EditHistory.h"
#include "dmx/fixture.h"

namespace dmx {

[[nodiscard]] std::size_t Weight(const Fixture& fixture);

/// A fixture while it is described; every change is a step that can be taken back.
///
/// Law: a channel or preset that is not there is not changed, and numbers are brought into their bounds.
/// Threads: one at a time.
class FixtureEdit {
 public:
  enum class Angle { Tilt, Pan, Beam };

  [[nodiscard]] const Fixture& Now() const { return history_.Now(); }
  [[nodiscard]] EditHistory<Fixture>& History() { return history_; }
  [[nodiscard]] const EditHistory<Fixture>& History() const { return history_; }
  [[nodiscard]] int AngleOf(Angle which) const;

  void SetName(std::string name);
  void SetType(FixtureType type);
  void SetAngle(Angle which, int degrees);
  /// Fewer and then more again, while nothing else is changed, brings back what the channels were.
  void SetChannels(int count);
  void SetFunction(int channel, ChannelFunction function);
  void SetLabel(int channel, std::string label);
  /// At the end of the channel's list.
  void AddPreset(int channel, presets preset);
  void SetPreset(int channel, int position, presets preset);
  void RemovePreset(int channel, int position);
  void MovePreset(int channel, int from, int to);

 private:
  void ChangeChannel(int channel, std::string_view thing, const std::function<void(FixtureChannel&)>& change);

  EditHistory<Fixture> history_;
};

}  // namespace dmx
