// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "engine/RampedValue.h"
#include "engine/Stream.h"

namespace engine {

/// Raised cosine from 0 to 1; as many steps as a fade of 5 ms has frames at the device's rate.
class FadeCurve {
 public:
  explicit FadeCurve(int sample_rate);
  [[nodiscard]] int Frames() const noexcept { return frames_; }
  /// Requires: 0 <= step <= Frames().
  [[nodiscard]] float At(int step) const noexcept { return curve_[static_cast<std::size_t>(step)]; }

 private:
  int frames_;
  std::vector<float> curve_;
};

/// The callback's side of one stream: takes from the lanes, fades, ramps, measures and logs.
///
/// Threads: the callback only. Law: whatever starts, stops or moves does so over 5 ms; five milliseconds of
/// every unfinished lane stay in reserve, so that there is something to fade when the feeder is late.
class Voice {
 public:
  void Begin(Stream& stream, const FadeCurve& curve) noexcept;
  void End() noexcept { stream_ = nullptr; }
  [[nodiscard]] Stream* Of() const noexcept { return stream_; }

  /// What was asked since the last block; false when the stream was freed and has faded out.
  [[nodiscard]] bool TakeRequests() noexcept;
  void Start() noexcept;
  void Pause() noexcept { wanted_ = false; }
  /// volume: 0 to 1.
  void Ramp(float volume, int frames) noexcept;

  /// Fills the whole span with the stream's sound before volume; false when that is silence. What rings on
  /// when the stream is silent has no place in the file, and is not logged.
  /// frame: engine frame of the first one.
  bool Render(std::span<float> stereo, std::int64_t frame) noexcept;
  /// Volume, gain and pan over what Render gave.
  void ApplyGain(std::span<float> stereo) noexcept;
  /// Says to the others what it does now.
  void Publish() noexcept;
  /// Samples silenced since the last call, because an effect made no numbers of them.
  [[nodiscard]] std::uint64_t TakeBad() noexcept { return std::exchange(bad_, 0); }
  /// Times the ring ran dry since the last call.
  [[nodiscard]] int TakeLate() noexcept { return std::exchange(late_, 0); }

 private:
  static constexpr int kRunFrames = kLaneBlockFrames;

  [[nodiscard]] Lane& LaneOf(int number) noexcept { return stream_->lanes[static_cast<std::size_t>(number)]; }
  [[nodiscard]] int Other() const noexcept { return active_ == 0 ? 1 : 0; }
  [[nodiscard]] bool Enough(int frames) noexcept;
  void LookForLane(std::int64_t frame) noexcept;
  [[nodiscard]] bool TakesOffered(std::int64_t frame) noexcept;
  void Flip(std::int64_t frame) noexcept;
  void SkipWhatIsPast(std::int64_t frame, double reached, std::int64_t taken) noexcept;
  void LookForStart() noexcept;
  [[nodiscard]] int RunLength(int frames) noexcept;
  [[nodiscard]] int FramesToAlignedSwitch(int frames) noexcept;
  void SkipTo(int lane, double source) noexcept;
  void Skip(int lane, std::int64_t frames) noexcept;
  [[nodiscard]] double Source(int lane) noexcept;
  [[nodiscard]] double Line(int lane) noexcept;
  int Take(int lane, std::span<float> stereo) noexcept;
  int RenderRun(std::span<float> stereo, std::int64_t frame) noexcept;
  void Blend(std::span<float> stereo) noexcept;
  void Apply(StreamEffect* effect, std::span<float> stereo) noexcept;
  [[nodiscard]] bool RingOut(std::span<float> stereo) noexcept;
  /// Freed, it stays until nobody can hear it any more.
  [[nodiscard]] bool IsHeard() const noexcept { return sounding_ || (rings_ && !volume_.RestsAt(0)); }
  void Fade(std::span<float> stereo) noexcept;
  void EndCrossfade() noexcept;
  void StopSounding() noexcept;
  void Log(const HeardEntry& entry) noexcept { stream_->log.Write(entry); }

  Stream* stream_ = nullptr;
  const FadeCurve* curve_ = nullptr;
  std::uint64_t transport_seen_ = 0;
  std::uint64_t volume_seen_ = 0;
  bool wanted_ = false;
  bool freed_ = false;
  bool sounding_ = false;
  bool dry_ = false;
  bool ended_ = false;
  bool rings_ = false;
  std::int64_t rung_ = 0;  ///< frames since it was freed
  bool ending_ = false;    ///< it rang for so long that it is faded out
  int active_ = -1;
  std::array<int, 2> offset_{};
  std::array<double, 2> source_{};  ///< behind the last frame taken
  std::array<double, 2> line_{};
  int fade_ = 0;  ///< step of the curve, Frames() is open
  int crossfade_left_ = 0;
  int to_switch_ = kRunFrames;  ///< frames until the lane that waits goes on, when it does so within a run
  int to_start_ = kRunFrames;   ///< the same of one that begins on its frame
  int late_ = 0;
  std::uint64_t bad_ = 0;
  RampedValue volume_{1};
  RampedValue gain_{1};
  RampedValue pan_{0};
};

}  // namespace engine
