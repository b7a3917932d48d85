// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/files/IntakeBatch.h"
#include "app/files/IntakeOrder.h"
#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "catalogue/track_table.h"
#include "support/Executor.h"
#include "support/ports/FileSaver.h"

namespace app {

/// Takes files, folders and playlists into the lists: analysed one after the other on workers, put into their
/// list together and in the given order.
///
/// A file that the catalogue or the karaoke table holds already gets no second row there, also where it came
/// in by another way meanwhile. Each file is a job of its own, so that a deck's file does not wait behind a
/// thousand others; the orders of one list wait for each other, those of different lists do not. Law: what
/// was handed over and is not in its list when the program closes is gone on with by the next run. Threads:
/// the tables' owner, who empties the box.
class FileIntake {
 public:
  using Done = std::function<void(const IntakeOutcome& outcome)>;
  struct Tables {
    catalogue::track_table& catalogue;
    catalogue::track_table& karaoke;
    std::array<catalogue::track_table, 3>& playlists;
    [[nodiscard]] catalogue::track_table& Of(ListId list) const;
  };
  struct Outside {
    IntakeBatch::Ports ports;
    support::Executor& workers;
    support::FileSaver& files;
    std::filesystem::path orders;         ///< see kOrdersFile
    std::function<void(ListId)> changed;  ///< the catalogue or the karaoke table got rows
    Done went_on;                         ///< with an order of the last run
    /// A playlist got rows, the first one there.
    std::function<void(const catalogue::track_table& playlist, int first_row)> listed = nullptr;
    /// How names are made for what is begun now; null: as where nothing is set.
    std::function<catalogue::NameRule()> names = nullptr;
  };

  FileIntake(Outside outside, const Tables& tables, std::shared_ptr<WorkGate> gate,
             std::shared_ptr<Mailbox> box);

  /// Goes on with what the last run left.
  void StartUp();
  void Add(IntakeOrder order, Done done);
  /// Of all orders of a list.
  [[nodiscard]] AddingProgress Progress(ListId list) const;
  /// Of a list: what is done stays, the rest is dropped.
  void Stop(ListId list);
  /// Keeps what is left. Requires: the gate is closed.
  void Flush();

 private:
  struct Waiting {
    std::shared_ptr<const IntakeOrder> order;  // with its batch
    Done done;
  };
  struct Line {
    std::deque<Waiting> orders;          ///< the first one is under way
    std::shared_ptr<IntakeBatch> batch;  // with its job
    int looks = 0;                       ///< at what came into the tables meanwhile
  };
  [[nodiscard]] Line& Of(ListId list) { return lines_[static_cast<std::size_t>(list)]; }
  void StartNext(ListId list);
  void Finish(ListId list);
  void PutIn(IntakeBatch& batch);
  [[nodiscard]] int PlaceIn(const catalogue::track_table& playlist, const IntakeOrder& order) const;
  struct Job;
  static void Work(const std::shared_ptr<Job>& job);

  Outside outside_;
  Tables tables_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  std::array<Line, kLists> lines_;
};

}  // namespace app
