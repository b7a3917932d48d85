// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <ctime>
#include <functional>
#include <memory>
#include <string>

#include "app/sound/DeckView.h"
#include "app/work/WorkGate.h"
#include "catalogue/track_table.h"
#include "support/Clock.h"
#include "support/Executor.h"
#include "support/ProgramFolder.h"
#include "support/ports/FileSaver.h"

namespace app {

struct WorkstationView;

/// Local time as the user's wall clock shows it.
using LocalTime = std::function<std::tm()>;
/// Of the system.
[[nodiscard]] std::tm LocalTimeNow();
/// "2026-11-21": the day on which an evening began; it ends at six in the morning.
[[nodiscard]] std::string EveningOf(std::tm local_time);
/// Data file of an evening's history.
[[nodiscard]] std::string HistoryFile(const std::string& evening);

/// Tells which tracks were heard: for half a minute, or to their half. Threads: the conductor.
class HeardTracks {
 public:
  using Heard = std::function<void(const DeckView& deck)>;
  HeardTracks(const support::Clock& clock, Heard heard);
  /// Of decks 1 to 3 and the song of the synthesiser, as a deck's view would show it; what is listened to
  /// beforehand does not count.
  void Tick(const WorkstationView& view, const DeckView& song);
  /// A deck goes on with a file that was told of in another run of the program.
  void GoOn(int deck, const std::string& file);

 private:
  struct Listening {
    std::string file;
    support::Duration heard{};
    bool told = false;
  };
  const support::Clock& clock_;
  Heard told_;
  support::TimePoint last_{};
  void Listen(Listening& listening, const DeckView& deck, support::Duration passed);

  static constexpr std::size_t kHeardDecks = 3;
  std::array<Listening, kHeardDecks + 1> heard_;  ///< the song last
};

/// Keeps the tracks of an evening in a playlist of its date, written by a worker after each one.
///
/// A run of failing saves is told once. Law: what was added is on the disk after Flush, or a sentence said
/// why not. Threads: Add from one, Flush after it.
class EveningLog {
 public:
  using Complain = std::function<void(const support::Error&)>;
  EveningLog(support::FileSaver& files, const support::ProgramFolder& folder, support::Executor& workers,
             std::shared_ptr<WorkGate> gate, Complain complain);

  /// The track's row, of this catalogue where it knows the file, goes to the end of the evening's list.
  void Add(const std::string& evening, const DeckView& track,
           std::shared_ptr<const catalogue::track_table> catalogue);
  /// Saves on this thread what no worker has begun to save. Requires: the gate is closed.
  void Flush();

 private:
  struct HeardTrack;
  struct State;
  static void SaveWaiting(State& state);

  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<State> state_;  // with the jobs, which may outlive this
};

}  // namespace app
