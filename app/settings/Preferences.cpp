// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/settings/Preferences.h"

#include <algorithm>

#include "support/Text.h"
#include "support/ports/SettingsStore.h"

namespace app {
namespace {

std::string ColourKey(int channel) {
  return "Color" + std::to_string(channel);
}

StoredSection ReadSection(const support::Settings& settings, std::string_view section) {
  StoredSection values;
  for (const support::SettingKey& key : support::SettingsVocabulary()) {
    if (key.section != section) continue;
    values.emplace_back(key.key, settings.Text(section, key.key));
  }
  return values;
}

Preferences::Automix ReadAutomix(const support::Settings& settings) {
  Preferences::Automix automix;
  automix.on = settings.Flag("Settings", "Automix");
  automix.match_tempo = settings.Flag("Settings", "AutoBPM");
  automix.match_gain = settings.Flag("Settings", "AutoGain");
  automix.at_mix_points = settings.Flag("Settings", "MixPoints");
  return automix;
}

}  // namespace

std::string_view ValueOf(const StoredSection& section, std::string_view key) {
  const auto found =
      std::find_if(section.begin(), section.end(), [key](const auto& pair) { return pair.first == key; });
  return found == section.end() ? std::string_view() : std::string_view(found->second);
}

Preferences ReadPreferences(const support::Settings& settings) {
  Preferences all;
  all.mix_time = settings.Number("Mixer", "MixTime");
  all.automix = ReadAutomix(settings);
  all.bpm_percent = settings.Number("Settings", "BPMPercent");
  all.gain_percent = settings.Number("Settings", "GainPercent");
  all.decks[0].effects = ReadSection(settings, "Player1");
  all.decks[0].equaliser = ReadSection(settings, "Eq1");
  all.decks[1].effects = ReadSection(settings, "Player2");
  all.decks[1].equaliser = ReadSection(settings, "Eq2");
  return all;
}

int ConsoleChannels(const support::Settings& settings) {
  return settings.Number("Setup", "ConsoleSize") == 16 ? 16 : 32;
}

std::vector<StoredColour> ReadColours(const support::Settings& settings) {
  constexpr int kWhite = 0xFFFFFF;
  std::vector<StoredColour> colours;
  const int channels = ConsoleChannels(settings);
  for (int channel = 1; channel <= channels; ++channel) {
    colours.push_back(static_cast<StoredColour>(settings.Number("Channels", ColourKey(channel), 0, kWhite)));
  }
  return colours;
}

void StoreColours(support::Settings& settings, std::span<const StoredColour> colours) {
  const auto channels = static_cast<std::size_t>(ConsoleChannels(settings));
  int channel = 0;
  for (const StoredColour colour : colours.first(std::min(channels, colours.size()))) {
    settings.SetNumber("Channels", ColourKey(++channel), static_cast<int>(colour & 0xFFFFFF));
  }
}

}  // namespace app
