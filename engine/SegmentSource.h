// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "engine/BlockSource.h"
#include "engine/PcmStore.h"
#include "engine/ports/Stretcher.h"

namespace engine {

/// Makes the blocks of one lane: from one place of a store on, at the device's rate, in stereo.
///
/// Threads: the feeder. Law: a block's source frame comes from adding up ratios, never from how much a
/// library holds back; when file and device have the same rate and tempo and pitch are the original's, the
/// samples are those of the store. A loop turns before all that, so that nothing behind it can tell; the
/// turn is made in the last milliseconds before the loop's end, which fade to those before its beginning:
/// what stands at the beginning is heard as it is.
class SegmentSource final : public BlockSource {
 public:
  SegmentSource(std::shared_ptr<PcmStore> store, StretcherFactory& stretchers, int device_rate);

  [[nodiscard]] SegmentPath PathOf(const Tempo& tempo) const override;
  void Begin(std::int64_t frame, const Tempo& tempo, const std::optional<music::Loop>& loop) override;
  void SetTempo(const Tempo& tempo) override;
  [[nodiscard]] const Tempo& InForce() const noexcept override { return tempo_; }
  [[nodiscard]] double Source() const noexcept override { return source_; }
  [[nodiscard]] double Line() const noexcept override { return line_; }
  [[nodiscard]] double Ratio() const noexcept override { return ratio_; }
  [[nodiscard]] bool Ended() const noexcept override { return ended_; }
  bool Make(LaneBlock& block, int frames) override;

 private:
  static constexpr int kWindow = 512;
  /// Stereo frames on their way from one stage to the next.
  struct Window {
    std::array<float, kWindow> left{};
    std::array<float, kWindow> right{};
    int begin = 0;
    int end = 0;
  };

  /// Each writes up to the size of the spans and returns the frames written: 0 when the store must come
  /// first.
  int Pull(std::span<float> left, std::span<float> right);
  int PullStore(std::span<float> left, std::span<float> right);
  /// Reads what lies in the store, and silence before it; frames read.
  std::int64_t ReadStore(std::int64_t frame, std::span<float> left, std::span<float> right);
  /// From the store's cursor on. end: the loop's.
  void BlendTurn(std::span<float> left, std::span<float> right, std::int64_t end);
  /// A file may turn out shorter than it said. Requires: there is a loop.
  [[nodiscard]] std::int64_t LoopEnd(bool complete) const;
  void LeaveLoopBehind(std::int64_t frame, bool complete);
  int PullResampled(std::span<float> left, std::span<float> right);
  int PullStretched(std::span<float> left, std::span<float> right);
  int MakeLibraryBlock(LaneBlock& block, int frames);
  int MakePlainBlock(LaneBlock& block, int frames);
  void BeginStretcher();

  const std::shared_ptr<PcmStore> store_;  // as the stream's
  StretcherFactory& stretchers_;
  const int device_rate_;
  const int channels_;
  Tempo tempo_;
  SegmentPath path_;
  std::optional<music::Loop> loop_;
  double source_ = 0;
  double line_ = 0;
  double ratio_ = 1;
  double resample_ratio_ = 1;
  std::int64_t cursor_ = 0;  ///< the store's next frame; below 0 is silence
  bool ended_ = false;
  int drop_ = 0;  ///< frames of the stretcher still to be thrown away
  std::unique_ptr<Resampler> resampler_;
  std::unique_ptr<Stretcher> stretcher_;
  StretchQuality stretcher_quality_ = StretchQuality::Best;
  Window window_;
  std::vector<std::int16_t> interleaved_;
  std::array<float, kWindow> before_left_{};  ///< the loop, which a turn fades to
  std::array<float, kWindow> before_right_{};
  std::array<float, kWindow> left_{};
  std::array<float, kWindow> right_{};
};

}  // namespace engine
