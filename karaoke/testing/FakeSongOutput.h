// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "karaoke/ports/SongOutput.h"

namespace karaoke::testing {

/// Plays at once and as far as it is told; it can refuse to load.
class FakeSongOutput final : public SongOutput {
 public:
  support::Result<void> Load(std::shared_ptr<support::SoundGenerator> sound) override {
    if (refuses) return support::Error{support::ErrorCode::Unavailable, "The sound output is not open."};
    loaded = std::move(sound);
    frame = 0;
    loaded->Voice(0).Begin(0);
    return {};
  }
  void Unload() override {
    loaded.reset();
    playing = false;
  }
  void Play() override { playing = true; }
  void Pause() override { playing = false; }
  void Seek(std::int64_t to) override {
    frame = to;
    loaded->Voice(0).Begin(to);
  }
  void SetSpeed(double factor) override { speed = factor; }
  void SetVolume(float value) override { volume = value; }
  [[nodiscard]] std::int64_t HeardFrame() override { return frame; }
  [[nodiscard]] bool IsPlaying() override { return playing && frame < loaded->Length(); }

  void Advance(double seconds) {
    if (playing) frame += static_cast<std::int64_t>(seconds * speed * loaded->SampleRate());
  }

  std::shared_ptr<support::SoundGenerator> loaded;
  std::int64_t frame = 0;
  double speed = 1;
  float volume = -1;
  bool playing = false;
  bool refuses = false;
};

}  // namespace karaoke::testing
