// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/PlainScan.h"

#include <atomic>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/AddFile.h"

namespace app {
namespace {

using catalogue::ScanMode;

template <typename Cells>
void Append(catalogue::track_table& table, const Cells& cells) {
  table.AddRow(std::vector<std::string_view>(cells.begin(), cells.end()));
}

}  // namespace

/// One job after the other; but for the atomics only they touch it.
class PlainScan::Scan final : public RunningScan {
 public:
  Scan(const PlainScan& owner, ScanWish wish, Done done)
      : tags_(owner.tags_),
        workers_(owner.workers_),
        gate_(owner.gate_),
        scratch_(owner.scratch_),
        wish_(std::move(wish)),
        report_(std::move(done)),
        found_{ScanFound::End::Complete,
               catalogue::track_table(wish_.mode == ScanMode::Music ? catalogue::TrackColumns()
                                                                    : catalogue::KaraokeColumns())} {}

  void Cancel() override { cancelled_ = true; }
  [[nodiscard]] ScanProgress Progress() const override { return {done_, total_, bytes_}; }

  static void Work(const std::shared_ptr<Scan>& scan);

 private:
  /// False at the end.
  bool GoOn();
  void List();
  void TakeOne(const std::string& path);

  catalogue::TagReader& tags_;
  support::Executor& workers_;
  const std::shared_ptr<WorkGate> gate_;
  catalogue::TagScratch& scratch_;
  const ScanWish wish_;
  const Done report_;
  std::optional<std::vector<std::string>> files_;
  ScanFound found_;
  std::atomic<bool> cancelled_{false};
  std::atomic<int> done_{0};
  std::atomic<int> total_{0};
  std::atomic<std::int64_t> bytes_{0};
};

void PlainScan::Scan::Work(const std::shared_ptr<Scan>& scan) {
  scan->gate_->Pass([&scan] {
    if (scan->GoOn()) {
      scan->workers_.Post([scan] { Work(scan); });
    } else {
      scan->report_(std::move(scan->found_));
    }
  });
}

bool PlainScan::Scan::GoOn() {
  const auto next = static_cast<std::size_t>(done_);
  if (cancelled_) {
    found_.end = ScanFound::End::Cancelled;
    return false;
  }
  if (!files_) {
    List();
    return found_.end != ScanFound::End::FolderMissing;
  }
  if (next == files_->size()) return false;
  TakeOne((*files_)[next]);
  ++done_;
  return true;
}

void PlainScan::Scan::List() {
  std::error_code error;
  files_.emplace();
  if (!std::filesystem::is_directory(wish_.folder, error)) {
    found_.end = ScanFound::End::FolderMissing;
    return;
  }
  for (const std::string_view mask : catalogue::MasksOf(wish_.mode)) {
    auto pass = catalogue::ListFolder(wish_.folder, mask, [this] { return !cancelled_ && !gate_->Closed(); });
    files_->insert(files_->end(), std::make_move_iterator(pass.files.begin()),
                   std::make_move_iterator(pass.files.end()));
    bytes_ += pass.bytes;
  }
  found_.bytes = bytes_;
  total_ = static_cast<int>(files_->size());
}

void PlainScan::Scan::TakeOne(const std::string& path) {
  // A song of MIDI events has no tag; it is left out until there is a reader for it.
  const bool song = catalogue::KindOf(path) == catalogue::FileKind::MidiSong;
  const auto read = song ? support::Error{support::ErrorCode::Unsupported, path} : tags_.Read(path);
  if (!read) {
    ++found_.left_out;
  } else if (wish_.mode == ScanMode::Music) {
    const auto mixing = catalogue::MixingTagsOf(read.Value(), scratch_);
    Append(found_.rows, catalogue::TrackRow(path, read.Value(), mixing));
  } else {
    Append(found_.rows, catalogue::KaraokeRow(path, read.Value()));
  }
}

PlainScan::PlainScan(catalogue::TagReader& tags, support::Executor& workers, std::shared_ptr<WorkGate> gate,
                     catalogue::TagScratch& scratch)
    : tags_(tags), workers_(workers), gate_(std::move(gate)), scratch_(scratch) {}

std::shared_ptr<RunningScan> PlainScan::Start(const ScanWish& wish, Done done) {
  auto scan = std::make_shared<Scan>(*this, wish, std::move(done));
  workers_.Post([scan] { Scan::Work(scan); });
  return scan;
}

}  // namespace app
