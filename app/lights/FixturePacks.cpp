// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/FixturePacks.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <system_error>
#include <utility>

#include "app/StationContext.h"
#include "app/lights/LibraryPlace.h"
#include "dmx/packs/PackImport.h"
#include "dmx/packs/PackReader.h"
#include "support/Settings.h"

namespace app {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kSlice = 40;  ///< files, some milliseconds each at worst

support::Result<BroughtFixture> BringMode(const dmx::FixtureFormats& formats, const dmx::PackEntry& entry,
                                          const fs::path& library, support::FileSaver& files,
                                          const support::Sentences& say) {
  const auto read = dmx::OpenPackFixture(formats, entry.file);
  if (!read) return read.Failure();
  // The file may have become another one since it was listed.
  const bool same =
      entry.number < read.Value().modes.size() && read.Value().modes[entry.number].name == entry.mode;
  const auto mode =
      same ? support::Result<std::size_t>(entry.number) : dmx::FindMode(read.Value(), entry.mode);
  if (!mode) return mode.Failure();
  auto made = dmx::ImportMode(read.Value(), mode.Value(), say);
  if (!made) return made.Failure();
  dmx::ImportedFixture& imported = made.Value();
  const std::string text = dmx::FixtureText(imported.fixture);
  const auto free = PlaceInLibrary(dmx::ImportedFileName(imported.fixture.name), library, text);
  if (!free) return free.Failure();
  const fs::path& place = free.Value();
  const auto saved = files.Save(place, text);
  if (!saved) return saved.Failure();
  return BroughtFixture{{place.filename().string(), std::move(imported.fixture.name),
                         std::move(imported.fixture.channels), false},
                        std::move(imported.notes)};
}

}  // namespace

/// A walk through folders, slice by slice; one worker at a time has it.
struct FixturePacks::Reading {
  std::vector<fs::path> folders;
  std::vector<fs::path> chosen;  ///< of the folders, those that have to be there
  std::vector<fs::path> files;
  std::size_t next = 0;
  bool listed = false;
  std::shared_ptr<const dmx::PackIndex> behind;  ///< entries that follow those of the files
  dmx::PackIndex index;
  std::atomic<bool> stopped{false};

  /// True while something is left.
  bool ReadSlice(const dmx::FixtureFormats& formats, const support::Sentences& say) {
    if (!listed) {
      for (const fs::path& folder : folders) {
        const std::vector<fs::path> found = dmx::PackFilesIn(folder, stopped);
        files.insert(files.end(), found.begin(), found.end());
      }
      NoteMissing(say);
      listed = true;
      return !files.empty();
    }
    for (std::size_t i = 0; i < kSlice && next < files.size() && !stopped; ++i)
      dmx::AddToIndex(formats, files[next++], index, say);
    return next < files.size() && !stopped;
  }
  void NoteMissing(const support::Sentences& say) {
    for (const fs::path& folder : chosen) {
      std::error_code failed;
      if (!fs::is_directory(folder, failed))
        index.notes.push_back(say(support::Sentence::PackFolderUnreadable, {folder.string()}));
    }
  }
  std::shared_ptr<const dmx::PackIndex> Finished() {
    dmx::SortIndex(index);
    if (behind) {
      index.entries.insert(index.entries.end(), behind->entries.begin(), behind->entries.end());
      index.fixtures += behind->fixtures;
    }
    return std::make_shared<const dmx::PackIndex>(std::move(index));
  }
};

FixturePacks::FixturePacks(const StationContext& context, const dmx::FixtureFormats* formats,
                           std::vector<fs::path> installed)
    : context_(context), formats_(formats), installed_(std::move(installed)) {}

FixturePacks::~FixturePacks() = default;

void FixturePacks::Open() {
  if (reading_ != nullptr && (progress_.busy || whole_)) return;
  std::vector<fs::path> folders = installed_;
  const std::string chosen = context_.settings.Text("Setup", "FixtureFolder");
  if (!chosen.empty()) folders.emplace_back(chosen);
  Read(std::move(folders), {}, nullptr);
}

void FixturePacks::Stop() {
  if (reading_ != nullptr) reading_->stopped = true;
}

void FixturePacks::ChooseFolder(const fs::path& folder) {
  context_.settings.SetText("Setup", "FixtureFolder", folder.string());
  Stop();
  reading_ = nullptr;
  whole_ = false;
  Open();
}

void FixturePacks::AddFiles(std::vector<fs::path> files) {
  added_.insert(added_.end(), files.begin(), files.end());
  if (progress_.busy) return;  // with the next that is told
  Read({}, std::exchange(added_, {}), index_);
}

void FixturePacks::Read(std::vector<fs::path> folders, std::vector<fs::path> files,
                        std::shared_ptr<const dmx::PackIndex> behind) {
  if (formats_ == nullptr) return;
  Stop();
  reading_ = std::make_shared<Reading>();
  std::copy_if(folders.begin(), folders.end(), std::back_inserter(reading_->chosen),
               [this](const auto& folder) {
                 return std::find(installed_.begin(), installed_.end(), folder) == installed_.end();
               });
  reading_->folders = std::move(folders);
  reading_->files = std::move(files);
  reading_->listed = reading_->folders.empty();
  reading_->behind = std::move(behind);
  progress_.busy = true;
  progress_.read = progress_.files = 0;
  ++progress_.changes;
  PostSlice(reading_);
}

void FixturePacks::PostSlice(std::shared_ptr<Reading> reading) {
  context_.workers.Post([this, gate = context_.gate, window = context_.window, reading = std::move(reading),
                         &formats = *formats_, &say = context_.say] {
    gate->Pass([&] {
      const bool more = reading->ReadSlice(formats, say);
      const Progress now{reading->next, reading->files.size(), more, 0};
      auto index = more ? nullptr : reading->Finished();
      window->Post([this, reading, now, index = std::move(index)] { Show(reading, now, index); });
      if (more) PostSlice(reading);  // behind what was told, which another worker must not overtake
    });
  });
}

void FixturePacks::Show(const std::shared_ptr<Reading>& reading, Progress progress,
                        std::shared_ptr<const dmx::PackIndex> index) {
  if (reading != reading_) return;  // a newer one goes on
  progress.changes = progress_.changes + 1;
  progress_ = progress;
  if (index == nullptr) return;
  index_ = std::move(index);
  if (!reading->folders.empty()) whole_ = !reading->stopped;
  if (!added_.empty()) Read({}, std::exchange(added_, {}), index_);
}

void FixturePacks::Bring(const dmx::PackEntry& entry, Done done) {
  if (formats_ == nullptr) return;
  context_.workers.Post([gate = context_.gate, window = context_.window, entry, done = std::move(done),
                         library = context_.folder.Native("\\DMXlibrary"), &formats = *formats_,
                         &files = context_.files, &say = context_.say] {
    gate->Pass([&] {
      auto brought =
          std::make_shared<support::Result<BroughtFixture>>(BringMode(formats, entry, library, files, say));
      window->Post([brought, done] { done(std::move(*brought)); });
    });
  });
}

}  // namespace app
