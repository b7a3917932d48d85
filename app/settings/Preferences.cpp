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

StoredSection ReadSection(const Settings& settings, std::string_view section) {
  StoredSection values;
  for (const SettingKey& key : SettingsVocabulary()) {
    if (key.application != support::kApplication || key.section != section) continue;
    values.emplace_back(key.key, settings.Text(section, key.key));
  }
  return values;
}

Preferences::Tags ReadTags(const Settings& settings) {
  Preferences::Tags tags;
  tags.file_format = settings.Number("Tags", "FileFormat");
  tags.split_character = settings.Text("Tags", "SplitCharacter");
  tags.use_artist = settings.Flag("Tags", "UseArtist");
  tags.use_split = settings.Flag("Tags", "UseSplit");
  tags.write = settings.Flag("Tags", "Write");
  return tags;
}

Preferences::Automix ReadAutomix(const Settings& settings) {
  Preferences::Automix automix;
  automix.on = settings.Flag("Settings", "Automix");
  automix.match_tempo = settings.Flag("Settings", "AutoBPM");
  automix.match_gain = settings.Flag("Settings", "AutoGain");
  automix.at_mix_points = settings.Flag("Settings", "MixPoints");
  return automix;
}

Preferences::Mixer ReadMixer(const Settings& settings) {
  Preferences::Mixer mixer;
  mixer.preview = settings.Number("Mixer", "Preview");
  mixer.left_down = settings.Number("Mixer", "MixLeftD");
  mixer.right_down = settings.Number("Mixer", "MixRightD");
  mixer.left_up = settings.Number("Mixer", "MixLeftU");
  mixer.right_up = settings.Number("Mixer", "MixRightU");
  return mixer;
}

}  // namespace

Preferences ReadPreferences(const Settings& settings) {
  Preferences all;
  all.mix_time = settings.Number("Mixer", "MixTime");
  all.rip_directory = settings.Text("Rip", "Directory");
  all.tags = ReadTags(settings);
  all.automix = ReadAutomix(settings);
  all.directory = settings.Text("Settings", "Directory");
  all.bpm_percent = settings.Number("Settings", "BPMPercent");
  all.gain_percent = settings.Number("Settings", "GainPercent");
  all.mixer = ReadMixer(settings);
  all.outputs = settings.Number("Preferences", "Outputs");
  all.use_io_boards = settings.Flag("Setup", "UseK8000");
  all.use_dmx = settings.Flag("Setup", "UseK8062");
  all.decks[0].effects = ReadSection(settings, "Player1");
  all.decks[0].equaliser = ReadSection(settings, "Eq1");
  all.decks[1].effects = ReadSection(settings, "Player2");
  all.decks[1].equaliser = ReadSection(settings, "Eq2");
  all.colours = ReadColours(settings);
  return all;
}

int ConsoleChannels(const Settings& settings) {
  return settings.Number("Setup", "ConsoleSize") == 16 ? 16 : 32;
}

std::vector<StoredColour> ReadColours(const Settings& settings) {
  constexpr int kWhite = 0xFFFFFF;
  std::vector<StoredColour> colours;
  const int channels = ConsoleChannels(settings);
  for (int channel = 1; channel <= channels; ++channel) {
    const int colour = settings.Number("Channels", ColourKey(channel));
    colours.push_back(static_cast<StoredColour>(std::clamp(colour, 0, kWhite)));
  }
  return colours;
}

void StoreColours(Settings& settings, std::span<const StoredColour> colours) {
  const auto channels = static_cast<std::size_t>(ConsoleChannels(settings));
  int channel = 0;
  for (const StoredColour colour : colours.first(std::min(channels, colours.size()))) {
    settings.SetNumber("Channels", ColourKey(++channel), static_cast<int>(colour & 0xFFFFFF));
  }
}

}  // namespace app
