// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/Reindex.h"

#include <utility>

namespace app {

/// The owner's, but for the rows while a worker makes changes to them.
struct Reindex::Scan {
  Scan(std::string tree, Done when_done, const catalogue::track_table& table)
      : folder(std::move(tree)),
        report(std::move(when_done)),
        copy(table),
        found{{}, catalogue::track_table(table.Columns())} {}

  const std::string folder;
  const Done report;
  catalogue::track_table copy;  ///< the table as the rows found know it
  ScanFound found;
  catalogue::ScanComparison comparison;
  bool cancelled = false;
};

Reindex::Reindex(catalogue::track_table& table, catalogue::ScanMode mode, ScanPort& port,
                 support::Executor& workers, std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box,
                 const support::Sentences& say)
    : table_(table),
      mode_(mode),
      name_column_(mode == catalogue::ScanMode::Music ? catalogue::track::kFilename
                                                      : catalogue::karaoke::kFilename),
      port_(port),
      workers_(workers),
      gate_(std::move(gate)),
      box_(std::move(box)),
      say_(say) {}

void Reindex::Start(const std::string& folder, const catalogue::NameRule& names, Done done) {
  Cancel();
  const auto scan = std::make_shared<Scan>(folder, std::move(done), table_);
  scan_ = scan;
  running_ = port_.Start({mode_, folder, names}, [this, box = box_, scan, moved = moved_](ScanFound found) {
    Compare(*scan, found, moved);
    box->Post([this, scan, found = std::move(found)]() mutable {
      scan->found = std::move(found);
      Take(scan);
    });
  });
}

/// The copy is nobody's else until the rows are taken.
void Reindex::Compare(Scan& scan, ScanFound& found, const FileMoved& moved) {
  if (found.end != ScanFound::End::Complete) return;
  scan.comparison = catalogue::CompareScans(scan.copy, found.rows);
  catalogue::CarryMixing(scan.comparison, scan.copy, found.rows);
  for (const auto& file : scan.comparison.moved) {
    if (moved) moved(file.from, file.to);
  }
}

void Reindex::Cancel() {
  if (scan_ == nullptr) return;
  scan_->cancelled = true;
  running_->Cancel();
}

ScanProgress Reindex::Progress() const {
  return scan_ == nullptr ? ScanProgress{} : running_->Progress();
}

void Reindex::Take(const std::shared_ptr<Scan>& scan) {
  if (scan->cancelled) scan->found.end = ScanFound::End::Cancelled;
  if (scan->found.end != ScanFound::End::Complete) return Finish(scan);
  auto changes = catalogue::ChangesSince(scan->copy, table_, name_column_);
  if (changes.Empty()) return Finish(scan);
  scan->copy = table_;
  CatchUp(scan, std::move(changes));
}

/// The table may change again meanwhile, so it is compared again.
void Reindex::CatchUp(const std::shared_ptr<Scan>& scan, catalogue::TableChanges changes) {
  workers_.Post([this, scan, column = name_column_, gate = gate_, box = box_, changes = std::move(changes)] {
    gate->Pass([&] {
      catalogue::Apply(changes, scan->found.rows, column);
      box->Post([this, scan] { Take(scan); });
    });
  });
}

void Reindex::Finish(const std::shared_ptr<Scan>& scan) {
  if (scan_ == scan) scan_ = nullptr;
  Outcome outcome;
  outcome.replaced = scan->found.end == ScanFound::End::Complete;
  if (outcome.replaced) {
    table_ = std::move(scan->found.rows);
    outcome.rows = table_.Rows();
    outcome.gone = scan->comparison.gone;
    outcome.moved = scan->comparison.moved;
  }
  outcome.sentence = SentenceOn(scan->found, outcome);
  if (scan->report) scan->report(outcome);
}

std::string Reindex::SentenceOn(const ScanFound& found, const Outcome& outcome) const {
  using support::Sentence;
  if (found.end == ScanFound::End::FolderMissing) return say_(Sentence::FolderMissing, {found.where});
  if (found.end == ScanFound::End::FolderLost) return say_(Sentence::FolderLost, {found.where});
  std::string all;
  const auto add = [&all](const std::string& sentence) { all += (all.empty() ? "" : " ") + sentence; };
  if (!outcome.replaced) return all;
  if (!outcome.moved.empty()) add(say_(Sentence::FilesMoved, {std::to_string(outcome.moved.size())}));
  if (outcome.gone > 0) add(say_(Sentence::RowsGone, {std::to_string(outcome.gone)}));
  if (found.left_out > 0) add(say_(Sentence::FilesLeftOut, {std::to_string(found.left_out)}));
  if (!found.unreadable.empty()) {
    add(say_(Sentence::FoldersLeftOut, {std::to_string(found.unreadable.size()), found.unreadable.front()}));
  }
  return all;
}

}  // namespace app
