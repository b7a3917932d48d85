// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/ports/ScanPort.h"
#include "support/Executor.h"

namespace app::testing {

/// Finds what it was told of, one file a job. Threads: the test's.
class FakeScan final : public ScanPort {
 public:
  explicit FakeScan(support::Executor& workers) : workers_(workers) {}

  /// The folder is there; its files, whose names are their titles too.
  void AddFolder(const std::string& folder, std::vector<std::string> files) {
    folders_.push_back({folder, std::move(files)});
  }

  std::shared_ptr<RunningScan> Start(const ScanWish& wish, Done done) override {
    const bool music = wish.mode == catalogue::ScanMode::Music;
    auto scan = std::make_shared<Scan>(workers_, std::move(done), music);
    scan->folder = wish.folder;
    for (const auto& [folder, files] : folders_) {
      if (folder == wish.folder) scan->files = files;
    }
    workers_.Post([scan] { Scan::Work(scan); });
    return scan;
  }

 private:
  struct Scan final : RunningScan {
    Scan(support::Executor& executor, Done when_done, bool music)
        : workers(executor),
          done(std::move(when_done)),
          name_column(music ? catalogue::track::kFilename : catalogue::karaoke::kFilename),
          found{{}, catalogue::track_table(music ? catalogue::TrackColumns() : catalogue::KaraokeColumns())} {
    }
    void Cancel() override { cancelled = true; }
    [[nodiscard]] ScanProgress Progress() const override {
      return {found.rows.Rows(), files ? static_cast<int>(files->size()) : 0, 0};
    }
    static void Work(const std::shared_ptr<Scan>& scan) {
      const auto next = static_cast<std::size_t>(scan->found.rows.Rows());
      if (scan->cancelled) scan->found.end = ScanFound::End::Cancelled;
      if (!scan->files) scan->found.end = ScanFound::End::FolderMissing, scan->found.where = scan->folder;
      if (scan->cancelled || !scan->files || next == scan->files->size()) return scan->done(scan->found);
      const int row = scan->found.rows.AddRow();
      scan->found.rows.SetCell(row, catalogue::track::kTitle, (*scan->files)[next]);
      scan->found.rows.SetCell(row, scan->name_column, (*scan->files)[next]);
      scan->workers.Post([scan] { Work(scan); });
    }

    support::Executor& workers;
    Done done;
    int name_column;
    ScanFound found;
    std::optional<std::vector<std::string>> files;
    std::string folder;
    bool cancelled = false;
  };

  support::Executor& workers_;
  std::vector<std::pair<std::string, std::vector<std::string>>> folders_;
};

}  // namespace app::testing
