// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/packs/PackIndex.h"

#include <algorithm>
#include <system_error>
#include <tuple>
#include <utility>

#include "dmx/packs/PackReader.h"
#include "support/Text.h"

namespace dmx {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostFiles = 50'000;
constexpr int kDeepestFolder = 8;

bool MayBeFixture(const fs::path& path) {
  const std::string ending = support::ToUpper(path.extension().string());
  return ending == ".QXF" || (ending == ".JSON" && path.filename() != "manufacturers.json");
}

}  // namespace

std::vector<fs::path> PackFilesIn(const fs::path& folder, const std::atomic<bool>& stopped) {
  std::vector<fs::path> files;
  std::error_code failed;
  constexpr auto kHow = fs::directory_options::skip_permission_denied;
  for (fs::recursive_directory_iterator entry(folder, kHow, failed), end; !failed && entry != end && !stopped;
       entry.increment(failed)) {
    if (entry.depth() >= kDeepestFolder) entry.disable_recursion_pending();
    std::error_code unknown;
    if (MayBeFixture(entry->path()) && entry->is_regular_file(unknown)) files.push_back(entry->path());
    if (files.size() == kMostFiles) break;
  }
  std::sort(files.begin(), files.end());
  return files;
}

void AddToIndex(const FixtureFormats& formats, const fs::path& file, PackIndex& index,
                const support::Sentences& say) {
  const auto read = OpenPackFixture(formats, file);
  if (!read) {
    ++index.left_out;
    if (index.notes.size() < PackIndex::kMostNotes)
      index.notes.push_back(
          say(support::Sentence::PackFileLeftOut, {file.filename().string(), say(read.Failure())}));
    return;
  }
  const PackFixture& fixture = read.Value();
  ++index.fixtures;
  for (std::size_t number = 0; number < fixture.modes.size(); ++number) {
    if (index.entries.size() == PackIndex::kMostEntries) return;
    const PackMode& mode = fixture.modes[number];
    std::string key = support::ToUpper(fixture.maker + ' ' + fixture.model + ' ' + mode.name);
    index.entries.push_back({fixture.maker, fixture.model, mode.name, std::move(key),
                             mode.slots.size() + mode.further, file, number});
  }
}

void SortIndex(PackIndex& index) {
  std::stable_sort(index.entries.begin(), index.entries.end(),
                   [](const PackEntry& a, const PackEntry& b) { return a.key < b.key; });
}

PackFound FindInIndex(const PackIndex& index, std::string_view text, std::size_t most) {
  const std::string upper = support::ToUpper(text);
  std::vector<std::string_view> words = support::Split(upper, ' ');
  std::erase(words, std::string_view());
  PackFound found;
  for (const PackEntry& entry : index.entries) {
    const bool holds = std::all_of(words.begin(), words.end(), [&entry](std::string_view word) {
      return entry.key.find(word) != std::string::npos;
    });
    if (!holds) continue;
    if (found.entries.size() < most) found.entries.push_back(&entry);
    ++found.all;
  }
  return found;
}

}  // namespace dmx
