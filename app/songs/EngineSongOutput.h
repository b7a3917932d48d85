// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "app/OutputView.h"
#include "decks/ports/AudioEngine.h"
#include "decks/ports/SoundControl.h"
#include "karaoke/ports/SongOutput.h"

namespace app {

/// Plays a song as one more stream of the sound engine.
/// Threads: the conductor. Owns: its stream.
class EngineSongOutput final : public karaoke::SongOutput {
 public:
  EngineSongOutput(decks::AudioEngine& engine, decks::SoundControl& control)
      : engine_(engine), control_(control) {}

  /// Where the next song that is loaded plays.
  void Place(OutputView place) { place_ = place; }
  [[nodiscard]] OutputView Place() const { return place_; }

  support::Result<void> Load(std::shared_ptr<support::SoundGenerator> sound) override;
  void Unload() override;
  void Play() override;
  void Pause() override;
  void Seek(std::int64_t frame) override;
  void SetSpeed(double factor) override;
  void SetVolume(float volume) override;
  [[nodiscard]] std::int64_t HeardFrame() override;
  [[nodiscard]] bool IsPlaying() override;

  [[nodiscard]] decks::HeardStream Heard() { return control_.Heard(stream_); }
  /// 0 when nothing is loaded.
  [[nodiscard]] decks::StreamHandle Stream() const { return stream_; }

 private:
  decks::AudioEngine& engine_;
  decks::SoundControl& control_;
  OutputView place_;
  decks::StreamHandle stream_ = 0;
};

}  // namespace app
