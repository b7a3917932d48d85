// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/files/BatchAnalysis.h"
#include "app/files/Collection.h"
#include "app/files/FileIntake.h"
#include "app/files/KaraokeSongReader.h"
#include "app/files/MissingFiles.h"
#include "app/files/RemovedRows.h"
#include "app/files/TagKeeper.h"
#include "app/files/TreeScan.h"
#include "app/sound/DeckView.h"
#include "app/work/IdleCores.h"
#include "catalogue/PlainFolders.h"
#include "catalogue/TagScratch.h"

namespace support {
class Settings;
}

namespace app {

struct StationContext;
class NoticeBoard;
class Prompts;
struct Ports;

/// The two collections, the playlists, and what puts files and rows into them and takes them out.
///
/// What is found out about a file, or a hand does to it, goes into its rows here and, where tags are to be
/// written, into its tag. Threads: the window's, which empties the box.
class Collections {
 public:
  struct Around {
    support::Settings& settings;
    Prompts& prompts;
    NoticeBoard& notices;  ///< the conductor's
    std::shared_ptr<IdleCores> cores;
  };
  Collections(const StationContext& context, const Ports& ports, const AnalysisPorts& analysis,
              const Around& around);

  [[nodiscard]] Collection& Music() { return music_; }
  [[nodiscard]] Collection& Karaoke() { return karaoke_; }
  /// Requires: 1 to kPlaylists.
  [[nodiscard]] catalogue::track_table& Playlist(int number);
  [[nodiscard]] std::array<catalogue::track_table, kPlaylists>& Playlists() { return playlists_; }

  /// Takes files and folders into a list; their index is saved.
  [[nodiscard]] FileIntake& Intake() { return intake_; }
  /// Takes rows out of a list and brings them back; their files stay, the index is saved.
  [[nodiscard]] RemovedRows& Removed() { return removed_; }
  [[nodiscard]] MissingFiles& Missing() { return missing_; }
  /// The analysis of many files.
  [[nodiscard]] BatchAnalysis& Batch() { return batch_; }
  [[nodiscard]] catalogue::TagScratch& Scratch() { return scratch_; }

  /// Reads the folder, and the others of the settings, into a collection. The outcome is given on the
  /// window's thread.
  void Scan(Collection& collection, const std::string& folder, Reindex::Done done);
  /// Of the scans that are under way, all zero when none is.
  [[nodiscard]] ScanProgress Scanning() const;
  [[nodiscard]] bool IsScanning() const { return music_.IsScanning() || karaoke_.IsScanning(); }
  /// The tables stay as they were.
  void CancelScans();
  /// Every file of the music.
  void AnalyseAll();
  /// Of these rows of the music.
  void Analyse(std::vector<int> rows);

  /// What a worker found out about a deck's file.
  void KeepAnalysis(const std::string& filename, const music::TrackAnalysis& analysis,
                    const catalogue::FileMarks& marks);
  /// In each row of the music and the playlists that holds the file.
  void StoreMixPoint(const std::string& filename, MixPoint which, std::chrono::microseconds place);
  /// Rows that a batch filled in may stand where they do not belong any more; once.
  [[nodiscard]] bool TakeUnsorted();

  /// Reads the indexes; sentences to be told.
  [[nodiscard]] std::vector<support::Saying> Load();
  /// Goes on with what the last run left.
  void StartUp();
  /// As TagKeeper.
  [[nodiscard]] bool ShutDownTags(std::chrono::milliseconds patience) { return tags_.ShutDown(patience); }
  /// Saves what waits. Requires: the gate is closed.
  void Flush();

 private:
  [[nodiscard]] Collection::Outside Outside();
  [[nodiscard]] FileIntake::Tables Lists() { return {music_.Table(), karaoke_.Table(), playlists_}; }
  /// The music first.
  [[nodiscard]] std::vector<MissingFiles::Table> FileTables() const;
  /// The index of the list, where it has one.
  void SaveList(ListId list);
  void PrepareScans(catalogue::SideStore* store);
  /// Asks before a scan takes rows out of a table; without a window they stay.
  void AskBeforeRowsGo(const Reindex::Loss& loss, std::function<void(Reindex::Answer)> answer);
  /// Rows of files that were moved name their new places.
  void FollowInPlaylists(const std::vector<ScanRows::Moved>& moved);
  void TellOfOldOrder(const IntakeOutcome& outcome);
  void TellOfMissing(MissingFiles::News news, std::size_t count, const std::string& first);
  /// And writes the tag. True when a row of the music says more now.
  [[nodiscard]] bool FillRows(const std::string& filename, const music::TrackAnalysis& analysis,
                              const catalogue::FileMarks& marks);
  /// The same of a file of the batch, which saves now and then.
  void KeepBatch(const std::string& filename, const music::TrackAnalysis& analysis,
                 const catalogue::FileMarks& marks);
  void SaveBatch();
  /// What the file's row in the music (0: none) or a playlist says for mixing goes into its tag.
  void WriteTag(const std::string& filename, int row);
  /// The threshold of the mix points.
  [[nodiscard]] int GainPercent() const;
  [[nodiscard]] std::function<void(const support::Error&)> Complainer() const;

  const StationContext& context_;
  Around around_;
  support::Executor& idle_;
  std::shared_ptr<FileLocks> locks_;
  catalogue::PlainFolders plain_folders_;
  catalogue::FolderReader& folders_;
  catalogue::TagScratch scratch_;
  KaraokeSongReader song_reader_;
  TreeScan tree_scan_;
  ScanPort& scan_;
  Collection music_;
  Collection karaoke_;
  std::array<catalogue::track_table, kPlaylists> playlists_;
  TagKeeper tags_;
  MissingFiles missing_;
  FileIntake intake_;
  RemovedRows removed_;
  bool batch_filled_ = false;    ///< rows since the index was saved
  bool batch_unsorted_ = false;  ///< rows that it filled in stand where they were
  BatchAnalysis batch_;
};

}  // namespace app
