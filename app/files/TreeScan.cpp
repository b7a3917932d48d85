// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/TreeScan.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "app/files/FolderGroup.h"
#include "app/work/Lanes.h"
#include "catalogue/FolderScan.h"

namespace app {
namespace {

using Walk = catalogue::FolderWalk;

// Tasks are a millisecond or so each where the disk is quick.
constexpr std::size_t kFilesInGroup = 512, kFoldersInGroup = 64, kFilesAtOnce = 16;

}  // namespace

/// Its tasks run on the lanes; the walk's one at a time, those of a group as the group says.
class TreeScan::Scan final : public RunningScan, public std::enable_shared_from_this<Scan> {
 public:
  Scan(const TreeScan& owner, ScanWish wish, Done done)
      : ports_(owner.ports_),
        wish_(std::move(wish)),
        report_(std::move(done)),
        walk_(ports_.folders, wish_.folder, wish_.mode) {}

  void Begin(const std::shared_ptr<Lanes>& lanes) {
    lanes_ = lanes;
    lanes->Push([this] { List(); });
  }
  void Cancel() override {
    cancelled_ = true;
    if (const auto lanes = lanes_.lock()) lanes->Drop();
  }
  [[nodiscard]] ScanProgress Progress() const override {
    return {done_, listed_ ? total_.load() : 0, bytes_};
  }
  void End();

 private:
  struct Work {
    explicit Work(FolderGroup of) : group(std::move(of)) {}
    FolderGroup group;
    std::atomic<int> parts{0};  ///< of it that are still being read
  };
  void Push(std::function<void()> task, Lanes::Turn turn = Lanes::Turn::Last);
  void List();
  void Match(Work& work);
  void Finish(Work& work);
  void Assemble(ScanFound& found);

  const TreePorts ports_;
  const ScanWish wish_;
  const Done report_;
  std::weak_ptr<Lanes> lanes_;
  Walk walk_;
  std::vector<std::unique_ptr<Work>> works_;  ///< in the order of the scan; the walk's until the end
  std::atomic<bool> cancelled_{false};
  std::atomic<bool> listed_{false};
  std::atomic<int> done_{0};
  std::atomic<int> total_{0};
  std::atomic<std::int64_t> bytes_{0};
};

void TreeScan::Scan::Push(std::function<void()> task, Lanes::Turn turn) {
  if (const auto lanes = lanes_.lock(); lanes != nullptr && !cancelled_) lanes->Push(std::move(task), turn);
}

/// Lists the folders of one group.
void TreeScan::Scan::List() {
  auto work = std::make_unique<Work>(FolderGroup(wish_.mode, wish_.names));
  FolderGroup& group = work->group;
  for (std::size_t steps = 0; steps < 2 * kFoldersInGroup && group.Files() < kFilesInGroup; ++steps) {
    if (walk_.Now() != Walk::State::Going || cancelled_) break;
    auto folder = walk_.Step();
    if (folder && !folder->files.empty()) group.Add(std::move(*folder));
  }
  total_ += static_cast<int>(group.Files());
  if (walk_.Now() == Walk::State::Going) {
    Push([this] { List(); }, Lanes::Turn::First);
  } else {
    listed_ = true;
  }
  if (group.Folders() == 0) return;
  works_.push_back(std::move(work));
  Push([this, &last = *works_.back()] { Match(last); });
}

void TreeScan::Scan::Match(Work& work) {
  const auto to_read = work.group.Match(ports_);
  bytes_ += work.group.Bytes();
  done_ += static_cast<int>(work.group.Files() - to_read.size());
  if (to_read.empty()) return Finish(work);
  work.parts = static_cast<int>((to_read.size() + kFilesAtOnce - 1) / kFilesAtOnce);
  for (std::size_t from = 0; from < to_read.size(); from += kFilesAtOnce) {
    const std::size_t count = std::min(kFilesAtOnce, to_read.size() - from);
    std::vector<FolderGroup::Place> part(to_read.begin() + static_cast<std::ptrdiff_t>(from),
                                         to_read.begin() + static_cast<std::ptrdiff_t>(from + count));
    Push([this, &work, part = std::move(part)] {
      for (const FolderGroup::Place& place : part) {
        if (cancelled_) return;
        work.group.Read(ports_, place);
        ++done_;
      }
      if (--work.parts == 0) Finish(work);
    });
  }
}

void TreeScan::Scan::Finish(Work& work) {
  work.group.Finish(ports_.store);
}

void TreeScan::Scan::Assemble(ScanFound& found) {
  for (std::size_t mask = 0; mask < catalogue::MasksOf(wish_.mode).size(); ++mask) {
    for (const auto& work : works_) {
      found.rows.AppendAll(std::move(work->group.Rows()[mask]));
      const std::vector<bool>& fresh = work->group.Fresh()[mask];
      found.fresh.insert(found.fresh.end(), fresh.begin(), fresh.end());
    }
  }
  for (const auto& work : works_) {
    found.left_out += work->group.LeftOut();
    for (const FolderGroup::Known& folder : work->group.FoldersToProve()) {
      if (found.where.empty() && !walk_.StillThere(folder.path, folder.identity)) found.where = folder.path;
    }
  }
  if (found.where.empty()) return;
  found.end = ScanFound::End::FolderLost;
  found.rows.Clear();
}

void TreeScan::Scan::End() {
  using End = ScanFound::End;
  const auto columns =
      wish_.mode == catalogue::ScanMode::Music ? catalogue::TrackColumns() : catalogue::KaraokeColumns();
  ScanFound found{End::Complete, catalogue::track_table(columns)};
  found.bytes = bytes_;
  found.unreadable = walk_.Unreadable();
  found.where = walk_.Where();
  if (cancelled_) {
    found.end = End::Cancelled;
  } else if (walk_.Now() != Walk::State::Complete) {
    found.end = walk_.Now() == Walk::State::RootMissing ? End::FolderMissing : End::FolderLost;
  } else {
    Assemble(found);
  }
  works_.clear();
  report_(std::move(found));
}

TreeScan::TreeScan(const TreePorts& ports, support::Executor& workers, std::shared_ptr<WorkGate> gate,
                   std::shared_ptr<const IdleCores> cores)
    : ports_(ports), workers_(workers), gate_(std::move(gate)), cores_(std::move(cores)) {}

std::shared_ptr<RunningScan> TreeScan::Start(const ScanWish& wish, Done done) {
  auto scan = std::make_shared<Scan>(*this, wish, std::move(done));
  // The lanes hold the scan, whose tasks hold it by its address.
  scan->Begin(std::make_shared<Lanes>(workers_, gate_, cores_, [scan] { scan->End(); }));
  return scan;
}

}  // namespace app
