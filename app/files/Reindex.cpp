// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/Reindex.h"

#include <algorithm>
#include <utility>

#include "catalogue/TableChanges.h"

namespace app {
namespace {

using End = ScanFound::End;

/// Takes a few milliseconds.
constexpr std::size_t kRowsComparedAtOnce = 4096;

/// Without those that lie in another one.
std::vector<ScannedFolder> OutermostOf(const std::vector<std::string>& folders) {
  std::vector<ScannedFolder> outermost;
  for (const std::string& folder : folders) {
    const auto covers = [&folder](const std::string& other) { return LiesBelow(folder + "/", other); };
    const bool again = std::any_of(outermost.begin(), outermost.end(),
                                   [&](const ScannedFolder& one) { return covers(one.path); });
    const bool inside = std::any_of(folders.begin(), folders.end(), [&](const std::string& other) {
      return covers(other) && !LiesBelow(other + "/", folder);
    });
    if (!again && !inside) outermost.push_back({folder, true});
  }
  return outermost;
}

int RowsBelow(const catalogue::track_table& table, int column, const std::string& folder) {
  int rows = 0;
  table.VisitColumn(column, [&](int, std::string_view path) {
    rows += LiesBelow(path, folder) ? 1 : 0;
    return true;
  });
  return rows;
}

}  // namespace

/// The owner's, but for the rows while a worker makes changes to them.
struct Reindex::Scan {
  Scan(std::vector<ScannedFolder> trees, catalogue::NameRule rule, Done when_done,
       const catalogue::track_table& table)
      : folders(std::move(trees)),
        names(std::move(rule)),
        report(std::move(when_done)),
        copy(table),
        found{{}, catalogue::track_table(table.Columns())},
        joined{catalogue::track_table(table.Columns()), catalogue::track_table(table.Columns()), 0, {}} {}

  std::vector<ScannedFolder> folders;
  const catalogue::NameRule names;
  const Done report;
  std::size_t next = 0;         ///< folder
  ScanProgress before;          ///< of the folders that are done
  catalogue::track_table copy;  ///< the table as the rows found know it
  ScanFound found;              ///< of all folders
  int files = 0;
  ScanRows joined;
  std::vector<std::pair<std::string, int>> away;  ///< folders that are not there, and their rows
  bool asked = false;
  bool kept_gone = false;  ///< rows stay though their files are gone
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

void Reindex::Start(const std::vector<std::string>& folders, const catalogue::NameRule& names, Done done) {
  Cancel();
  scan_ = std::make_shared<Scan>(OutermostOf(folders), names, std::move(done), table_);
  ScanNext(scan_);
}

void Reindex::ScanNext(const std::shared_ptr<Scan>& scan) {
  const auto running = port_.Start({mode_, scan->folders[scan->next].path, scan->names},
                                   [this, box = box_, scan, moved = moved_, store = store_](ScanFound found) {
                                     Add(*scan, std::move(found));
                                     if (++scan->next == scan->folders.size()) Join(*scan, store, moved);
                                     box->Post([this, scan] { GoOn(scan); });
                                   });
  if (scan_ == scan) running_ = running;
}

void Reindex::GoOn(const std::shared_ptr<Scan>& scan) {
  const bool all = scan->next == scan->folders.size();
  if (all || scan->cancelled || scan->found.end != End::Complete) return Take(scan);
  const ScanProgress folder = running_->Progress();
  scan->before.done += folder.done;
  scan->before.total += folder.total;
  scan->before.bytes += folder.bytes;
  ScanNext(scan);
}

void Reindex::Join(Scan& scan, catalogue::SideStore* store, const FileMoved& moved) {
  if (scan.found.end != End::Complete) return;
  scan.joined = JoinRows(scan.copy, scan.found, scan.folders, store);
  for (const auto& file : scan.joined.moved) {
    if (moved) moved(file.from, file.to);
  }
  const bool music = scan.copy.Columns().size() == catalogue::TrackColumns().size();
  const int column = music ? catalogue::track::kFilename : catalogue::karaoke::kFilename;
  for (const ScannedFolder& folder : scan.folders) {
    if (!folder.there) scan.away.emplace_back(folder.path, RowsBelow(scan.copy, column, folder.path));
  }
}

/// A worker's, as the scan is until its rows are taken.
void Reindex::Add(Scan& scan, ScanFound found) {
  ScannedFolder& folder = scan.folders[scan.next];
  ScanFound& all = scan.found;
  const bool missing = found.end == End::FolderMissing;
  folder.there = !missing && (found.rows.Rows() > 0 || found.left_out > 0 || !found.unreadable.empty());
  const bool last = scan.next + 1 == scan.folders.size();
  const bool none_there = last && missing &&
                          std::none_of(scan.folders.begin(), scan.folders.end() - 1,
                                       [](const ScannedFolder& one) { return one.there; });
  if (found.end != End::Complete && (!missing || none_there)) {
    all.end = found.end;
    all.where = found.where;
    return;
  }
  all.fresh.resize(static_cast<std::size_t>(all.rows.Rows()));
  all.fresh.insert(all.fresh.end(), found.fresh.begin(), found.fresh.end());
  all.rows.AppendAll(std::move(found.rows));
  all.left_out += found.left_out;
  all.unreadable.insert(all.unreadable.end(), found.unreadable.begin(), found.unreadable.end());
  scan.files = all.rows.Rows();
}

void Reindex::Cancel() {
  if (scan_ == nullptr) return;
  scan_->cancelled = true;
  running_->Cancel();
}

ScanProgress Reindex::Progress() const {
  if (scan_ == nullptr) return {};
  const ScanProgress folder = running_->Progress();
  const ScanProgress& before = scan_->before;
  // Zero stands for listing, which the first folder alone shows.
  const int total = folder.total == 0 && before.total == 0 ? 0 : before.total + folder.total;
  return {before.done + folder.done, total, before.bytes + folder.bytes};
}

void Reindex::Take(const std::shared_ptr<Scan>& scan) {
  if (scan->cancelled) scan->found.end = End::Cancelled;
  if (scan->found.end != End::Complete) return Finish(scan);
  if (scan->joined.gone.Rows() > 0 && !std::exchange(scan->asked, true)) return AskFor(scan);
  if (table_.IsCopyOf(scan->copy)) return Finish(scan);
  CatchUp(scan);
}

void Reindex::AskFor(const std::shared_ptr<Scan>& scan) {
  const auto answered = [this, scan](Answer answer) {
    scan->kept_gone = answer == Answer::Keep;
    if (scan->kept_gone) {
      catalogue::track_table gone = scan->joined.gone;
      scan->joined.rows.AppendAll(std::move(gone));
    }
    Take(scan);
  };
  if (!ask_) return answered(Answer::Keep);
  const catalogue::track_table& gone = scan->joined.gone;
  ask_({table_.Rows(), scan->files, gone.Rows(), std::string(gone.Cell(1, name_column_))}, answered);
}

/// By a worker, as often as the table has changed meanwhile; the last few changes at once, or a table that
/// keeps changing would never be caught up with.
void Reindex::CatchUp(const std::shared_ptr<Scan>& scan) {
  if (table_.RowsNotSharedWith(scan->copy).size() <= kRowsComparedAtOnce) {
    const auto changes = catalogue::ChangesSince(scan->copy, table_, name_column_);
    if (changes.Size() <= catalogue::kFewChanges) {
      catalogue::Apply(changes, scan->joined.rows, name_column_);
      scan->copy = table_;
      return Finish(scan);
    }
  }
  workers_.Post([this, scan, column = name_column_, gate = gate_, box = box_, now = table_] {
    gate->Pass([&] {
      catalogue::Apply(catalogue::ChangesSince(scan->copy, now, column), scan->joined.rows, column);
      scan->copy = now;
      box->Post([this, scan] { Take(scan); });
    });
  });
}

void Reindex::Finish(const std::shared_ptr<Scan>& scan) {
  if (scan_ == scan) scan_ = nullptr;
  Outcome outcome;
  outcome.replaced = scan->found.end == End::Complete;
  if (outcome.replaced) {
    table_ = std::move(scan->joined.rows);
    outcome.rows = table_.Rows();
    outcome.found = scan->files;
    outcome.gone = scan->kept_gone ? 0 : scan->joined.gone.Rows();
    outcome.moved = scan->joined.moved;
  }
  outcome.sentence = SentenceOn(*scan, outcome);
  // A million rows take a while to go.
  workers_.Post([before = std::move(scan->copy), gone = std::move(scan->joined.gone)] {});
  if (scan->report) scan->report(outcome);
}

std::string Reindex::SentenceOn(const Scan& scan, const Outcome& outcome) const {
  using support::Sentence;
  const ScanFound& found = scan.found;
  if (found.end == End::FolderMissing) return say_(Sentence::FolderMissing, {found.where});
  if (found.end == End::FolderLost) return say_(Sentence::FolderLost, {found.where});
  std::string all;
  const auto add = [&all](const std::string& sentence) { all += (all.empty() ? "" : " ") + sentence; };
  if (!outcome.replaced) return all;
  for (const auto& [folder, rows] : scan.away) {
    if (rows > 0 || scan.folders.size() > 1) add(say_(Sentence::RowsStay, {folder, std::to_string(rows)}));
  }
  if (!outcome.moved.empty()) add(say_(Sentence::FilesMoved, {std::to_string(outcome.moved.size())}));
  if (outcome.gone > 0) add(say_(Sentence::RowsGone, {std::to_string(outcome.gone)}));
  if (scan.kept_gone) add(say_(Sentence::RowsKept, {std::to_string(scan.joined.gone.Rows())}));
  if (found.left_out > 0) add(say_(Sentence::FilesLeftOut, {std::to_string(found.left_out)}));
  if (!found.unreadable.empty()) {
    add(say_(Sentence::FoldersLeftOut, {std::to_string(found.unreadable.size()), found.unreadable.front()}));
  }
  return all;
}

}  // namespace app
