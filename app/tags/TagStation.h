// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/StationContext.h"
#include "app/work/FileLocks.h"
#include "catalogue/AddFile.h"
#include "catalogue/NamePattern.h"
#include "catalogue/TagDraft.h"
#include "catalogue/ports/SideStore.h"
#include "catalogue/ports/TagEditor.h"

namespace app {

class Collections;
struct WorkstationView;

/// Reads, writes and takes back the tags of files, and renames them, on workers and a few files at a time;
/// rows, playlists and what is kept of a file follow.
///
/// Law: one job at a time, one file at a time under the lock that all writers of tags take. A file that fails
/// is told of by a sentence, and the others go on. A name is changed only while no deck holds the file and
/// neither scan nor analysis runs; until then it waits. The journal ends with the program. Threads: the
/// window's, which empties the box.
class TagStation {
 public:
  struct Outside {
    catalogue::TagEditor* editor = nullptr;  ///< null: there is nothing that can be edited
    catalogue::TagReader* tags = nullptr;    ///< never null where there is an editor
    catalogue::SideStore* store = nullptr;   ///< null: nothing is kept of files
    std::shared_ptr<FileLocks> locks;
    /// Told of each file that has another name; the window's.
    std::function<void(const std::string& from, const std::string& to)> renamed{};
  };
  enum class Work { None, Read, Write, Undo, Rename };
  struct Progress {
    Work work = Work::None;
    std::size_t done = 0;
    std::size_t total = 0;
  };
  /// What came of a job.
  struct Report {
    Work work = Work::None;
    std::size_t done = 0;                ///< files
    std::vector<std::string> written{};  ///< those of a writing
    std::vector<std::string> sentences;  ///< one for each file that was left as it was, or waits
    std::vector<catalogue::PlannedName> renamed;
    bool stopped = false;
  };
  using Done = std::function<void(const Report&)>;
  /// One that was read.
  using Took = std::function<void(const std::string& path, catalogue::TagSheet sheet)>;
  struct Change {
    std::string path;
    catalogue::TagEdit edit;  ///< without a cover
  };
  using Cover = std::shared_ptr<const catalogue::TagPicture>;

  static constexpr std::size_t kHeaviestJournal = 256UL << 20;  ///< bytes; the oldest batches go first

  TagStation(const StationContext& context, const Outside& outside, Collections& collections);
  ~TagStation();

  [[nodiscard]] bool CanEdit() const { return outside_.editor != nullptr; }
  /// A reading that is under way is given up, without being told. Requires: no other job is.
  void Read(std::vector<std::string> files, Took took, Done done);
  /// cover: that all get; null where theirs stay. Requires of this and the next two: no job is under way.
  void Write(std::vector<Change> changes, const Cover& cover, Done done);
  /// Takes the newest batch of writes back.
  void Undo(Done done);
  void Rename(std::vector<catalogue::PlannedName> names, Done done);
  /// What is done stays.
  void Stop();
  /// What was done until then is followed. Requires: the gate is closed.
  void ShutDown();
  /// The window that asked is gone: the job goes on, and the status line is told what failed. A reading is
  /// given up.
  void Leave();

  [[nodiscard]] bool Busy() const { return job_ != nullptr; }
  [[nodiscard]] Progress Now() const;
  /// Files of the batch that Undo would take back; 0: there is none.
  [[nodiscard]] std::size_t CanUndo() const { return journal_.empty() ? 0 : journal_.back().size(); }
  /// Once a frame: what had to wait is renamed as soon as it can be.
  void Follow(const WorkstationView& view, const std::string& song);

  /// Reads a picture's bytes for a cover, on a worker.
  void ReadPicture(const std::string& path, std::function<void(std::string bytes, std::string failure)> done);

 private:
  struct Undone {
    std::string path;
    catalogue::TagUndo undo;
  };
  using Batch = std::vector<Undone>;
  struct Result;
  struct Job;

  void Start(std::shared_ptr<Job> job);
  static void Post(const std::shared_ptr<Job>& job);
  void Take(const std::shared_ptr<Job>& job);
  void TakeOne(Job& job, Result& result);
  void FollowRows(Job& job, const std::string& path, const catalogue::TagEdit& edit,
                  const catalogue::TrackCells& cells);
  void FollowName(Job& job, const std::string& from, const std::string& to);
  void Finish(const std::shared_ptr<Job>& job);
  void SaveRows(const Job& job);
  void Trim(Report& report);
  void TellLeft(const Report& report) const;
  [[nodiscard]] bool IsHeld(const std::string& path) const;
  /// Names of the next turn whose files are held by now wait.
  void HoldBack(Job& job);
  void Wait(catalogue::PlannedName name, Report& report);
  void RenameNow(std::vector<catalogue::PlannedName> names, Report report, Done done);

  const StationContext& context_;
  Outside outside_;
  Collections& collections_;
  std::shared_ptr<Job> job_;  // with the worker, who may outlive the station
  std::vector<Batch> journal_;
  std::vector<catalogue::PlannedName> waiting_;
  std::vector<std::string> held_;  ///< by decks and the singers' player, as of the last frame
  bool working_ = false;           ///< a scan or an analysis
};

}  // namespace app
