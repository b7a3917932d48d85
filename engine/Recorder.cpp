// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Recorder.h"

#include <algorithm>
#include <utility>

#include "support/Sentences.h"

namespace engine {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr milliseconds kEvery{50};
constexpr milliseconds kHeld{200};       ///< so late may a cut be ordered
constexpr milliseconds kMostAhead{400};  ///< of what is heard, that is waited for
constexpr milliseconds kSyncEvery{500};
constexpr seconds kLookEvery{1};
constexpr seconds kRateIsKnown{10};  ///< by then a file has grown enough to tell how fast

microseconds TimeOf(std::int64_t frames, int rate) {
  return microseconds(rate > 0 ? frames * 1'000'000 / rate : 0);
}

std::int64_t FramesOf(microseconds time, int rate) {
  return (time.count() * rate + 500'000) / 1'000'000;
}

}  // namespace

Recorder::Recorder(const RecorderPorts& ports, Running running) : ports_(ports) {
  if (running == Running::OwnThread) thread_ = std::thread([this] { Run(); });
}

Recorder::~Recorder() {
  if (thread_.joinable()) {
    {
      support::MutexLock lock(mutex_);
      end_ = true;
    }
    ordered_.notify_all();
    thread_.join();
  }
  Pump();
  Finish();
}

void Recorder::Give(Order order) {
  {
    support::MutexLock lock(mutex_);
    orders_.push_back(std::move(order));
  }
  ordered_.notify_one();
}

std::uint64_t Recorder::Start(const decks::RecordingWish& wish) {
  std::uint64_t number = 0;
  {
    support::MutexLock lock(mutex_);
    number = ++started_;
  }
  Give([this, wish, number] { Begin(wish, number); });
  return number;
}

void Recorder::Cut(microseconds place, const decks::RecordingFile& next) {
  Give([this, place, next] {
    if (take_ != nullptr) take_->Cut(FramesOf(place, take_->SampleRate()), next);
  });
}

void Recorder::Follow(int device, std::uint32_t speaker) {
  Give([this, device, speaker] {
    if (take_ != nullptr) going_ = {device, speaker};
  });
}

void Recorder::GoOn() {
  if (!going_) return;
  const auto [device, speaker] = *going_;
  auto reader = ports_.programme.Open(device, speaker);
  if (reader == nullptr || reader->SampleRate() != take_->SampleRate()) return;
  going_.reset();
  device_ = device;
  if (const auto went = take_->Follow(std::move(reader)); !went) Fail(went.Failure());
}

void Recorder::Stop() {
  Give([this] { Finish(); });
}

decks::RecordingProgress Recorder::Progress() {
  support::MutexLock lock(mutex_);
  decks::RecordingProgress progress = progress_;
  if (progress.recording) {
    // On a new device nothing was taken yet: what is heard is what is written, but for a moment.
    progress.heard = progress.length;
    if (base_) {
      const std::int64_t heard = ports_.programme.Heard(heard_device_);
      progress.heard = TimeOf(std::max<std::int64_t>(heard - *base_, 0), sample_rate_);
    }
  }
  return progress;
}

bool Recorder::End(milliseconds patience) {
  Stop();
  if (!thread_.joinable()) Pump();
  const auto until = std::chrono::steady_clock::now() + patience;
  support::MutexLock lock(mutex_);
  while (works_ || !orders_.empty()) {
    if (std::chrono::steady_clock::now() >= until) return false;
    lock.WaitUntil(rested_, until);
  }
  return true;
}

support::Result<seconds> Recorder::Repair(const std::string& path) {
  const auto length = ports_.encoders.Repair(path);
  if (!length) return length.Failure();
  return seconds(static_cast<std::int64_t>(length.Value()));
}

std::optional<std::int64_t> Recorder::FreeBytes(const std::string& path) {
  const auto free = ports_.space.Of(path);
  if (!free) return {};
  return std::max<std::int64_t>(*free - kKeptFree, 0);
}

void Recorder::Run() {
  while (true) {
    Pump();
    const auto next = std::chrono::steady_clock::now() + kEvery;
    support::MutexLock lock(mutex_);
    while (!end_ && orders_.empty() && (take_ == nullptr || std::chrono::steady_clock::now() < next)) {
      if (take_ == nullptr) {
        lock.Wait(ordered_);
      } else {
        lock.WaitUntil(ordered_, next);
      }
    }
    if (end_) return;
  }
}

void Recorder::Pump() {
  std::vector<Order> orders;
  {
    support::MutexLock lock(mutex_);
    orders.swap(orders_);
    works_ = true;
  }
  for (const Order& order : orders) order();
  if (take_ != nullptr) GoOn();
  if (take_ != nullptr) TakeMore();
  {
    support::MutexLock lock(mutex_);
    works_ = false;
  }
  rested_.notify_all();
}

void Recorder::Begin(const decks::RecordingWish& wish, std::uint64_t number) {
  Finish();
  {
    support::MutexLock lock(mutex_);
    progress_ = {};
    progress_.number = number;
    progress_.path = wish.file.path;
  }
  auto reader = ports_.programme.Open(wish.device, wish.speaker);
  if (reader == nullptr) {
    return Fail(support::Failed(support::ErrorCode::Unavailable, support::Sentence::NothingToRecord));
  }
  device_ = wish.device;
  going_.reset();
  take_ = std::make_unique<RecordingTake>(wish, std::move(reader), ports_.encoders);
  if (const auto largest = ports_.space.LargestFile(wish.file.path)) take_->LimitFiles(*largest);
  next_look_ = {};
  if (!LookAtSpace()) return;
  if (const auto begun = take_->Begin(); !begun) return Fail(begun.Failure());
  next_sync_ = ports_.clock.Now() + kSyncEvery;
  Publish();
  support::MutexLock lock(mutex_);
  progress_.recording = true;
}

bool Recorder::Finish() {
  if (take_ == nullptr) return true;
  const auto finished = take_->Finish();
  if (!finished) {
    Fail(finished.Failure());
    return false;
  }
  Publish();
  take_.reset();
  support::MutexLock lock(mutex_);
  progress_.recording = false;
  return true;
}

void Recorder::Fail(const support::Error& error) {
  if (take_ != nullptr) {
    take_->Abandon();
    Publish();
    take_.reset();
  }
  support::MutexLock lock(mutex_);
  progress_.recording = false;
  progress_.failure = error;
}

void Recorder::TakeMore() {
  // A cut is ordered at what is heard, which a slow output gives later.
  const std::int64_t ahead = take_->Ahead(ports_.programme.Heard(device_));
  const std::int64_t held = FramesOf(kHeld, take_->SampleRate()) +
                            std::clamp<std::int64_t>(ahead, 0, FramesOf(kMostAhead, take_->SampleRate()));
  if (const auto taken = take_->Take(held); !taken) return Fail(taken.Failure());
  const support::TimePoint now = ports_.clock.Now();
  if (now >= next_sync_) {
    next_sync_ = now + kSyncEvery;
    if (const auto synced = take_->Sync(); !synced) return Fail(synced.Failure());
  }
  if (LookAtSpace()) Publish();
}

bool Recorder::LookAtSpace() {
  const support::TimePoint now = ports_.clock.Now();
  if (now < next_look_) return true;
  next_look_ = now + kLookEvery;
  free_ = ports_.space.Of(take_->Path());
  if (!free_ || *free_ >= kKeptFree) return true;
  using support::Sentence;
  const bool begun = take_->Begun();
  if (begun && !Finish()) return false;
  Fail(support::Failed(support::ErrorCode::Unavailable,
                       begun ? Sentence::RecordingDiskLow : Sentence::RecordingNoRoom));
  return false;
}

void Recorder::Publish() {
  const int rate = take_->SampleRate();
  const microseconds length = TimeOf(take_->Frames(), rate);
  const auto [left, right] = take_->TakePeaks();
  support::MutexLock lock(mutex_);
  base_ = take_->Base();
  heard_device_ = device_;
  sample_rate_ = rate;
  progress_.path = take_->Path();
  progress_.file_begins = TimeOf(take_->FileBegins(), rate);
  progress_.length = length;
  progress_.bytes = take_->Bytes();
  progress_.left_peak = left;
  progress_.right_peak = right;
  progress_.lost = TimeOf(take_->Lost(), rate);
  progress_.room.reset();
  if (free_ && length > kRateIsKnown && progress_.bytes > 0) {
    const double rate_of_growth = static_cast<double>(progress_.bytes) / static_cast<double>(length.count());
    const double left_to_fill = static_cast<double>(std::max<std::int64_t>(*free_ - kKeptFree, 0));
    progress_.room = seconds(static_cast<std::int64_t>(left_to_fill / rate_of_growth / 1e6));
  }
}

}  // namespace engine
