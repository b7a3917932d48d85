// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "karaoke/EventSequencer.h"

namespace karaoke {

/// A song ready to sound, with a synthesiser for each of its two voices.
class SongSound final : public support::SoundGenerator {
 public:
  /// bytes: of the MIDI file; sung: its words. Blocks on the soundfont's file: workers only.
  [[nodiscard]] static support::Result<std::shared_ptr<SongSound>> Open(std::string_view bytes,
                                                                        const std::vector<Syllable>& sung,
                                                                        SynthesiserFactory& synthesisers,
                                                                        const std::string& soundfont,
                                                                        int sample_rate);

  [[nodiscard]] int SampleRate() const noexcept override { return sample_rate_; }
  [[nodiscard]] std::int64_t Length() const noexcept override;
  [[nodiscard]] support::GeneratorVoice& Voice(std::size_t number) noexcept override {
    return *voices_[number];
  }
  [[nodiscard]] SingerWishes& Wishes() noexcept { return *wishes_; }
  [[nodiscard]] const SongEvents& Events() const noexcept { return *events_; }
  [[nodiscard]] bool HasMelody() const noexcept { return has_melody_; }

 private:
  SongSound(std::shared_ptr<const SongEvents> events, int sample_rate)
      : events_(std::move(events)), sample_rate_(sample_rate), wishes_(std::make_shared<SingerWishes>()) {}

  const std::shared_ptr<const SongEvents> events_;  // with the voices
  const int sample_rate_;
  const std::shared_ptr<SingerWishes> wishes_;  // with the voices
  bool has_melody_ = false;
  std::array<std::unique_ptr<EventSequencer>, kVoices> voices_;
};

}  // namespace karaoke
