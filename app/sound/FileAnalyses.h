// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>

#include "app/sound/DeckView.h"
#include "app/work/FileLocks.h"
#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "catalogue/AnalysisParts.h"
#include "catalogue/ports/SideStore.h"
#include "decks/AnalysisPass.h"
#include "decks/MixPointScan.h"
#include "music/TrackAnalysis.h"
#include "support/Executor.h"

namespace app {

/// What an analysis reads, uses and is kept in.
struct AnalysisPorts {
  decks::AudioEngine& engine;
  decks::SoundControl& sound;
  decks::AnalysisTools tools;
  catalogue::SideStore* store = nullptr;  ///< null: nothing is kept
  std::shared_ptr<FileLocks> locks = std::make_shared<FileLocks>();
};

/// Has the decks' files analysed by workers, and keeps what they found.
///
/// Law: a file is read once, however many decks hold it, and not at all when its analysis is kept; another
/// threshold looks for its mix points alone. A file that no deck holds any more is not read to its end. A job
/// reads a second or two and then lets the next one have its turn. Threads: the conductor.
class FileAnalyses {
 public:
  using Found = std::function<void(const std::string& filename, const music::TrackAnalysis& analysis,
                                   const catalogue::FileMarks& marks)>;
  using Complain = std::function<void(const support::Error&)>;

  /// Answers come through the box, which the conductor empties. complain is called by a worker, once, when
  /// nothing can be kept.
  FileAnalyses(const AnalysisPorts& ports, support::Executor& workers, std::shared_ptr<WorkGate> gate,
               std::shared_ptr<Mailbox> box, Complain complain);

  /// Called on the conductor with each analysis that is complete, also one that was kept.
  void OnFound(Found found) { *found_ = std::move(found); }

  /// The deck holds this file now. Requires: the file is open, so that nothing waits for it.
  void Hold(int deck, const decks::MixPointRequest& request);
  /// The deck holds nothing.
  void Drop(int deck);
  /// What is known of the deck's file; null until anything is, and by and by more.
  [[nodiscard]] std::shared_ptr<const music::TrackAnalysis> Of(int deck) const;
  /// What a hand did to the deck's file; nothing for an empty deck, and until a worker has read it.
  [[nodiscard]] catalogue::FileMarks MarksOf(int deck) const;
  /// A hand did more; kept by a worker. Nothing for an empty deck.
  void ChangeMarks(int deck, const std::function<void(catalogue::FileMarks&)>& change);
  /// From 0 to 1, over and over, while a worker is at the deck's file; else 0.
  [[nodiscard]] double Busy(int deck) const;

 private:
  struct Shared;
  struct Job;

  std::shared_ptr<Found> found_ = std::make_shared<Found>();
  std::shared_ptr<Shared> shared_;
  std::array<std::shared_ptr<Job>, kDecks> jobs_;  // with the worker, and between decks with the same file
};

}  // namespace app
