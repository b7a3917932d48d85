// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include "support/Result.h"
#include "support/ports/SoundGenerator.h"

namespace karaoke {

/// Where a song sounds: one place among the players of the sound engine.
/// Threads: one. Law: nothing blocks.
class SongOutput {
 public:
  virtual ~SongOutput() = default;
  /// Stands at the start then, silent; what was loaded before is gone.
  virtual support::Result<void> Load(std::shared_ptr<support::SoundGenerator> sound) = 0;
  virtual void Unload() = 0;
  virtual void Play() = 0;
  /// Play goes on where it stopped.
  virtual void Pause() = 0;
  /// Requires: 0 <= frame < the sound's length.
  virtual void Seek(std::int64_t frame) = 0;
  virtual void SetSpeed(double factor) = 0;
  /// 0 to 1.
  virtual void SetVolume(float volume) = 0;
  /// The song's frame at the loudspeaker now.
  [[nodiscard]] virtual std::int64_t HeardFrame() = 0;
  /// False also once its end was heard.
  [[nodiscard]] virtual bool IsPlaying() = 0;
};

}  // namespace karaoke
