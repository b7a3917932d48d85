// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/lights/EditorFiles.h"
#include "dmx/packs/PackIndex.h"

namespace app {

/// A mode of somebody else's fixture, as a file of the fixture library.
struct BroughtFixture {
  LibraryFixture fixture;
  std::vector<std::string> notes;  ///< what became otherwise than it was described
};

/// What the fixture libraries of others offer, and how a mode of theirs comes into this program's.
///
/// Law: only makers, models and modes are kept; a fixture is read again when it is wanted. No worker is held
/// for longer than a slice of files. Threads: the window's; workers read.
class FixturePacks {
 public:
  struct Progress {
    std::size_t read = 0;
    std::size_t files = 0;
    bool busy = false;
    std::size_t changes = 0;  ///< rises with everything else here and with the index
  };

  /// formats: null where nothing can be read. installed: folders of libraries, those that are not there too.
  FixturePacks(const StationContext& context, const dmx::FixtureFormats* formats,
               std::vector<std::filesystem::path> installed);
  ~FixturePacks();

  /// Reads the folders, unless that was done to the end or is being done.
  void Open();
  /// What was read until then can be found.
  void Stop();
  /// Kept in the settings ("Setup"/"FixtureFolder"); all folders are read again.
  void ChooseFolder(const std::filesystem::path& folder);
  /// Puts files at the front of what can be found, until the folders are read again.
  void AddFiles(std::vector<std::filesystem::path> files);

  [[nodiscard]] const Progress& Now() const { return progress_; }
  /// Never null.
  [[nodiscard]] const std::shared_ptr<const dmx::PackIndex>& Index() const { return index_; }

  using Done = std::function<void(support::Result<BroughtFixture>)>;
  /// Makes a fixture file of it, beside any other file of its name, and calls back on the window's thread.
  void Bring(const dmx::PackEntry& entry, Done done);

 private:
  struct Reading;

  void Read(std::vector<std::filesystem::path> folders, std::vector<std::filesystem::path> files,
            std::shared_ptr<const dmx::PackIndex> behind);
  void Show(const std::shared_ptr<Reading>& reading, Progress progress,
            std::shared_ptr<const dmx::PackIndex> index);
  void PostSlice(std::shared_ptr<Reading> reading);

  const StationContext& context_;
  const dmx::FixtureFormats* formats_;
  std::vector<std::filesystem::path> installed_;
  Progress progress_;
  std::shared_ptr<const dmx::PackIndex> index_ = std::make_shared<const dmx::PackIndex>();
  std::shared_ptr<Reading> reading_;          ///< the newest; null: none yet
  bool whole_ = false;                        ///< the folders were read to their end
  std::vector<std::filesystem::path> added_;  ///< while another reading goes on
};

}  // namespace app
