// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lists/PlaylistIntake.h"

#include <filesystem>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "catalogue/AddFile.h"
#include "catalogue/IndexFile.h"
#include "catalogue/Playlist.h"

namespace app {
namespace {

using catalogue::PlaylistFile;
using support::Sentence;

constexpr std::size_t kMostSentences = 500;

bool IsThere(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error) && !error;
}

}  // namespace

/// One opening; touched by one job after the other.
struct PlaylistIntake::Batch {
  Batch(std::string file, const catalogue::track_table& music, catalogue::TagReader& reader,
        support::Executor& executor, std::shared_ptr<WorkGate> work_gate, const support::Sentences& sentences,
        catalogue::TagScratch& tag_scratch)
      : path(std::move(file)),
        known(music),
        tags(reader),
        workers(executor),
        gate(std::move(work_gate)),
        say(sentences),
        scratch(tag_scratch) {}

  void Read();
  void ReadTable();
  void ReadList();
  void FindKnownRows();
  /// False when it has to go through the add-one-file step.
  bool TakeKnown(const std::string& entry);
  void Analyse(const std::string& entry);
  void Refuse(std::string sentence) {
    if (refused.size() < kMostSentences) refused.push_back(std::move(sentence));
  }
  [[nodiscard]] std::string Name() const { return std::filesystem::path(path).filename().string(); }

  const std::string path;
  catalogue::track_table known;
  catalogue::TagReader& tags;
  support::Executor& workers;
  std::shared_ptr<WorkGate> gate;
  const support::Sentences& say;
  catalogue::TagScratch& scratch;
  std::function<void()> finish;
  std::vector<std::string> entries;
  std::unordered_map<std::string, int> known_rows;  ///< of the entries
  std::size_t next = 0;
  catalogue::track_table rows{catalogue::TrackColumns()};
  std::vector<std::string> refused;
};

void PlaylistIntake::Batch::Read() {
  switch (catalogue::PlaylistFileOf(path)) {
    case PlaylistFile::Track:
      entries.push_back(path);
      break;
    case PlaylistFile::Own:
      return ReadTable();
    case PlaylistFile::List:
      ReadList();
      break;
    case PlaylistFile::Nothing:
      return;
  }
  FindKnownRows();
}

void PlaylistIntake::Batch::ReadTable() {
  const auto report = catalogue::LoadIndex(path, rows, say);
  if (!report) return Refuse(say(Sentence::PlaylistUnreadable, {Name()}));
  const int skipped = report.Value().Skipped();
  if (skipped == 0) return;
  if (report.Value().rows == 0 && catalogue::LooksLikePathList(path)) {
    return Refuse(say(Sentence::PlaylistIsPathList, {Name()}));
  }
  Refuse(say(Sentence::PlaylistLinesLeftOut, {Name(), std::to_string(skipped)}));
}

void PlaylistIntake::Batch::ReadList() {
  auto list = catalogue::ReadPathList(path);
  if (!list) return Refuse(say(list.Failure()));
  entries = std::move(list.Value().paths);
  if (const int left_out = list.Value().too_long; left_out > 0) {
    Refuse(say(Sentence::PlaylistLinesLeftOut, {Name(), std::to_string(left_out)}));
  }
}

void PlaylistIntake::Batch::FindKnownRows() {
  for (const std::string& entry : entries) known_rows.emplace(catalogue::AudioPathOf(entry), 0);
  std::string name;
  known.VisitColumn(catalogue::track::kFilename, [&](int row, std::string_view file) {
    name = file;
    if (const auto found = known_rows.find(name); found != known_rows.end()) found->second = row;
    return true;
  });
  while (next < entries.size() && TakeKnown(entries[next])) ++next;
}

bool PlaylistIntake::Batch::TakeKnown(const std::string& entry) {
  const std::string audio = catalogue::AudioPathOf(entry);
  const int row = known_rows[audio];
  if (row == 0 || catalogue::KindOf(entry) == catalogue::FileKind::MidiSong || !IsThere(audio)) return false;
  rows.AppendFrom(known, row);
  return true;
}

void PlaylistIntake::Batch::Analyse(const std::string& entry) {
  const auto row = catalogue::AnalyseFile(tags, entry, say, &scratch);
  if (!row) return Refuse(say(row.Failure()));
  rows.AddRow(std::vector<std::string_view>(row.Value().begin(), row.Value().end()));
}

PlaylistIntake::PlaylistIntake(catalogue::TagReader& tags, support::Executor& workers,
                               std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box,
                               const support::Sentences& say, catalogue::TagScratch& scratch)
    : tags_(tags),
      workers_(workers),
      gate_(std::move(gate)),
      box_(std::move(box)),
      say_(say),
      scratch_(scratch) {}

void PlaylistIntake::Open(const std::string& path, const catalogue::track_table& catalogue,
                          catalogue::track_table& playlist, Done done) {
  auto batch = std::make_shared<Batch>(path, catalogue, tags_, workers_, gate_, say_, scratch_);
  // Weak, because the batch holds it itself.
  batch->finish = [weak = std::weak_ptr<Batch>(batch), box = box_, &playlist, done = std::move(done)] {
    box->Post([batch = weak.lock(), &playlist, done] {
      for (int row = 1; row <= batch->rows.Rows(); ++row) playlist.AppendFrom(batch->rows, row);
      if (done) done(batch->rows.Rows(), std::move(batch->refused));
    });
  };
  workers_.Post([batch] {
    batch->gate->Pass([&] { batch->Read(); });
    Work(batch);
  });
}

void PlaylistIntake::Work(const std::shared_ptr<Batch>& batch) {
  batch->gate->Pass([&batch] {
    if (batch->next >= batch->entries.size()) return batch->finish();
    batch->Analyse(batch->entries[batch->next++]);
    while (batch->next < batch->entries.size() && batch->TakeKnown(batch->entries[batch->next]))
      ++batch->next;
    batch->workers.Post([batch] { Work(batch); });
  });
}

}  // namespace app
