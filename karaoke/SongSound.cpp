// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/SongSound.h"

#include <utility>

namespace karaoke {

support::Result<std::shared_ptr<SongSound>> SongSound::Open(std::string_view bytes,
                                                            const std::vector<Syllable>& sung,
                                                            SynthesiserFactory& synthesisers,
                                                            const std::string& soundfont, int sample_rate) {
  auto events = ReadSongEvents(bytes);
  if (!events) return events.Failure();
  const auto shared = std::make_shared<const SongEvents>(std::move(events).Value());
  const auto melody = FindMelodyChannel(*shared, sung);
  const std::shared_ptr<SongSound> sound(new SongSound(shared, sample_rate));
  sound->has_melody_ = melody.has_value();
  for (auto& voice : sound->voices_) {
    auto synthesiser = synthesisers.Make(soundfont, sample_rate);
    if (!synthesiser) return synthesiser.Failure();
    voice = std::make_unique<EventSequencer>(shared, std::move(synthesiser).Value(), sound->wishes_, melody,
                                             sample_rate);
  }
  return sound;
}

std::int64_t SongSound::Length() const noexcept {
  constexpr double kRings = 2;  // seconds behind the last event
  const double seconds = std::chrono::duration<double>(events_->length).count() + kRings;
  return static_cast<std::int64_t>(seconds * sample_rate_);
}

}  // namespace karaoke
