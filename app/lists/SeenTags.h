// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "catalogue/MixingTags.h"
#include "catalogue/TagScratch.h"
#include "catalogue/ports/TagReader.h"
#include "catalogue/track_table.h"
#include "support/Executor.h"

namespace app {

/// Reads the mixing tags of rows that a search shows, as they come into sight, and fills in what their cells
/// do not say yet.
///
/// Law: what a row says already was found or set later than its tag was written, so it stays. One file is
/// read at a time, each once a run; those that are in sight now come first, and what went out of sight unread
/// waits until it is seen again. Threads: the table's owner, who empties the box.
class SeenTags {
 public:
  /// filled: some row says more now, and nothing is left to read.
  SeenTags(catalogue::track_table& table, catalogue::TagReader& tags, catalogue::TagScratch& scratch,
           support::Executor& workers, std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box,
           std::function<void()> filled);

  /// Rows in sight; once a frame, quick.
  void Look(const std::vector<int>& rows);
  /// Grows with each cell that was filled in.
  [[nodiscard]] std::size_t Filled() const { return cells_; }

 private:
  struct Wish {
    std::string file;
    int row;
  };
  [[nodiscard]] bool SaysAll(int row) const;
  void ReadNext();
  void Take(const Wish& wish, const catalogue::MixingTags& tags);

  catalogue::track_table& table_;
  catalogue::TagReader& tags_;
  catalogue::TagScratch& scratch_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  const std::function<void()> filled_;
  std::vector<int> seen_;
  std::vector<Wish> wishes_;  ///< the next one last
  std::unordered_set<std::string> read_;
  std::size_t cells_ = 0;
  bool reading_ = false;
  bool fuller_ = false;  ///< than when filled_ was told last
};

}  // namespace app
