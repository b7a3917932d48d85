// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace support {

/// One run through generated sound, from one place on without a jump.
/// Threads: one at a time; no heap once it sounds, as far as a library allows.
class GeneratorVoice {
 public:
  virtual ~GeneratorVoice() = default;
  /// The next frame made is that one, at speed 1; what should sound there already sounds.
  virtual void Begin(std::int64_t frame) = 0;
  /// Source frames for every frame made, from the next one on.
  virtual void SetSpeed(double speed) = 0;
  /// Fills both, which are of one size. Beyond the end it is what still rings.
  virtual void Make(std::span<float> left, std::span<float> right) = 0;
};

/// Sound that is made while it plays, by a synthesiser for example, instead of being read from a file.
///
/// It has two voices, so that a new place can be prepared while the old one is still heard.
class SoundGenerator {
 public:
  static constexpr std::size_t kVoices = 2;

  virtual ~SoundGenerator() = default;
  /// Of what is made, in Hz.
  [[nodiscard]] virtual int SampleRate() const noexcept = 0;
  /// In frames at speed 1.
  [[nodiscard]] virtual std::int64_t Length() const noexcept = 0;
  /// Requires: number < kVoices.
  [[nodiscard]] virtual GeneratorVoice& Voice(std::size_t number) noexcept = 0;
};

}  // namespace support
