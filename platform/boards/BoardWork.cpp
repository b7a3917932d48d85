// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/boards/BoardWork.h"

#include <algorithm>
#include <string>
#include <utility>

#include "lightorgan/ports/IoBoards.h"
#include "support/Sentences.h"

namespace platform::boards {
namespace {

using support::MutexLock;
using support::TimePoint;

/// So long after its last lamp was to be lit, a board is no longer missed.
constexpr auto kMissedFor = std::chrono::seconds(10);

}  // namespace

void BoardWork::Open() {
  MutexLock lock(mutex_);
  wanted_ = true;
  ++asked_;
  wake_.notify_all();
}

void BoardWork::Close() {
  MutexLock lock(mutex_);
  wanted_ = false;
  closing_ = true;
  wake_.notify_all();
}

std::optional<std::int32_t> BoardWork::Answer() {
  MutexLock lock(mutex_);
  if (answers_.empty()) return std::nullopt;
  const std::int32_t answer = answers_.front();
  answers_.pop_front();
  return answer;
}

support::Error BoardWork::Trouble() {
  MutexLock lock(mutex_);
  return trouble_;
}

bool BoardWork::End() {
  const TimePoint deadline = clock_.Now() + pace_.patience;
  MutexLock lock(mutex_);
  if (wanted_) wishes_ = {};
  wanted_ = false;
  ending_ = true;
  wake_.notify_all();
  while (!ended_ && clock_.Now() < deadline) lock.WaitUntil(wake_, deadline);
  return ended_;
}

void BoardWork::Run() {
  for (bool ending = false; !ending;) {
    const Task task = NextTask();
    if (task.asked > 0) {
      Look(BoardLine::Occasion::Asked);
    } else if (task.wanted && clock_.Now() >= next_look_) {
      Look(BoardLine::Occasion::InPassing);
    }
    Send(task.wishes);
    if (!task.wanted) line_->Release();
    Report(task.asked);
    ending = task.ending;
  }
  MutexLock lock(mutex_);
  ended_ = true;
  wake_.notify_all();
}

BoardWork::Task BoardWork::NextTask() {
  MutexLock lock(mutex_);
  while (!closing_ && asked_ == 0 && !ending_) {
    if (!wanted_) {
      lock.Wait(wake_);
      continue;
    }
    const TimePoint due =
        changed_since_ ? std::min(next_look_, *changed_since_ + pace_.gathering) : next_look_;
    if (clock_.Now() >= due) break;
    lock.WaitUntil(wake_, due);
  }
  changed_since_.reset();
  closing_ = false;
  return {wishes_, wanted_, ending_, std::exchange(asked_, 0)};
}

void BoardWork::Look(BoardLine::Occasion occasion) {
  const BoardSet fresh = line_->Look(occasion);
  for (std::size_t board = 0; board < kBoards; ++board) {
    if (fresh[board]) told_[board] = {};
  }
  next_look_ = clock_.Now() + pace_.between_looks;
}

void BoardWork::Send(const Wishes& wishes) {
  // The switched outputs of both boards go first: they are what is seen to be late.
  for (std::size_t board = 0; board < kBoards; ++board) {
    const std::uint8_t wish = wishes[board].switched;
    Told& told = told_[board];
    if (!line_->Held()[board] || told.switched == wish) continue;
    told.switched.reset();
    if (line_->Switch(board, wish)) told.switched = wish;
  }
  for (std::size_t board = 0; board < kBoards; ++board) {
    const DimmedValues& wish = wishes[board].dimmed;
    Told& told = told_[board];
    if (!line_->Held()[board] || told.dimmed == wish) continue;
    const auto before = std::exchange(told.dimmed, std::nullopt);
    if (line_->Dim(board, wish, before ? &*before : nullptr)) told.dimmed = wish;
  }
}

void BoardWork::Report(int asked) {
  const BoardSet held = line_->Held();
  support::Error trouble = line_->Trouble();
  MutexLock lock(mutex_);
  if (trouble.text.empty()) trouble = Missed(held);
  trouble_ = std::move(trouble);
  const std::int32_t answer = held[0] ? 0 : held[1] ? 1 : lightorgan::kNoBoard;
  for (int i = 0; i < asked; ++i) answers_.push_back(answer);
}

support::Error BoardWork::Missed(BoardSet held) const {
  for (std::size_t board = 0; board < kBoards && wanted_; ++board) {
    const bool missed = last_lit_[board] && clock_.Now() - *last_lit_[board] < kMissedFor;
    if (missed && !held[board])
      return support::Failed(support::ErrorCode::NotFound, support::Sentence::BoardMissing,
                             {std::to_string(board)});
  }
  return {};
}

}  // namespace platform::boards
