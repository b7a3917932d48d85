// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "engine/CaptureRing.h"
#include "engine/Ducker.h"
#include "engine/PassingReader.h"
#include "engine/SpeakerMap.h"
#include "engine/VoiceChain.h"
#include "support/HistoryRing.h"
#include "support/TripleBuffer.h"

namespace engine {

/// What is asked of a line.
struct LineOrders {
  bool live = false;       ///< the voice is heard
  bool listen = false;     ///< it is measured, heard or not
  bool talk_over = false;  ///< the gate stands open and the music is low, spoken or not
  unsigned pairs = 0;      ///< a bit a pair code of the speaker map: where it is heard
  VoiceShape voice{};
  DuckShape duck{};
};

/// What a line does now.
struct LineReport {
  bool gate_open = false;
  float input = 0;      ///< 1 is full scale
  float level = 0;      ///< the same
  float reduction = 0;  ///< dB, of the compressor
  float ducking = 0;    ///< dB
  std::uint64_t gaps = 0;
};

/// When a frame of the voice was mixed, and how far behind the microphone it was then.
struct LineMark {
  std::int64_t frame = 0;  ///< of the core
  support::TimePoint at{};
  double delay = 0;  ///< seconds since Capture; 0 when there is no voice
};

/// The way of the microphone into one output: the voice beside the music, and the music's gain meanwhile.
///
/// Law: it comes and goes over 5 ms; another pair of speakers is taken while it is silent. At rest the music
/// passes bit for bit and nothing is reckoned. Threads: Use and Set by the owner, one at a time; Begin,
/// Render and To in the callback; reports by any.
class MicrophoneLine {
 public:
  struct Piece {
    bool sounds = false;  ///< the voice is to be added
    bool ducks = false;   ///< the music is to be multiplied
  };

  explicit MicrophoneLine(int sample_rate);

  /// What it reads from, once and for good.
  void Use(std::shared_ptr<const CaptureRing> ring);
  void Set(const LineOrders& orders) { orders_.Write(orders); }

  /// Once a callback. frame: of the first one. False when there is nothing to do until the next.
  bool Begin(support::TimePoint now, std::int64_t frame, int frames) noexcept;
  /// Both spans as long as the piece.
  Piece Render(std::span<float> voice, std::span<float> music) noexcept;
  /// Bits of the pair codes that it is heard on.
  [[nodiscard]] unsigned Pairs() const noexcept { return pairs_; }

  [[nodiscard]] LineReport Report() const noexcept;
  /// Nothing before the first Begin with work.
  [[nodiscard]] std::optional<LineMark> Mark() const noexcept { return marks_.Newest(); }

 private:
  void TakeOrders() noexcept;
  void Tell() noexcept;

  const int ramp_frames_;
  std::shared_ptr<const CaptureRing> held_;
  std::atomic<const CaptureRing*> ring_{nullptr};
  support::TripleBuffer<LineOrders> orders_;
  LineOrders now_;
  unsigned pairs_ = 0;
  bool resting_ = true;
  bool recorded_ = false;  ///< something comes from the microphone
  PassingReader reader_;
  VoiceChain chain_;
  RampedValue audible_{0};
  Ducker ducker_;
  std::atomic<bool> gate_open_{false};
  std::atomic<float> input_{0};
  std::atomic<float> level_{0};
  std::atomic<float> reduction_{0};
  std::atomic<float> ducking_{0};
  std::atomic<std::uint64_t> gaps_{0};
  support::HistoryRing<LineMark, 8> marks_;
};

}  // namespace engine
