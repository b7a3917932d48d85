// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/resume/JournalKeeper.h"

#include <array>
#include <filesystem>
#include <system_error>
#include <utility>

#include "support/Mutex.h"

namespace app {
namespace {

constexpr std::size_t kSwiftFile = 0, kFlushedFile = 1;

}  // namespace

struct JournalKeeper::Slot {
  std::filesystem::path path;
  std::uint64_t written = 0;  ///< number of the journal that is there, or could not be put there
  bool busy = false;          ///< a worker is at it
  support::TimePoint retry{};
};

struct JournalKeeper::State {
  State(support::FileSaver& saver, const support::Clock& time, Complain complainer)
      : files(saver), clock(time), complain(std::move(complainer)) {}

  support::FileSaver& files;
  const support::Clock& clock;
  const Complain complain;
  support::Mutex mutex;
  std::shared_ptr<const Journal> newest DJ_GUARDED_BY(mutex);  // with the workers that write it
  std::array<Slot, 2> slots DJ_GUARDED_BY(mutex);
  bool told DJ_GUARDED_BY(mutex) = false;
  bool over DJ_GUARDED_BY(mutex) = false;
};

JournalKeeper::JournalKeeper(support::FileSaver& files, support::Executor& writer,
                             const support::Clock& clock, std::shared_ptr<WorkGate> gate,
                             const support::ProgramFolder& folder, Complain complain)
    : writer_(writer),
      clock_(clock),
      gate_(std::move(gate)),
      state_(std::make_shared<State>(files, clock, std::move(complain))) {
  support::MutexLock lock(state_->mutex);
  for (const std::size_t slot : {kSwiftFile, kFlushedFile})
    state_->slots[slot].path = folder.Native(kJournalFiles[slot]);
}

void JournalKeeper::Offer(Journal journal) {
  journal.number = ++number_;
  support::MutexLock lock(state_->mutex);
  state_->newest = std::make_shared<const Journal>(std::move(journal));
}

void JournalKeeper::Keep(Journal journal) {
  Offer(std::move(journal));
  Write(kSwiftFile, nullptr);
  Tick();
}

void JournalKeeper::Tick() {
  if (flushed_number_ == number_ || clock_.Now() - flushed_ < kSafe) return;
  flushed_ = clock_.Now();
  flushed_number_ = number_;
  Write(kFlushedFile, nullptr);
}

void JournalKeeper::KeepFirst(Journal journal, std::function<void()> then) {
  Offer(std::move(journal));
  Write(kSwiftFile, std::move(then));
}

void JournalKeeper::Write(std::size_t slot, std::function<void()> then) {
  {
    support::MutexLock lock(state_->mutex);
    Slot& one = state_->slots[slot];
    if (one.busy || clock_.Now() < one.retry) return;
    one.busy = true;
  }
  writer_.Post([state = state_, gate = gate_, slot, then = std::move(then)] {
    gate->Pass([&] {
      while (WriteNewest(*state, slot)) {
      }
      if (then) then();
    });
  });
}

/// True when a newer one may have come meanwhile, which is to be written too.
bool JournalKeeper::WriteNewest(State& state, std::size_t slot) {
  std::filesystem::path path;
  std::shared_ptr<const Journal> journal;
  {
    support::MutexLock lock(state.mutex);
    Slot& one = state.slots[slot];
    one.busy = !state.over && state.newest != nullptr && state.newest->number > one.written;
    if (!one.busy) return false;
    journal = state.newest;
    one.written = journal->number;
    path = one.path;
  }
  const std::string text = JournalText(*journal);
  const auto saved =
      slot == kFlushedFile ? state.files.Save(path, text) : state.files.SaveSwiftly(path, text);
  bool tell = false;
  {
    support::MutexLock lock(state.mutex);
    if (!saved) state.slots[slot].retry = state.clock.Now() + kRetry;
    if (!saved || slot == kFlushedFile) state.slots[slot].busy = false;
    tell = !saved && !std::exchange(state.told, true);
    if (saved && slot == kSwiftFile) state.told = false;
  }
  if (tell) state.complain(saved.Failure());
  return saved.Ok() && slot == kSwiftFile;
}

void JournalKeeper::End() {
  std::array<std::filesystem::path, 2> paths;
  {
    support::MutexLock lock(state_->mutex);
    state_->over = true;
    for (const std::size_t slot : {kSwiftFile, kFlushedFile}) paths[slot] = state_->slots[slot].path;
  }
  std::error_code ignored;  // what cannot be removed could not be written either
  for (const auto& path : paths) std::filesystem::remove(path, ignored);
}

}  // namespace app
