// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/HeadphoneStation.h"

#include <algorithm>

#include "app/DeckRack.h"
#include "app/StationContext.h"
#include "support/Settings.h"

namespace app {

HeadphoneStation::HeadphoneStation(const StationContext& context, DeckRack& rack, support::Settings& settings)
    : context_(context), rack_(rack), settings_(settings) {}

void HeadphoneStation::StartUp() {
  Send();
}

void HeadphoneStation::SetProgramme(int percent) {
  settings_.SetNumber("Mixer", "HeadphoneMix", std::clamp(percent, 0, 100));
  Send();
}

void HeadphoneStation::SetSplit(bool split) {
  settings_.SetFlag("Mixer", "HeadphoneSplit", split);
  Send();
}

void HeadphoneStation::SetLevel(int percent) {
  settings_.SetNumber("Mixer", "HeadphoneLevel", std::clamp(percent, 0, 100));
  Send();
}

void HeadphoneStation::Send() {
  const auto part = [this](const char* key) {
    return static_cast<float>(settings_.Number("Mixer", key, 0, 100)) / 100;
  };
  const decks::HeadphoneMix mix{part("HeadphoneMix"), settings_.Flag("Mixer", "HeadphoneSplit"),
                                part("HeadphoneLevel")};
  context_.conductor->Order(rack_, &DeckRack::SetHeadphones, mix);
}

}  // namespace app
