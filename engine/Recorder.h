// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "decks/ports/ProgrammeRecorder.h"
#include "engine/Programme.h"
#include "engine/RecordingTake.h"
#include "engine/ports/Encoder.h"
#include "engine/ports/FreeSpace.h"
#include "support/Clock.h"
#include "support/Mutex.h"

namespace engine {

/// The outside things of a recorder. All outlive it.
struct RecorderPorts {
  ProgrammeSource& programme;
  EncoderFactory& encoders;
  FreeSpace& space;
  const support::Clock& clock;
};

/// Records on a thread of its own, which a slow disk may hold for as long as a ProgrammeTap reaches.
///
/// Threads: as the port says; Pump by one thread. The destructor completes the file and waits for the disk.
class Recorder final : public decks::ProgrammeRecorder {
 public:
  /// Who does the work: a thread of the recorder's, or whoever calls Pump.
  enum class Running { OwnThread, ByHand };
  /// What a disk must keep free.
  static constexpr std::int64_t kKeptFree = 200'000'000;

  Recorder(const RecorderPorts& ports, Running running);
  ~Recorder() override;
  Recorder(const Recorder&) = delete;
  Recorder& operator=(const Recorder&) = delete;

  std::uint64_t Start(const decks::RecordingWish& wish) override DJ_EXCLUDES(mutex_);
  void Cut(std::chrono::microseconds place, const decks::RecordingFile& next) override DJ_EXCLUDES(mutex_);
  void Follow(int device, std::uint32_t speaker) override DJ_EXCLUDES(mutex_);
  void Stop() override DJ_EXCLUDES(mutex_);
  [[nodiscard]] bool End(std::chrono::milliseconds patience) override DJ_EXCLUDES(mutex_);
  [[nodiscard]] decks::RecordingProgress Progress() override DJ_EXCLUDES(mutex_);
  support::Result<std::chrono::seconds> Repair(const std::string& path) override;
  [[nodiscard]] std::optional<std::int64_t> FreeBytes(const std::string& path) override;

  /// Does what was ordered and writes what is there.
  void Pump() DJ_EXCLUDES(mutex_);

 private:
  using Order = std::function<void()>;

  void Give(Order order) DJ_EXCLUDES(mutex_);
  void Run() DJ_EXCLUDES(mutex_);
  void Begin(const decks::RecordingWish& wish, std::uint64_t number) DJ_EXCLUDES(mutex_);
  /// False when it failed, which is told.
  bool Finish() DJ_EXCLUDES(mutex_);
  void Fail(const support::Error& error) DJ_EXCLUDES(mutex_);
  void GoOn() DJ_EXCLUDES(mutex_);
  void TakeMore() DJ_EXCLUDES(mutex_);
  /// False when it had to end.
  bool LookAtSpace() DJ_EXCLUDES(mutex_);
  void Publish() DJ_EXCLUDES(mutex_);

  const RecorderPorts ports_;
  // The recorder's thread's.
  std::unique_ptr<RecordingTake> take_;
  int device_ = 1;
  /// Where the deck went whose output is not open yet.
  std::optional<std::pair<int, std::uint32_t>> going_;
  support::TimePoint next_sync_{};
  support::TimePoint next_look_{};
  std::optional<std::int64_t> free_;

  support::Mutex mutex_;
  std::condition_variable ordered_;
  std::condition_variable rested_;  ///< all that was ordered is done
  std::vector<Order> orders_ DJ_GUARDED_BY(mutex_);
  bool works_ DJ_GUARDED_BY(mutex_) = false;
  std::uint64_t started_ DJ_GUARDED_BY(mutex_) = 0;
  bool end_ DJ_GUARDED_BY(mutex_) = false;
  decks::RecordingProgress progress_ DJ_GUARDED_BY(mutex_);
  /// Programme frame of the recording's first one, while one is known, and what it plays on.
  std::optional<std::int64_t> base_ DJ_GUARDED_BY(mutex_);
  int heard_device_ DJ_GUARDED_BY(mutex_) = 1;
  int sample_rate_ DJ_GUARDED_BY(mutex_) = 0;
  std::thread thread_;  // last: it uses all of the above
};

}  // namespace engine
