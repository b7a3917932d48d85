// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include "app/resume/Journal.h"
#include "app/work/WorkGate.h"
#include "support/Clock.h"
#include "support/Executor.h"
#include "support/ports/FileSaver.h"

namespace app {

/// Keeps the newest journal on the disk.
///
/// Every journal goes to the first file at once, without waiting for the disk: nothing that ends the program
/// alone can lose it. The second file is flushed, but only every kSafe, so that a stick or card is spared: it
/// is what a power cut leaves. A disk that is slow with the one does not hold up the other, and whoever hands
/// a journal over never waits; of several that came meanwhile the newest is written. A run of failing saves
/// is told once, and tried again every kRetry. Threads: Keep, KeepFirst and Tick from one; End after them.
/// The complaint is made by a worker.
class JournalKeeper {
 public:
  static constexpr std::chrono::seconds kSafe{4};
  static constexpr std::chrono::seconds kRetry{4};
  using Complain = std::function<void(const support::Error&)>;

  JournalKeeper(support::FileSaver& files, support::Executor& writer, const support::Clock& clock,
                std::shared_ptr<WorkGate> gate, const support::ProgramFolder& folder, Complain complain);

  /// All that come get higher numbers than this one, which is on the disk.
  void Follow(std::uint64_t number) { number_ = number; }
  /// It gets its number here.
  void Keep(Journal journal);
  /// Now and then while nothing changes: what was kept last is flushed too.
  void Tick();
  /// Before all others; then comes, by the worker, when the first file is written or cannot be.
  void KeepFirst(Journal journal, std::function<void()> then);
  /// The evening ended as it should: there is nothing to go on with. Requires: the gate is closed.
  void End();

 private:
  struct State;
  struct Slot;

  void Offer(Journal journal);
  void Write(std::size_t slot, std::function<void()> then);
  static bool WriteNewest(State& state, std::size_t slot);

  support::Executor& writer_;
  const support::Clock& clock_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<State> state_;  // with jobs that may start after the keeper is gone
  std::uint64_t number_ = 0;
  std::uint64_t flushed_number_ = 0;
  support::TimePoint flushed_{support::Duration::min() / 2};  ///< never yet
};

}  // namespace app
