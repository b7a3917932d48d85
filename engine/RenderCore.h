// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "engine/HallElsewhere.h"
#include "engine/Limiter.h"
#include "engine/MicrophoneLine.h"
#include "engine/PassingHall.h"
#include "engine/PhonesMix.h"
#include "engine/ProgrammeMeter.h"
#include "engine/ProgrammeTap.h"
#include "engine/SpeakerMap.h"
#include "engine/Stream.h"
#include "engine/Voice.h"
#include "engine/ports/OutputDevice.h"
#include "support/Clock.h"
#include "support/Mutex.h"
#include "support/SpscRing.h"

namespace engine {

/// When a block was mixed, and the number of its first frame.
struct BlockMark {
  std::int64_t frame = 0;
  support::TimePoint at{};
};

/// Mixes the streams of one device number, whatever output pulls for it at the moment.
///
/// Streams sound into buses, one a pair of the device's speakers, each with a limiter of its own: what is
/// loud in the head-phones of a card turns nothing down in the hall of the same card.
/// Frames count from the first Render on and live on when the output is changed. A frame leaves the core
/// LookAhead() frames after it was mixed; everything that carries an engine frame means the mixing.
/// Threads: Render in the callback; the rest by the owner. Law: Render takes no memory, no lock, no system
/// call.
class RenderCore final : public RenderSource {
 public:
  static constexpr int kStreams = 16;

  struct Command {
    enum class Kind { Start, Pause, Ramp } kind = Kind::Start;
    std::uint32_t stream = 0;
    std::int64_t at = 0;
    float volume = 0;           ///< 0 to 1
    int frames = 0;             ///< of the ramp
    std::uint32_t cancels = 0;  ///< of the stream, when it was scheduled
    std::uint64_t asked = 0;    ///< the same of its volume, which ends a ramp that was scheduled before
  };

  RenderCore(int sample_rate, const SpeakerMap& speakers, const support::Clock& clock);

  [[nodiscard]] int SampleRate() const noexcept { return sample_rate_; }
  [[nodiscard]] int LookAhead() const noexcept { return look_ahead_; }
  /// The next frame to be mixed.
  [[nodiscard]] std::int64_t Frames() const noexcept { return frames_.load(std::memory_order_acquire); }
  /// Requires: nothing renders.
  void SetSpeakers(const SpeakerMap& speakers);
  /// False when all places are taken. The stream outlives its detached flag.
  bool Attach(Stream& stream) noexcept;
  /// Requires: nothing renders, nor will it.
  void DetachAll() noexcept;
  /// False when too many commands of the stream wait already, so that the far ones of one stream never keep
  /// out those of another. Those that wait when their stream ends are dropped with it.
  bool Schedule(Stream& stream, Command command) noexcept;

  /// What leaves the limiter of a pair, from now on: of a pair code that is more than one pair, the first.
  /// A frame carries the number under which it was mixed. Any thread but the callback.
  [[nodiscard]] std::unique_ptr<ProgrammeReader> OpenProgramme(int pair) DJ_EXCLUDES(taps_mutex_);

  void Render(std::span<float> interleaved) noexcept override;

  /// What is spoken goes to the buses beside the streams, before their limiters.
  [[nodiscard]] MicrophoneLine& Microphone() noexcept { return microphone_; }

  [[nodiscard]] std::uint64_t Callbacks() const noexcept {
    return callbacks_.load(std::memory_order_relaxed);
  }
  /// Samples that an effect gave and that were no numbers.
  [[nodiscard]] std::uint64_t BadSamples() const noexcept { return bad_.load(std::memory_order_relaxed); }
  [[nodiscard]] std::uint64_t LateBlocks() const noexcept { return late_.load(std::memory_order_relaxed); }
  /// The factor to which the limiter of a pair turned its sound down in the newest block; 1 is untouched.
  [[nodiscard]] float LimiterGain(int pair) const noexcept;
  /// What its head-phones hear. The owner's.
  [[nodiscard]] PhonesMix& Phones() noexcept { return phones_; }
  /// Where the hall is that plays on other devices. The owner's.
  [[nodiscard]] HallElsewhere& Elsewhere() noexcept { return elsewhere_; }
  /// The music of a pair (of a code that is more than one, the first) for head-phones on another device.
  [[nodiscard]] std::shared_ptr<const PassingSound> Passing(int pair) DJ_EXCLUDES(taps_mutex_);
  /// Nothing before the first block.
  [[nodiscard]] std::optional<BlockMark> Mixed() const noexcept { return mixed_.Newest(); }
  /// In the newest block they could hear the hall: both have pairs of their own, or it is elsewhere.
  [[nodiscard]] bool PhonesReachHall() const noexcept { return reach_.load(std::memory_order_relaxed); }
  /// Of what leaves the limiter of a pair (of a code that is more than one, the first); kNone for none.
  void MeterPair(int pair) noexcept;
  [[nodiscard]] const ProgrammeMeter& Meter() const noexcept { return meter_; }
  /// Largest share of its period that a callback of the last one to two seconds took.
  [[nodiscard]] float Load() const noexcept;

 private:
  static constexpr int kPieceFrames = Limiter::kMostFrames;
  struct Bus {
    explicit Bus(int sample_rate) : limiter(sample_rate) {}
    std::array<float, 2 * kPieceFrames> stereo{};
    Limiter limiter;
  };
  static constexpr int kNone = PhonesMix::kNone;
  static constexpr std::size_t kWaiting = kStreams * Stream::kScheduled;

  void FollowSlots() noexcept;
  void SortCommands() noexcept;
  void DropCommands() noexcept;
  [[nodiscard]] Voice* VoiceOf(std::uint32_t stream) noexcept;
  void RunCommands(std::int64_t frame) noexcept;
  void Run(const Command& command) noexcept;
  [[nodiscard]] int PieceLength(int frames, std::int64_t frame) const noexcept;
  void MixPiece(int frames, std::int64_t frame) noexcept;
  void AddMicrophone(int frames) noexcept;
  void GivePiece(std::span<float> interleaved, int channels) noexcept;
  /// Of a pair code that is one pair; null for any other.
  [[nodiscard]] Bus* BusOf(int pair) noexcept;
  /// Where the head-phones and the hall are in this callback.
  struct Ears {
    Bus* phones = nullptr;
    std::array<Bus*, 2> hall{};
    bool mixed = false;    ///< the head-phones have a pair of their own
    bool reach = false;    ///< and can hear all of the hall
    bool listens = false;  ///< and do
  };
  [[nodiscard]] Ears FindEars(const PhonesMix::Wish& wish) noexcept;
  void MixPhones(std::size_t frames, const Ears& ears, const decks::HeadphoneMix& mix) noexcept;
  void FeedPassing(std::size_t frames, std::int64_t frame) noexcept;
  void TellPassing(std::int64_t end, int frames, support::TimePoint now) noexcept;
  void MeterPiece(std::size_t frames, std::int64_t frame) noexcept;
  void FeedTaps(std::size_t frames, std::int64_t frame) noexcept;
  void TellGains() noexcept;
  void MeasureLoad(support::TimePoint begin, std::int64_t frames) noexcept;

  const int sample_rate_;
  const support::Clock& clock_;
  const FadeCurve curve_;
  SpeakerMap speakers_;
  std::vector<std::unique_ptr<Bus>> buses_;  ///< as the speakers'
  int look_ahead_ = 0;
  std::array<std::atomic<Stream*>, kStreams> slots_{};
  std::array<Voice, kStreams> voices_;
  MicrophoneLine microphone_;
  support::SpscRing<Command, 2 * kWaiting> commands_;
  std::array<Command, kWaiting> waiting_{};  ///< ascending
  std::size_t waiting_count_ = 0;
  std::atomic<std::int64_t> frames_{0};
  std::atomic<std::uint64_t> callbacks_{0};
  std::atomic<std::uint64_t> late_{0};
  std::atomic<std::uint64_t> bad_{0};
  std::array<std::atomic<float>, SpeakerMap::kCodes> gains_{};
  PhonesMix phones_;
  HallElsewhere elsewhere_;
  std::atomic<bool> reach_{false};
  support::HistoryRing<BlockMark, 8> mixed_;
  ProgrammeMeter meter_;
  std::atomic<int> metered_{kNone};
  support::Mutex taps_mutex_;
  std::array<std::shared_ptr<ProgrammeTap>, SpeakerMap::kCodes> taps_ DJ_GUARDED_BY(taps_mutex_);
  std::array<std::atomic<ProgrammeTap*>, SpeakerMap::kCodes> tapped_{};  ///< the callback's view of them
  std::array<std::shared_ptr<PassingHall>, SpeakerMap::kCodes> passing_ DJ_GUARDED_BY(taps_mutex_);
  std::array<std::atomic<PassingHall*>, SpeakerMap::kCodes> passed_{};  ///< the callback's view of them
  std::atomic<float> load_{0};
  std::atomic<float> load_before_{0};
  std::int64_t load_frames_ = 0;
};

}  // namespace engine
