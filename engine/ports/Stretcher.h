// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <span>

namespace engine {

/// Changes tempo and pitch of stereo sound independently of each other.
///
/// Used by pulling: while Available() is 0, feed at most Wanted() frames; then take. Its fill is never used
/// as a position. Threads: one at a time; no heap once the first block is out, as far as the library allows.
class Stretcher {
 public:
  virtual ~Stretcher() = default;
  /// Source frames for every output frame: 1.04 plays 4 % faster. 0.5 to 2.
  virtual void SetTempo(double ratio) = 0;
  /// -12 to 12.
  virtual void SetPitch(double semitones) = 0;
  /// Empties it, as new; tempo and pitch stay.
  virtual void Reset() = 0;
  /// Silent frames to feed before the first source frame, so that its start is whole.
  [[nodiscard]] virtual int StartPad() const = 0;
  /// Output frames to drop after Reset, at the present tempo and pitch, so that the first frame taken is the
  /// first source frame fed.
  [[nodiscard]] virtual int StartDelay() const = 0;
  [[nodiscard]] virtual int Wanted() const = 0;
  virtual void Put(std::span<const float> left, std::span<const float> right) = 0;
  [[nodiscard]] virtual int Available() const = 0;
  /// Frames written; at most the size of the spans, which are equal.
  virtual int Take(std::span<float> left, std::span<float> right) = 0;
};

/// Changes the rate of stereo sound: sample rates of files, and tempo without key lock.
/// Threads: one at a time.
class Resampler {
 public:
  virtual ~Resampler() = default;
  struct Progress {
    int used = 0;
    int made = 0;
  };
  /// Source frames for every output frame, from the next block on.
  virtual void SetRatio(double ratio) = 0;
  virtual void Reset() = 0;
  /// Output frame 0 is source frame 0: the filter's own delay is not seen, it is taken by reading ahead.
  virtual Progress Process(std::span<const float> left_in, std::span<const float> right_in,
                           std::span<float> left_out, std::span<float> right_out) = 0;
};

enum class StretchQuality { Best, LowPower };

/// Makes the two; a deck asks once a file, never in a callback.
class StretcherFactory {
 public:
  virtual ~StretcherFactory() = default;
  [[nodiscard]] virtual std::unique_ptr<Stretcher> MakeStretcher(StretchQuality quality, int sample_rate) = 0;
  [[nodiscard]] virtual std::unique_ptr<Resampler> MakeResampler(double ratio) = 0;
};

}  // namespace engine
