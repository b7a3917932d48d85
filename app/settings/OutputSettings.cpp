// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/settings/OutputSettings.h"

#include <algorithm>

#include "decks/ports/AudioEngine.h"

namespace app {

using support::Sentence;

namespace {

bool IsPair(int speaker) {
  return speaker >= 1 && speaker <= 4;
}

std::string Numbered(std::string_view word, int output) {
  return std::string(word) + std::to_string(output);
}

int DeviceNamed(std::span<const std::string> names, std::string_view name) {
  const auto found = std::find(names.begin(), names.end(), name);
  return found == names.end() ? 0 : static_cast<int>(found - names.begin()) + 1;
}

OutputView StoredPlace(const support::Settings& settings, int output, std::span<const std::string> names,
                       support::Saying& notice) {
  OutputView place;
  place.device = std::clamp(settings.Number("Devices", Numbered("Device", output)), 0, 32767);
  if (settings.Flag("Speakerchoice", Numbered("Speaker", output))) {
    place.speaker = settings.Number("Speakers", Numbered("Speaker", output));
  }
  const std::string name = settings.Text("Devices", Numbered("DeviceName", output));
  if (place.device == 0 || name.empty()) return place;
  place.device = DeviceNamed(names, name);
  if (place.device != 0) return place;
  notice = {Sentence::OutputNotConnected, {name}};
  return output == kPrelistenOutput ? OutputView{} : OutputView{1, 0};
}

}  // namespace

OutputWish WishFor(OutputView place, std::span<const std::string> device_names,
                   const support::Sentences& say) {
  OutputWish wish;
  wish.place = place;
  wish.flags = IsPair(place.speaker) ? decks::kInitSpeakers : 0;
  const auto index = static_cast<std::size_t>(place.device) - 1;
  if (place.device == 0) {
    wish.name = say(Sentence::NoSound);
  } else if (index < device_names.size()) {
    wish.name = device_names[index];
  }
  return wish;
}

bool HasSecondOutput(const support::Settings& settings) {
  return settings.Number("Preferences", "Outputs") == 2;
}

void ShareFirstOutput(support::Settings& settings) {
  settings.SetNumber("Preferences", "Outputs", 1);
}

int DeckOnHeadphones(const std::array<OutputView, kOutputs>& outputs) {
  const OutputView& phones = outputs[kPrelistenOutput - 1];
  if (phones.device == 0) return 0;
  for (int deck = 1; deck < kPrelistenOutput; ++deck) {
    const OutputView& main = outputs[static_cast<std::size_t>(deck - 1)];
    const bool all = !IsPair(phones.speaker) || !IsPair(main.speaker);
    if (main.device == phones.device && (all || main.speaker == phones.speaker)) return deck;
  }
  return 0;
}

OutputsAtStart ReadOutputs(const support::Settings& settings, std::span<const std::string> device_names,
                           const support::Sentences& say) {
  OutputsAtStart outputs;
  const bool two = HasSecondOutput(settings);
  for (int output = 1; output <= kOutputs; ++output) {
    OutputWish& wish = outputs.wishes[static_cast<std::size_t>(output - 1)];
    wish = output == 2 && !two
               ? outputs.wishes[0]
               : WishFor(StoredPlace(settings, output, device_names, outputs.notice), device_names, say);
  }
  return outputs;
}

void StoreOutput(support::Settings& settings, int output, OutputView place,
                 std::span<const std::string> device_names) {
  const auto index = static_cast<std::size_t>(place.device) - 1;
  settings.SetNumber("Devices", Numbered("Device", output), place.device);
  settings.SetText("Devices", Numbered("DeviceName", output),
                   index < device_names.size() ? device_names[index] : std::string());
  settings.SetFlag("Speakerchoice", Numbered("Speaker", output), IsPair(place.speaker));
  if (IsPair(place.speaker)) settings.SetNumber("Speakers", Numbered("Speaker", output), place.speaker);
  if (output == 2) settings.SetNumber("Preferences", "Outputs", 2);
}

}  // namespace app
