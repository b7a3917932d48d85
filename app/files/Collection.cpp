// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/Collection.h"

#include <utility>

namespace app {

using support::Sentence;

CollectionKind MusicKind() {
  return {.list = ListId::Catalogue,
          .empty = catalogue::track_table(catalogue::TrackColumns()),
          .filename_column = catalogue::track::kFilename,
          .index = catalogue::kTrackIndex,
          .damaged = Sentence::CatalogueDamaged,
          .unreadable = Sentence::CatalogueUnreadable,
          .scan = catalogue::ScanMode::Music,
          .companion = FileRemoval::Companion::None};
}

CollectionKind KaraokeKind() {
  return {.list = ListId::Karaoke,
          .empty = catalogue::track_table(catalogue::KaraokeColumns()),
          .filename_column = catalogue::karaoke::kFilename,
          .index = catalogue::kKaraokeIndex,
          .damaged = Sentence::KaraokeDamaged,
          .unreadable = Sentence::KaraokeUnreadable,
          .scan = catalogue::ScanMode::Karaoke,
          .companion = FileRemoval::Companion::Song};
}

Collection::Collection(CollectionKind kind, const Outside& outside, const std::shared_ptr<WorkGate>& gate,
                       const std::shared_ptr<Mailbox>& box)
    : kind_(std::move(kind)),
      outside_(outside),
      table_(kind_.empty),
      index_(outside.files, outside.workers, gate, outside.folder.Native(kind_.index), outside.complain),
      removal_(table_, kind_.filename_column, kind_.companion, outside.workers, gate, box, outside.say),
      scan_(table_, kind_.scan, outside.scan, outside.workers, gate, box, outside.say) {}

support::Saying Collection::Load() {
  const std::filesystem::path path = outside_.folder.Native(kind_.index);
  const auto report = catalogue::LoadIndex(path, table_, outside_.say);
  if (!report) {
    if (report.Failure().code == support::ErrorCode::NotFound) return {};
    index_.SetAsideFirst(kUnreadable);
    return {kind_.unreadable, {path.string()}};
  }
  loaded_ = report.Value();
  if (loaded_.Skipped() == 0) return {};
  index_.SetAsideFirst(kDamaged);
  return {kind_.damaged, {std::to_string(loaded_.Skipped())}};
}

void Collection::Delete(const std::vector<int>& rows, FileRemoval::Done done) {
  removal_.Remove(rows, [this, done = std::move(done)](int removed, std::vector<std::string> kept) {
    if (removed > 0) Save();
    if (done) done(removed, std::move(kept));
  });
}

void Collection::Scan(const std::vector<std::string>& folders, const catalogue::NameRule& names,
                      Reindex::Done done) {
  scan_began_ = outside_.clock.Now();
  scan_.Start(folders, names, [this, done = std::move(done)](const Reindex::Outcome& outcome) {
    if (outcome.replaced) index_.Replace(table_);
    if (done) done(outcome);
  });
}

ScanProgress Collection::Scanning() const {
  ScanProgress progress = scan_.Progress();
  progress.running =
      std::chrono::duration_cast<std::chrono::milliseconds>(outside_.clock.Now() - scan_began_);
  return progress;
}

}  // namespace app
