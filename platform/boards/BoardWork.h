// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>

#include "platform/boards/BoardLine.h"
#include "support/Clock.h"
#include "support/Mutex.h"

namespace platform::boards {

struct Pace {
  support::Duration between_looks = std::chrono::milliseconds(250);
  /// From the first call of a refresh to its last.
  support::Duration gathering = std::chrono::milliseconds(1);
  support::Duration patience = std::chrono::seconds(2);  ///< with a driver that does not come back
};

/// What a BoardSender and its thread share: the lamps as they are to be, and the thread's work.
/// Threads: Run on the thread, all else on the caller's.
class BoardWork {
 public:
  BoardWork(std::unique_ptr<BoardLine> line, const Pace& pace) : pace_(pace), line_(std::move(line)) {}

  void Open() DJ_EXCLUDES(mutex_);
  void Close() DJ_EXCLUDES(mutex_);
  /// change(Wish&): what the lamps of this board are to show from now on.
  template <typename Change>
  void Note(int board, Change change) DJ_EXCLUDES(mutex_);
  /// An answer to Open, if there is one.
  [[nodiscard]] std::optional<std::int32_t> Answer() DJ_EXCLUDES(mutex_);
  [[nodiscard]] support::Error Trouble() DJ_EXCLUDES(mutex_);
  /// False: the thread does not come back.
  [[nodiscard]] bool End() DJ_EXCLUDES(mutex_);
  void Run() DJ_EXCLUDES(mutex_);

 private:
  /// What the lamps of one board are to show.
  struct Wish {
    std::uint8_t switched = 0;
    DimmedValues dimmed{};
    bool operator==(const Wish&) const = default;
  };
  using Wishes = std::array<Wish, kBoards>;
  /// What a board was told, as far as it is known.
  struct Told {
    std::optional<std::uint8_t> switched;
    std::optional<DimmedValues> dimmed;
  };
  /// One turn of the thread.
  struct Task {
    Wishes wishes;
    bool wanted = false;
    bool ending = false;
    int asked = 0;
  };
  [[nodiscard]] Task NextTask() DJ_EXCLUDES(mutex_);
  void Look(BoardLine::Occasion occasion);
  void Send(const Wishes& wishes);
  void Report(int asked) DJ_EXCLUDES(mutex_);
  /// Of a board that is not there though lamps of it are to be lit.
  [[nodiscard]] support::Error Missed(BoardSet held) const DJ_REQUIRES(mutex_);

  support::SteadyClock clock_;
  support::Mutex mutex_;
  std::condition_variable wake_;
  Wishes wishes_ DJ_GUARDED_BY(mutex_){};
  std::array<std::optional<support::TimePoint>, kBoards> last_lit_ DJ_GUARDED_BY(mutex_);
  std::optional<support::TimePoint> changed_since_ DJ_GUARDED_BY(mutex_);
  bool wanted_ DJ_GUARDED_BY(mutex_) = false;
  bool closing_ DJ_GUARDED_BY(mutex_) = false;
  bool ending_ DJ_GUARDED_BY(mutex_) = false;
  bool ended_ DJ_GUARDED_BY(mutex_) = false;
  int asked_ DJ_GUARDED_BY(mutex_) = 0;
  std::deque<std::int32_t> answers_ DJ_GUARDED_BY(mutex_);
  support::Error trouble_ DJ_GUARDED_BY(mutex_){};

  const Pace pace_;

  // The thread's own.
  std::unique_ptr<BoardLine> line_;
  support::TimePoint next_look_{};
  std::array<Told, kBoards> told_{};
};

template <typename Change>
void BoardWork::Note(int board, Change change) {
  if (board < 0 || board >= static_cast<int>(kBoards)) return;
  const auto at = static_cast<std::size_t>(board);
  support::MutexLock lock(mutex_);
  const Wish before = wishes_[at];
  change(wishes_[at]);
  if (wishes_[at] != Wish()) last_lit_[at] = clock_.Now();
  if (wishes_[at] == before || changed_since_) return;
  changed_since_ = clock_.Now();
  if (wanted_) wake_.notify_all();
}

}  // namespace platform::boards
