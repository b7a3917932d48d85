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
constexpr milliseconds kHeld{200};  ///< so late may a cut be ordered
constexpr seconds kSyncEvery{2};
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
    if (take_ == nullptr) return;
    auto reader = ports_.programme.Open(device, speaker);
    if (reader == nullptr || reader->SampleRate() != take_->SampleRate()) return;
    device_ = device;
    if (const auto went = take_->Follow(std::move(reader)); !went) Fail(went.Failure());
  });
}

void Recorder::Stop() {
  Give([this] { Finish(); });
}

decks::RecordingProgress Recorder::Progress() {
  support::MutexLock lock(mutex_);
  decks::RecordingProgress progress = progress_;
  if (progress.recording) {
    const std::int64_t heard = ports_.programme.Heard(heard_device_);
    progress.heard = TimeOf(std::max<std::int64_t>(heard - base_, 0), sample_rate_);
  }
  return progress;
}

support::Result<seconds> Recorder::Repair(const std::string& path) {
  const auto length = ports_.encoders.Repair(path);
  if (!length) return length.Failure();
  return seconds(static_cast<std::int64_t>(length.Value()));
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
  }
  for (const Order& order : orders) order();
  if (take_ != nullptr) TakeMore();
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
  take_ = std::make_unique<RecordingTake>(wish, std::move(reader), ports_.encoders);
  next_look_ = {};
  if (!LookAtSpace()) return;
  if (const auto begun = take_->Begin(); !begun) return Fail(begun.Failure());
  next_sync_ = ports_.clock.Now() + kSyncEvery;
  Publish();
}

void Recorder::Finish() {
  if (take_ == nullptr) return;
  const auto finished = take_->Finish();
  if (!finished) return Fail(finished.Failure());
  Publish();
  take_.reset();
  support::MutexLock lock(mutex_);
  progress_.recording = false;
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
  const auto held = FramesOf(kHeld, take_->SampleRate());
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
  const support::Error low =
      support::Failed(support::ErrorCode::Unavailable, support::Sentence::RecordingDiskLow);
  if (take_->Frames() > 0) Finish();
  Fail(low);
  return false;
}

void Recorder::Publish() {
  const int rate = take_->SampleRate();
  const microseconds length = TimeOf(take_->Frames(), rate);
  const auto [left, right] = take_->TakePeaks();
  support::MutexLock lock(mutex_);
  base_ = -take_->PlaceOf(0);
  heard_device_ = device_;
  sample_rate_ = rate;
  progress_.recording = true;
  progress_.path = take_->Path();
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
