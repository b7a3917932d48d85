// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/boards/BoardSender.h"

#include <algorithm>
#include <condition_variable>
#include <optional>
#include <string>
#include <utility>

#include "support/Mutex.h"
#include "support/Sentences.h"

namespace platform::boards {
namespace {

using support::MutexLock;
using support::TimePoint;

/// So long after its last lamp was to be lit, a board is no longer missed.
constexpr auto kMissedFor = std::chrono::seconds(10);

}  // namespace

class BoardSender::Work {
 public:
  Work(std::unique_ptr<BoardLine> line, const Pace& pace) : line_(std::move(line)), pace_(pace) {}

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
  [[nodiscard]] support::Error TroubleNow() DJ_REQUIRES(mutex_);

  support::SteadyClock clock_;
  support::Mutex mutex_;
  std::condition_variable wake_;
  Wishes wishes_ DJ_GUARDED_BY(mutex_){};
  std::array<std::optional<TimePoint>, kBoards> last_lit_ DJ_GUARDED_BY(mutex_);
  std::optional<TimePoint> changed_since_ DJ_GUARDED_BY(mutex_);
  bool wanted_ DJ_GUARDED_BY(mutex_) = false;
  bool closing_ DJ_GUARDED_BY(mutex_) = false;
  bool ending_ DJ_GUARDED_BY(mutex_) = false;
  bool ended_ DJ_GUARDED_BY(mutex_) = false;
  int asked_ DJ_GUARDED_BY(mutex_) = 0;
  std::deque<std::int32_t> answers_ DJ_GUARDED_BY(mutex_);
  support::Error trouble_ DJ_GUARDED_BY(mutex_){};

  // The thread's own.
  std::unique_ptr<BoardLine> line_;
  const Pace pace_;
  TimePoint next_look_{};
  std::array<Told, kBoards> told_{};
};

void BoardSender::Work::Open() {
  MutexLock lock(mutex_);
  wanted_ = true;
  ++asked_;
  wake_.notify_all();
}

void BoardSender::Work::Close() {
  MutexLock lock(mutex_);
  wanted_ = false;
  closing_ = true;
  wake_.notify_all();
}

template <typename Change>
void BoardSender::Work::Note(int board, Change change) {
  if (board < 0 || board >= static_cast<int>(kBoards)) return;
  const auto at = static_cast<std::size_t>(board);
  MutexLock lock(mutex_);
  const Wish before = wishes_[at];
  change(wishes_[at]);
  if (wishes_[at] != Wish()) last_lit_[at] = clock_.Now();
  if (wishes_[at] == before || changed_since_) return;
  changed_since_ = clock_.Now();
  if (wanted_) wake_.notify_all();
}

std::optional<std::int32_t> BoardSender::Work::Answer() {
  MutexLock lock(mutex_);
  if (answers_.empty()) return std::nullopt;
  const std::int32_t answer = answers_.front();
  answers_.pop_front();
  return answer;
}

support::Error BoardSender::Work::Trouble() {
  MutexLock lock(mutex_);
  return trouble_;
}

bool BoardSender::Work::End() {
  const TimePoint deadline = clock_.Now() + pace_.patience;
  MutexLock lock(mutex_);
  if (wanted_) wishes_ = {};
  wanted_ = false;
  ending_ = true;
  wake_.notify_all();
  while (!ended_ && clock_.Now() < deadline) lock.WaitUntil(wake_, deadline);
  return ended_;
}

void BoardSender::Work::Run() {
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

BoardSender::Work::Task BoardSender::Work::NextTask() {
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

void BoardSender::Work::Look(BoardLine::Occasion occasion) {
  const BoardSet fresh = line_->Look(occasion);
  for (std::size_t board = 0; board < kBoards; ++board) {
    if (fresh[board]) told_[board] = {};
  }
  next_look_ = clock_.Now() + pace_.between_looks;
}

void BoardSender::Work::Send(const Wishes& wishes) {
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

void BoardSender::Work::Report(int asked) {
  const BoardSet held = line_->Held();
  MutexLock lock(mutex_);
  trouble_ = TroubleNow();
  const std::int32_t answer = held[0] ? 0 : held[1] ? 1 : lightorgan::kNoBoard;
  for (int i = 0; i < asked; ++i) answers_.push_back(answer);
}

support::Error BoardSender::Work::TroubleNow() {
  support::Error trouble = line_->Trouble();
  const BoardSet held = line_->Held();
  for (std::size_t board = 0; board < kBoards && trouble.text.empty(); ++board) {
    const bool missed = last_lit_[board] && clock_.Now() - *last_lit_[board] < kMissedFor;
    if (!missed || held[board] || !wanted_) continue;
    trouble = support::Failed(support::ErrorCode::NotFound, support::Sentence::BoardMissing,
                              {std::to_string(board)});
  }
  return trouble;
}

BoardSender::BoardSender(std::unique_ptr<BoardLine> line, Pace pace)
    : work_(std::make_shared<Work>(std::move(line), pace)) {}

BoardSender::BoardSender(std::unique_ptr<BoardLine> line) : BoardSender(std::move(line), Pace()) {}

BoardSender::~BoardSender() {
  if (!sender_.joinable()) return;
  if (work_->End()) {
    sender_.join();
  } else {
    sender_.detach();
  }
}

void BoardSender::OpenDevice(std::function<void(std::int32_t)> done) {
  owed_.push_back(std::move(done));
  work_->Open();
  if (!sender_.joinable()) sender_ = std::thread([work = work_] { work->Run(); });
}

void BoardSender::CloseDevices() {
  // Who closes what could not be opened has nothing to close: a board that is plugged in later is to be
  // found.
  if (!telling_of_none_) work_->Close();
}

void BoardSender::SetDigitalChannel(int board, int channel) {
  if (channel < 1 || channel > static_cast<int>(kChannels)) return;
  work_->Note(board, [channel](auto& wish) {
    wish.switched = static_cast<std::uint8_t>(wish.switched | (1 << (channel - 1)));
  });
}

void BoardSender::ClearDigitalChannel(int board, int channel) {
  if (channel < 1 || channel > static_cast<int>(kChannels)) return;
  work_->Note(board, [channel](auto& wish) {
    wish.switched = static_cast<std::uint8_t>(wish.switched & ~(1 << (channel - 1)));
  });
}

void BoardSender::OutputAllDigital(int board, std::uint8_t channels) {
  work_->Note(board, [channels](auto& wish) { wish.switched = channels; });
}

void BoardSender::OutputAnalogChannel(int board, int channel, std::int32_t value) {
  if (channel < 1 || channel > static_cast<int>(kChannels)) return;
  work_->Note(board, [channel, value](auto& wish) {
    wish.dimmed[static_cast<std::size_t>(channel - 1)] = static_cast<std::uint8_t>(std::clamp(value, 0, 255));
  });
}

void BoardSender::ClearAllDigital(int board) {
  work_->Note(board, [](auto& wish) { wish.switched = 0; });
}

void BoardSender::ClearAllAnalog(int board) {
  work_->Note(board, [](auto& wish) { wish.dimmed = {}; });
}

support::Error BoardSender::Trouble() {
  while (!owed_.empty()) {
    const auto answer = work_->Answer();
    if (!answer) break;
    const auto done = std::move(owed_.front());
    owed_.pop_front();
    telling_of_none_ = *answer == lightorgan::kNoBoard;
    done(*answer);
    telling_of_none_ = false;
  }
  return work_->Trouble();
}

}  // namespace platform::boards
