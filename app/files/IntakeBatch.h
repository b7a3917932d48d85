// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "app/files/IntakeOrder.h"
#include "app/files/IntakeOutcome.h"
#include "catalogue/FolderScan.h"
#include "catalogue/NameRule.h"
#include "catalogue/TagScratch.h"
#include "catalogue/ports/FolderReader.h"
#include "catalogue/ports/SongReader.h"
#include "catalogue/ports/TagReader.h"
#include "catalogue/track_table.h"
#include "support/Sentences.h"

namespace app {

/// One order on its way: folders are gone through, playlists read, and each file goes through the
/// add-one-file step. A MIDI song comes to the karaoke table whatever list was meant.
///
/// Threads: one at a time, but for Stop and Progress; Step and LeaveOutKnown block on the disk.
class IntakeBatch {
 public:
  struct Ports {
    catalogue::TagReader& tags;
    catalogue::SongReader& songs;
    catalogue::TagScratch& scratch;
    catalogue::FolderReader& folders;
    const support::Sentences& say;
  };
  IntakeBatch(std::shared_ptr<const IntakeOrder> order, const catalogue::NameRule& names, const Ports& ports,
              const catalogue::track_table& catalogue, const catalogue::track_table& karaoke);

  /// At most one folder or one file that is not known. False when nothing is left.
  [[nodiscard]] bool Step();
  void Stop() { stop_ = true; }
  [[nodiscard]] AddingProgress Progress() const;

  // Once Step gave false.
  /// Both tables are still those that known rows were looked for in, or nothing new hangs on it.
  [[nodiscard]] bool IsUpToDate(const catalogue::track_table& catalogue,
                                const catalogue::track_table& karaoke) const;
  /// Rows of files that came into the tables meanwhile.
  void LeaveOutKnown(const catalogue::track_table& catalogue, const catalogue::track_table& karaoke);
  [[nodiscard]] const IntakeOrder& Order() const { return *order_; }
  [[nodiscard]] std::shared_ptr<const IntakeOrder> SharedOrder() const { return order_; }
  [[nodiscard]] catalogue::track_table& NewTracks() { return tracks_; }
  [[nodiscard]] catalogue::track_table& NewSongs() { return songs_; }
  [[nodiscard]] catalogue::track_table& PlaylistRows() { return list_; }
  [[nodiscard]] IntakeOutcome Outcome();

 private:
  struct Entry {
    enum class From { Hand, Folder, List, Table };
    std::string path;
    std::string audio;  ///< what is analysed and played for it
    From from;
    int first_row = 0;  ///< of a table, and the row behind its last
    int end_row = 0;
  };
  void Expand(const std::string& path);
  void ExpandPlaylist(const std::string& path);
  void ReadTable(const std::string& path);
  void ReadList(const std::string& path);
  void BeginWalk(const std::string& path);
  void WalkOn();
  void EndWalk();
  void Put(std::string path, Entry::From from);
  void FindKnown();
  /// True when a file was read.
  bool Take(const Entry& entry);
  bool TakeSong(const Entry& entry);
  bool TakeTrack(const Entry& entry);
  [[nodiscard]] bool TakeKnown(const Entry& entry);
  void Note(const Entry& entry);
  void Refuse(std::string sentence);
  [[nodiscard]] bool IntoPlaylist() const { return IsPlaylist(order_->list); }

  const std::shared_ptr<const IntakeOrder> order_;
  const catalogue::NameRule names_;
  const Ports ports_;
  catalogue::track_table known_tracks_;
  catalogue::track_table known_songs_;
  std::size_t next_path_ = 0;
  std::optional<catalogue::FolderWalk> walk_;
  std::vector<Entry> entries_;
  std::unordered_set<std::string> put_;             ///< where no file comes twice
  std::unordered_map<std::string, int> track_row_;  ///< of the entries' files; 0: not known
  std::unordered_map<std::string, int> list_row_;   ///< rows of ours that were analysed
  std::unordered_set<std::string> song_files_;      ///< that have a row, there or in ours
  std::size_t next_entry_ = 0;
  bool matched_ = false;
  catalogue::track_table tracks_{catalogue::TrackColumns()};
  catalogue::track_table songs_{catalogue::KaraokeColumns()};
  catalogue::track_table list_{catalogue::TrackColumns()};
  catalogue::track_table tables_{catalogue::TrackColumns()};  ///< rows of playlists that were read
  IntakeOutcome outcome_;
  std::atomic<bool> stop_{false};
  std::atomic<bool> looking_{true};
  std::atomic<int> done_{0};
  std::atomic<int> total_{0};
};

}  // namespace app
