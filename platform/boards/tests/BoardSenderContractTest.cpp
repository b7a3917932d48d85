// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <condition_variable>
#include <memory>

#include "lightorgan/testing/IoBoardsContract.h"
#include "platform/boards/BoardSender.h"
#include "support/Mutex.h"

namespace platform::boards {
namespace {

using lightorgan::testing::Lamps;

/// Boards as they stand at the other end of a line.
class LampBench {
 public:
  void Plug(BoardSet plugged) {
    support::MutexLock lock(mutex_);
    plugged_ = plugged;
  }
  BoardSet Look() {
    support::MutexLock lock(mutex_);
    const BoardSet fresh = plugged_ & ~held_;
    held_ = plugged_;
    return fresh;
  }
  BoardSet Held() {
    support::MutexLock lock(mutex_);
    return held_;
  }
  void Release() {
    support::MutexLock lock(mutex_);
    held_.reset();
  }
  void Switch(std::size_t board, std::uint8_t channels) {
    support::MutexLock lock(mutex_);
    lamps_[board].switched = channels;
    changed_.notify_all();
  }
  void Dim(std::size_t board, const DimmedValues& values) {
    support::MutexLock lock(mutex_);
    std::copy(values.begin(), values.end(), lamps_[board].dimmed.begin());
    changed_.notify_all();
  }
  /// What the board shows once that is what is wanted, or after five seconds.
  [[nodiscard]] Lamps Comes(std::size_t board, const Lamps& wanted) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    support::MutexLock lock(mutex_);
    while (lamps_[board] != wanted && std::chrono::steady_clock::now() < deadline) {
      lock.WaitUntil(changed_, deadline);
    }
    return lamps_[board];
  }

 private:
  support::Mutex mutex_;
  std::condition_variable changed_;
  BoardSet plugged_ DJ_GUARDED_BY(mutex_) = BoardSet().set(), held_ DJ_GUARDED_BY(mutex_);
  std::array<Lamps, kBoards> lamps_ DJ_GUARDED_BY(mutex_);
};

class BenchLine final : public BoardLine {
 public:
  explicit BenchLine(std::shared_ptr<LampBench> bench) : bench_(std::move(bench)) {}
  BoardSet Look(Occasion) override { return bench_->Look(); }
  BoardSet Held() const override { return bench_->Held(); }
  bool Switch(std::size_t board, std::uint8_t channels) override {
    bench_->Switch(board, channels);
    return true;
  }
  bool Dim(std::size_t board, const DimmedValues& values, const DimmedValues*) override {
    bench_->Dim(board, values);
    return true;
  }
  void Release() override { bench_->Release(); }
  support::Error Trouble() const override { return {}; }

 private:
  std::shared_ptr<LampBench> bench_;
};

struct Sent {
  lightorgan::IoBoards& Boards() { return boards; }
  void Unplug() { bench->Plug({}); }
  Lamps Shown(int board, const Lamps& wanted) {
    return bench->Comes(static_cast<std::size_t>(board), wanted);
  }
  std::shared_ptr<LampBench> bench = std::make_shared<LampBench>();
  BoardSender boards{
      std::make_unique<BenchLine>(bench),
      Pace{std::chrono::milliseconds(1), std::chrono::milliseconds(0), std::chrono::seconds(5)}};
};

}  // namespace
}  // namespace platform::boards

namespace lightorgan::testing {

INSTANTIATE_TYPED_TEST_SUITE_P(Sent, EveryIoBoards, platform::boards::Sent);

}  // namespace lightorgan::testing
