// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "engine/Lane.h"
#include "engine/PcmStore.h"
#include "engine/SampleTap.h"
#include "engine/StreamEffect.h"
#include "engine/ports/Stretcher.h"
#include "music/Loop.h"
#include "support/HistoryRing.h"
#include "support/Mutex.h"
#include "support/ports/SoundGenerator.h"

namespace engine {

/// How fast and how high a stream plays.
struct Tempo {
  double speed = 1;        ///< with key lock: 1.04 is 4 % faster at the same pitch
  double sample_rate = 0;  ///< at which the file's samples go by, in Hz; 0 is the file's own
  double semitones = 0;
  StretchQuality quality = StretchQuality::Best;
  double bend = 1;        ///< factor on the pace that nobody is to hear
  bool bendable = false;  ///< bends may come, without a change of what the sound goes through
  bool operator==(const Tempo&) const = default;
};

/// One stretch of a device's clock in which a stream gave sound from one place at one ratio.
struct HeardEntry {
  std::int64_t frame = 0;   ///< engine frame of its start
  double source = 0;        ///< the file's frame then
  double line = 0;          ///< the same, had no loop taken it back in this segment
  double ratio = 1;         ///< source frames an engine frame
  std::int64_t taken = 0;   ///< frames taken from the lane before it
  std::int64_t moved = 0;   ///< all jumps in it together, see Stream::Turns
  std::uint32_t place = 0;  ///< that was asked for, by its number
  std::uint32_t segment = 0;
  std::uint32_t lane = 0;
  std::int32_t frames = 0;  ///< after these the place stands still until the next entry
  bool ended = false;       ///< the file's last frame lies before it
  float left_peak = 0;
  float right_peak = 0;
};

/// What the three threads of a playing stream share.
///
/// Threads: each group of members names its two ends; the callback never takes the lock.
/// Owns: nothing of the device; the feeder and the device's slot only borrow or share it.
class Stream {
 public:
  enum class Transport : std::uint64_t { None, Play, Pause, Free };
  enum class HandOver : std::uint32_t {
    Free,   ///< the idle lane is the feeder's
    Ready,  ///< the idle lane may be taken
    Held,   ///< the callback is looking at it, for less than a block: the feeder must leave it alone
    Taken,  ///< the callback fades from one lane to the other
  };
  /// Commands of one stream that may wait for their frames; more are refused.
  static constexpr int kScheduled = 32;
  struct TimedTempo {
    std::int64_t at = 0;
    double speed = 1;
  };
  /// What was asked of the place without naming one: each takes what is heard elsewhere, on one frame.
  struct Turns {
    std::uint32_t number = 0;  ///< counts what was asked
    std::optional<music::Loop> loop;
    std::int64_t moved = 0;      ///< all jumps so far together, in the file's frames
    std::uint32_t returned = 0;  ///< counts the ways back to where it would be
    bool slip = false;           ///< where it would be is kept, whatever is asked
  };
  /// What the owner asks of the feeder.
  struct Orders {
    std::uint32_t place = 1;        ///< counts the places asked for
    std::int64_t frame = 0;         ///< the file's frame of the newest one
    std::int64_t moved_before = 0;  ///< of Turns::moved, when that was asked for
    bool with_leader = false;       ///< or wherever the stream that this one follows is, while that one plays
    Tempo tempo;
    Turns turns;
    std::vector<TimedTempo> timed;  ///< ascending
  };

  Stream(std::uint32_t id, std::shared_ptr<PcmStore> store, int device, int pair)
      : id_(id), store_(std::move(store)), device_(device), pair_(pair) {}
  /// Generated sound has no store.
  Stream(std::uint32_t id, std::shared_ptr<support::SoundGenerator> generator, int device, int pair)
      : id_(id), generator_(std::move(generator)), device_(device), pair_(pair) {}

  [[nodiscard]] std::uint32_t Id() const noexcept { return id_; }
  [[nodiscard]] const std::shared_ptr<PcmStore>& Store() const noexcept { return store_; }
  /// Null for a file.
  [[nodiscard]] const std::shared_ptr<support::SoundGenerator>& Generator() const noexcept {
    return generator_;
  }
  [[nodiscard]] PcmFormat Format() const noexcept {
    return store_ != nullptr ? store_->Format() : PcmFormat{generator_->SampleRate(), 2};
  }
  /// In frames; exact when LengthIsExact().
  [[nodiscard]] std::int64_t Length() const noexcept {
    return store_ != nullptr ? store_->Length() : generator_->Length();
  }
  [[nodiscard]] bool LengthIsExact() const noexcept { return store_ == nullptr || store_->Complete(); }
  [[nodiscard]] int Device() const noexcept { return device_; }
  [[nodiscard]] int Pair() const noexcept { return pair_; }

  // Owner to feeder.
  enum class Where { Here, WithLeader };
  /// A loop that the place is outside of ends.
  void Seek(std::int64_t frame, Where where = Where::Here) DJ_EXCLUDES(mutex_);
  void SetTempo(const Tempo& tempo) DJ_EXCLUDES(mutex_);
  [[nodiscard]] Tempo GetTempo() const DJ_EXCLUDES(mutex_);
  /// False when too many wait already.
  bool AddTimedTempo(const TimedTempo& timed) DJ_EXCLUDES(mutex_);
  void SetLoop(const std::optional<music::Loop>& loop) DJ_EXCLUDES(mutex_);
  /// loop: in force there.
  void Move(std::int64_t frames, const std::optional<music::Loop>& loop) DJ_EXCLUDES(mutex_);
  void SetSlip(bool slip) DJ_EXCLUDES(mutex_);
  /// Ends the loop as well.
  void SlipBack() DJ_EXCLUDES(mutex_);
  /// Whatever was scheduled before happens no more.
  void CancelScheduled() DJ_EXCLUDES(mutex_);
  /// The first timed change becomes the tempo in force.
  void ApplyTimedTempo() DJ_EXCLUDES(mutex_);
  /// Timed changes are looked at one by one, the earliest first.
  struct OrderView {
    std::uint32_t place;
    std::int64_t frame;
    std::int64_t moved_before;
    bool with_leader;
    Tempo tempo;
    Turns turns;
    std::optional<TimedTempo> next;
  };
  [[nodiscard]] OrderView View() const DJ_EXCLUDES(mutex_);
  /// The callback starts nothing but the newest place.
  [[nodiscard]] std::uint32_t PlaceWanted() const noexcept {
    return place_wanted_.load(std::memory_order_acquire);
  }

  // Owner to callback; each is numbered, so that asking the same twice is seen.
  void Ask(Transport transport) noexcept { Number(transport_, static_cast<std::uint64_t>(transport)); }
  void SetVolume(float volume) noexcept;
  void SetPan(float pan) noexcept { pan_.store(pan, std::memory_order_relaxed); }
  /// A factor on the volume, which knows no such bounds.
  void SetGain(float gain) noexcept { gain_.store(gain, std::memory_order_relaxed); }
  void SetEffect(StreamEffect* effect) noexcept { effect_.store(effect, std::memory_order_release); }
  /// Behind the fades of starts and stops, so that it rings out when the stream is silent.
  void SetRinging(StreamEffect* effect) noexcept { ringing_.store(effect, std::memory_order_release); }
  [[nodiscard]] std::uint64_t TransportAsked() const noexcept {
    return transport_.load(std::memory_order_acquire);
  }
  [[nodiscard]] static Transport TransportOf(std::uint64_t asked) noexcept {
    return static_cast<Transport>(asked & 0xFFFFFFFF);
  }
  [[nodiscard]] std::uint64_t VolumeAsked() const noexcept { return volume_.load(std::memory_order_acquire); }
  [[nodiscard]] static float VolumeOf(std::uint64_t asked) noexcept;
  [[nodiscard]] float Pan() const noexcept { return pan_.load(std::memory_order_relaxed); }
  [[nodiscard]] float Gain() const noexcept { return gain_.load(std::memory_order_relaxed); }
  [[nodiscard]] StreamEffect* Effect() const noexcept { return effect_.load(std::memory_order_acquire); }
  [[nodiscard]] StreamEffect* Ringing() const noexcept { return ringing_.load(std::memory_order_acquire); }

  // Feeder and callback.
  std::array<Lane, 2> lanes;
  std::atomic<HandOver> hand_over{HandOver::Free};

  // Owner and callback: commands that wait, and how often they were all cancelled.
  std::atomic<int> scheduled{0};
  std::atomic<std::uint32_t> cancelled{0};

  // Callback to everybody.
  support::HistoryRing<HeardEntry, 2048> log;
  SampleTap tap;  ///< after the effects, before volume
  std::atomic<std::uint64_t> transport_seen{0};
  std::atomic<bool> playing{false};
  std::atomic<bool> heard{false};             ///< it sounds or rings
  std::atomic<std::uint32_t> ended_place{0};  ///< the place whose sound came to the file's end, or 0
  std::atomic<bool> detached{false};          ///< the callback will not touch it again

 private:
  static void Number(std::atomic<std::uint64_t>& word, std::uint64_t low) noexcept {
    word.store(((word.load(std::memory_order_relaxed) >> 32) + 1) << 32 | low, std::memory_order_release);
  }

  const std::uint32_t id_;
  const std::shared_ptr<PcmStore> store_;  // shared with other streams and scans of the same file
  const std::shared_ptr<support::SoundGenerator> generator_;  // with whoever tells it what is wanted
  const int device_;
  const int pair_;
  mutable support::Mutex mutex_;
  Orders orders_ DJ_GUARDED_BY(mutex_);
  std::atomic<std::uint32_t> place_wanted_{1};
  std::atomic<std::uint64_t> transport_{0};
  std::atomic<std::uint64_t> volume_{0};
  std::atomic<float> pan_{0};
  std::atomic<float> gain_{1};
  std::atomic<StreamEffect*> effect_{nullptr};
  std::atomic<StreamEffect*> ringing_{nullptr};
};

}  // namespace engine
