// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/recording/RecordingChoice.h"

#include <algorithm>
#include <array>

#include "support/Text.h"

namespace app {
namespace {

constexpr const char* kSection = "Recording";
constexpr std::array<std::string_view, 5> kExtensions{"flac", "wav", "ogg", "opus", "mp3"};

}  // namespace

std::string_view ExtensionOf(RecordingFormat format) {
  return kExtensions[static_cast<std::size_t>(format)];
}

std::int64_t BytesASecond(const RecordingChoice& choice) {
  constexpr std::int64_t kSamplesASecond = 2 * 44'100;
  const std::int64_t whole = kSamplesASecond * choice.bits / 8;
  if (choice.format == RecordingFormat::Wav) return whole;
  // Loud music, as it leaves a limiter, saves a quarter and less.
  if (choice.format == RecordingFormat::Flac) return whole * 4 / 5;
  return choice.bit_rate * 1000 / 8;
}

RecordingChoice StoredRecordingChoice(const support::Settings& settings) {
  RecordingChoice choice;
  const std::string format = settings.Text(kSection, "Format");
  for (std::size_t i = 0; i < kExtensions.size(); ++i) {
    if (support::EqualsIgnoringCase(format, kExtensions[i])) choice.format = static_cast<RecordingFormat>(i);
  }
  choice.bits = settings.Number(kSection, "Bits") == 24 ? 24 : 16;
  choice.bit_rate = settings.Number(kSection, "BitRate", 96, 320);
  choice.files =
      settings.Flag(kSection, "FileATrack") ? RecordingChoice::Files::OneEach : RecordingChoice::Files::One;
  choice.folder = settings.Text(kSection, "Folder");
  choice.name = settings.Text(kSection, "Name");
  return choice;
}

void StoreRecordingChoice(support::Settings& settings, const RecordingChoice& choice) {
  settings.SetText(kSection, "Format", ExtensionOf(choice.format));
  settings.SetNumber(kSection, "Bits", choice.bits);
  settings.SetNumber(kSection, "BitRate", choice.bit_rate);
  settings.SetFlag(kSection, "FileATrack", choice.files == RecordingChoice::Files::OneEach);
  // The one below the program folder moves with it while no other is chosen.
  if (choice.folder != settings.Text(kSection, "Folder")) settings.SetText(kSection, "Folder", choice.folder);
  settings.SetText(kSection, "Name", choice.name);
}

}  // namespace app
