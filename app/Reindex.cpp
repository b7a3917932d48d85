// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Reindex.h"

#include <atomic>
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include "catalogue/AddFile.h"

namespace app {
namespace {

template <typename Cells>
void Append(catalogue::track_table& table, const Cells& cells) {
  table.AddRow(std::vector<std::string_view>(cells.begin(), cells.end()));
}

}  // namespace

/// The job's until it has reported, then the owner's; but for the atomics.
struct Reindex::Scan {
  Scan(std::string tree, Done when_done, const Reindex& owner)
      : folder(std::move(tree)),
        report(std::move(when_done)),
        mode(owner.mode_),
        tags(owner.tags_),
        workers(owner.workers_),
        gate(owner.gate_),
        scratch(owner.scratch_),
        rows(owner.table_.Columns()) {}

  [[nodiscard]] bool Wanted() const { return !cancelled && !gate->Closed(); }
  void List();
  void TakeOne(const std::string& path);

  const std::string folder;
  const Done report;
  const catalogue::ScanMode mode;
  catalogue::TagReader& tags;
  support::Executor& workers;
  const std::shared_ptr<WorkGate> gate;
  catalogue::TagScratch& scratch;
  std::function<void(const std::shared_ptr<Scan>&)> finish;
  std::optional<std::vector<std::string>> files;
  catalogue::track_table rows;
  int left_out = 0;
  bool missing = false;
  std::atomic<bool> cancelled{false};
  std::atomic<int> done{0};
  std::atomic<int> total{0};
};

void Reindex::Scan::List() {
  std::error_code error;
  missing = !std::filesystem::is_directory(folder, error);
  files.emplace();
  for (const std::string_view mask : catalogue::MasksOf(mode)) {
    auto pass = catalogue::ListFolder(folder, mask, [this] { return Wanted(); });
    files->insert(files->end(), std::make_move_iterator(pass.files.begin()),
                  std::make_move_iterator(pass.files.end()));
  }
  total = static_cast<int>(files->size());
}

void Reindex::Scan::TakeOne(const std::string& path) {
  // A song of MIDI events has no tag; it is left out until there is a reader for it.
  const bool song = catalogue::KindOf(path) == catalogue::FileKind::MidiSong;
  const auto read = song ? support::Error{support::ErrorCode::Unsupported, path} : tags.Read(path);
  if (!read) {
    ++left_out;
  } else if (mode == catalogue::ScanMode::Music) {
    Append(rows, catalogue::TrackRow(path, read.Value(), catalogue::MixingTagsOf(read.Value(), scratch)));
  } else {
    Append(rows, catalogue::KaraokeRow(path, read.Value()));
  }
}

Reindex::Reindex(catalogue::track_table& table, catalogue::ScanMode mode, catalogue::TagReader& tags,
                 support::Executor& workers, std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box,
                 const support::Sentences& say, catalogue::TagScratch& scratch)
    : table_(table),
      mode_(mode),
      tags_(tags),
      workers_(workers),
      gate_(std::move(gate)),
      box_(std::move(box)),
      say_(say),
      scratch_(scratch) {}

void Reindex::Start(const std::string& folder, Done done) {
  Cancel();
  const auto scan = std::make_shared<Scan>(folder, std::move(done), *this);
  scan->finish = [this, box = box_](const std::shared_ptr<Scan>& finished) {
    box->Post([this, finished] { Finish(finished); });
  };
  scan_ = scan;
  workers_.Post([scan] { Work(scan); });
}

void Reindex::Cancel() {
  if (scan_ != nullptr) scan_->cancelled = true;
}

AddingProgress Reindex::Progress() const {
  if (scan_ == nullptr) return {};
  return {scan_->done, scan_->total};
}

void Reindex::Work(const std::shared_ptr<Scan>& scan) {
  scan->gate->Pass([&scan] {
    const auto next = static_cast<std::size_t>(scan->done);
    if (!scan->files) {
      scan->List();
    } else if (next < scan->files->size() && scan->Wanted()) {
      scan->TakeOne((*scan->files)[next]);
      ++scan->done;
    } else {
      return scan->finish(scan);
    }
    scan->workers.Post([scan] { Work(scan); });
  });
}

void Reindex::Finish(const std::shared_ptr<Scan>& scan) {
  if (scan_ == scan) scan_ = nullptr;
  Outcome outcome;
  outcome.replaced = !scan->cancelled && !scan->missing;
  if (outcome.replaced) {
    table_ = std::move(scan->rows);
    outcome.rows = table_.Rows();
  }
  if (scan->missing) {
    outcome.sentence = say_(support::Sentence::FolderMissing, {scan->folder});
  } else if (outcome.replaced && scan->left_out > 0) {
    outcome.sentence = say_(support::Sentence::FilesLeftOut, {std::to_string(scan->left_out)});
  }
  if (scan->report) scan->report(outcome);
}

}  // namespace app
