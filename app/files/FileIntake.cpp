// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/FileIntake.h"

#include <algorithm>
#include <atomic>
#include <set>
#include <string_view>
#include <utility>

#include "catalogue/AddFile.h"

namespace app {

/// Written by one job after the other; read by the owner when the last one has reported, but for `done`.
struct FileIntake::Batch {
  Batch(std::vector<std::string> files, Done when_done, catalogue::TagReader& reader,
        support::Executor& executor, std::shared_ptr<WorkGate> work_gate, const support::Sentences& sentences,
        catalogue::TagScratch& tag_scratch, catalogue::SongReader* song_reader, catalogue::NameRule name_rule)
      : paths(std::move(files)),
        report(std::move(when_done)),
        tags(reader),
        workers(executor),
        gate(std::move(work_gate)),
        say(sentences),
        scratch(tag_scratch),
        songs(song_reader),
        names(std::move(name_rule)) {}

  void DropKnownFiles();
  [[nodiscard]] support::Result<catalogue::TrackCells> RowOf(const std::string& path) const;
  void TakeOne(const std::string& path);

  std::vector<std::string> paths;
  Done report;
  catalogue::TagReader& tags;
  support::Executor& workers;
  std::shared_ptr<WorkGate> gate;
  const support::Sentences& say;
  catalogue::TagScratch& scratch;
  catalogue::SongReader* const songs;
  const catalogue::NameRule names;
  std::function<void()> finish;
  catalogue::track_table snapshot{catalogue::TrackColumns()};
  std::set<std::string> wanted;
  std::vector<catalogue::TrackCells> rows;
  std::vector<std::string> refused;
  std::atomic<std::size_t> done{0};
};

void FileIntake::Batch::DropKnownFiles() {
  for (const std::string& path : paths) wanted.insert(catalogue::AudioPathOf(path));
  const int filename = songs == nullptr ? catalogue::track::kFilename : catalogue::karaoke::kFilename;
  for (int row = 1; row <= snapshot.Rows(); ++row) wanted.erase(std::string(snapshot.Cell(row, filename)));
  snapshot.Clear();
}

support::Result<catalogue::TrackCells> FileIntake::Batch::RowOf(const std::string& path) const {
  if (songs == nullptr) return catalogue::AnalyseFile(tags, path, say, &scratch, names);
  return catalogue::AnalyseSong(*songs, tags, path, &scratch, names);
}

void FileIntake::Batch::TakeOne(const std::string& path) {
  if (wanted.erase(catalogue::AudioPathOf(path)) == 0) return;
  support::Result<catalogue::TrackCells> row = RowOf(path);
  if (row) {
    rows.push_back(std::move(row).Value());
  } else {
    refused.push_back(say(row.Failure()));
  }
}

FileIntake::FileIntake(catalogue::track_table& table, catalogue::TagReader& tags, support::Executor& workers,
                       std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box,
                       const support::Sentences& say, catalogue::TagScratch& scratch,
                       catalogue::SongReader* songs)
    : table_(table),
      tags_(tags),
      workers_(workers),
      gate_(std::move(gate)),
      box_(std::move(box)),
      say_(say),
      scratch_(scratch),
      songs_(songs) {}

void FileIntake::Add(std::vector<std::string> paths, Done done) {
  batches_.push_back(std::make_shared<Batch>(std::move(paths), std::move(done), tags_, workers_, gate_, say_,
                                             scratch_, songs_, names_));
  if (batches_.size() == 1) StartNext();
}

AddingProgress FileIntake::Progress() const {
  AddingProgress progress;
  for (const auto& batch : batches_) {
    progress.done += static_cast<int>(batch->done.load());
    progress.total += static_cast<int>(batch->paths.size());
  }
  return progress;
}

void FileIntake::StartNext() {
  const std::shared_ptr<Batch> batch = batches_.front();
  batch->snapshot = table_;
  batch->finish = [this, box = box_] { box->Post([this] { Finish(); }); };
  workers_.Post([batch] {
    batch->gate->Pass([&] { batch->DropKnownFiles(); });
    Work(batch);
  });
}

void FileIntake::Work(const std::shared_ptr<Batch>& batch) {
  const bool open = batch->gate->Pass([&batch] {
    const std::size_t next = batch->done;
    if (next == batch->paths.size()) return batch->finish();
    batch->TakeOne(batch->paths[next]);
    ++batch->done;
    batch->workers.Post([batch] { Work(batch); });
  });
  if (!open) batch->finish = nullptr;
}

void FileIntake::Finish() {
  const std::shared_ptr<Batch> batch = batches_.front();
  for (const catalogue::TrackCells& row : batch->rows) {
    const catalogue::CellViews cells = catalogue::ViewsOf(row);
    if (songs_ == nullptr) {
      table_.AddRow(cells);
    } else {
      table_.AddRow(catalogue::KaraokeRow(cells));
    }
  }
  batches_.pop_front();
  if (!batches_.empty()) StartNext();
  if (batch->report) batch->report(static_cast<int>(batch->rows.size()), std::move(batch->refused));
}

}  // namespace app
