// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/EditorFiles.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "app/StationContext.h"
#include "app/lights/LibraryPlace.h"
#include "dmx/DataFile.h"
#include "support/Text.h"

namespace app {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLibrary = "\\DMXlibrary";
constexpr const char* kShows = "\\DMXShows";
constexpr std::uintmax_t kLongestFixture = 32 << 20;
constexpr std::size_t kMostFixtures = 2000;

/// The work on a worker, its outcome on the window's thread.
template <typename T>
void WorkFor(const StationContext& context, std::function<T()> work, std::function<void(T)> done) {
  context.workers.Post(
      [gate = context.gate, window = context.window, work = std::move(work), done = std::move(done)] {
        gate->Pass([&] {
          auto outcome = std::make_shared<T>(work());
          window->Post([outcome, done] { done(std::move(*outcome)); });
        });
      });
}

bool IsFixtureFile(const fs::path& path) {
  return support::ToUpper(path.extension().string()) == ".DMX";
}

std::vector<fs::path> FixtureFilesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code failed;
  for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed)) {
    if (IsFixtureFile(entry->path()) && files.size() < kMostFixtures) files.push_back(entry->path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

LibraryFixture Listed(const fs::path& path, dmx::FixtureReading reading) {
  dmx::Fixture& fixture = reading.fixture;
  return {path.filename().string(), std::move(fixture.name), std::move(fixture.channels),
          reading.ended_early};
}

std::vector<LibraryFixture> ReadLibrary(const fs::path& folder) {
  std::vector<LibraryFixture> fixtures;
  for (const fs::path& path : FixtureFilesIn(folder)) {
    auto reading = dmx::OpenFixture(path);
    if (reading) fixtures.push_back(Listed(path, std::move(reading).Value()));
  }
  return fixtures;
}

support::Result<LibraryFixture> Bring(const fs::path& path, const fs::path& library,
                                      support::FileSaver& files) {
  const auto text = dmx::WholeDataFile(path, kLongestFixture);
  if (!text) return text.Failure();
  auto reading = dmx::ReadFixture(text.Value());
  if (!reading) return reading.Failure();
  std::error_code failed;
  fs::path place = path;
  if (!fs::equivalent(path.parent_path(), library, failed)) {
    const auto free = PlaceInLibrary(path, library, text.Value());
    if (!free) return free.Failure();
    place = free.Value();
    const auto copied = files.Save(place, text.Value());
    if (!copied) return copied.Failure();
  }
  return Listed(place, std::move(reading).Value());
}

support::Result<OpenedShow> Patched(support::Result<dmx::ShowReading> reading,
                                    const support::ProgramFolder& folder, const support::Sentences& say) {
  if (!reading) return reading.Failure();
  OpenedShow opened{std::move(reading).Value(), {}};
  opened.patch = dmx::PatchShow(opened.reading.show, dmx::FixtureLibrary(folder, say));
  return opened;
}

}  // namespace

support::Result<fs::path> PlaceInLibrary(const fs::path& file, const fs::path& folder,
                                         const std::string& text) {
  constexpr int kTries = 1000;
  support::Result<std::string> there = std::string();
  for (int number = 1; number <= kTries; ++number) {
    const std::string numbered = number == 1 ? "" : " " + std::to_string(number);
    const fs::path place = folder / (file.stem().string() + numbered + file.extension().string());
    there = dmx::WholeDataFile(place, kLongestFixture);
    const bool free = !there && there.Failure().code == support::ErrorCode::NotFound;
    if (free || (there && there.Value() == text)) return place;
  }
  if (!there) return there.Failure();
  return support::Failed(support::ErrorCode::Unavailable, support::Sentence::NameTaken,
                         {file.filename().string()});
}

std::string EditorFiles::Say(const support::Error& error) const {
  return context_.say(error);
}

fs::path EditorFiles::LibraryFolder() const {
  return context_.folder.Native(kLibrary);
}

fs::path EditorFiles::ShowFolder() const {
  return context_.folder.Native(kShows);
}

std::string EditorFiles::FilenameOf(const std::string& file) const {
  return dmx::FixtureLibrary(context_.folder).FilenameOf(file);
}

void EditorFiles::ListFixtures(Done<std::vector<LibraryFixture>> done) {
  WorkFor<std::vector<LibraryFixture>>(
      context_, [folder = LibraryFolder()] { return ReadLibrary(folder); }, std::move(done));
}

void EditorFiles::OpenFixture(const fs::path& path, Done<support::Result<dmx::FixtureReading>> done) {
  WorkFor<support::Result<dmx::FixtureReading>>(
      context_, [path, &say = context_.say] { return dmx::OpenFixture(path, say); }, std::move(done));
}

void EditorFiles::SaveFixture(const fs::path& path, dmx::Fixture fixture, Done<support::Result<void>> done) {
  WorkFor<support::Result<void>>(
      context_,
      [path, fixture = std::move(fixture), &files = context_.files] {
        return dmx::SaveFixture(files, path, fixture);
      },
      std::move(done));
}

void EditorFiles::BringFixture(const fs::path& path, Done<support::Result<LibraryFixture>> done) {
  WorkFor<support::Result<LibraryFixture>>(
      context_,
      [path, library = LibraryFolder(), &files = context_.files] { return Bring(path, library, files); },
      std::move(done));
}

void EditorFiles::OpenShow(const fs::path& path, Done<support::Result<OpenedShow>> done) {
  WorkFor<support::Result<OpenedShow>>(
      context_,
      [path, folder = context_.folder, &say = context_.say] {
        return Patched(dmx::OpenShow(path, say), folder, say);
      },
      std::move(done));
}

void EditorFiles::ReadShow(std::string text, Done<support::Result<OpenedShow>> done) {
  WorkFor<support::Result<OpenedShow>>(
      context_,
      [text = std::move(text), folder = context_.folder, &say = context_.say] {
        return Patched(dmx::ReadShow(text, say), folder, say);
      },
      std::move(done));
}

void EditorFiles::SaveShow(const fs::path& path, dmx::Show show, Done<support::Result<void>> done) {
  WorkFor<support::Result<void>>(
      context_,
      [path, show = std::move(show), &files = context_.files] { return dmx::SaveShow(files, path, show); },
      std::move(done));
}

}  // namespace app
