// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/dmx_output.h"

#include "support/Settings.h"

namespace dmx {

void Universe::MoveFader(int channel, DmxLevel level) {
  if (channel < 1 || channel > kUniverseChannels || Level(channel) == level) return;
  levels_[static_cast<std::size_t>(channel - 1)] = level;
  wire_.SetData(channel, level);
}

void Universe::Resend() {
  for (int channel = 1; channel <= kUniverseChannels; ++channel) {
    if (Level(channel) != 0) wire_.SetData(channel, Level(channel));
  }
}

void OutputSwitch::TurnOn() {
  settings_.SetFlag("Setup", "UseK8062", true);
  on_ = true;
  Open();
}

void OutputSwitch::TurnOff() {
  settings_.SetFlag("Setup", "UseK8062", false);
  on_ = false;
  wire_.StopDevice();
}

void OutputSwitch::Restore() {
  if (!settings_.Flag("Setup", "UseK8062")) return;
  on_ = true;
  Open();
}

void OutputSwitch::ShowEditorLoaded() {
  Open();
}

void OutputSwitch::FixtureEditorLoaded() {
  wire_.SetChannelCount(kUniverseChannels);
}

void OutputSwitch::MainWindowClosed() {
  wire_.StopDevice();
}

void OutputSwitch::Open() {
  wire_.StartDevice();
  wire_.SetChannelCount(kUniverseChannels);
}

}  // namespace dmx
