// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/recording/KeptRecordings.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>

#include "app/recording/RecordingChoice.h"
#include "support/Text.h"

namespace app {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMoment = "0000-00-00 00.00.00";  // a 0 stands for a digit

/// The entries of a folder that are wanted, as many as could be read.
template <typename Wanted>
std::vector<fs::path> EntriesOf(const fs::path& folder, const Wanted& wanted) {
  std::vector<fs::path> found;
  std::error_code error;
  for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    if (wanted(*at)) found.push_back(at->path());
  }
  return found;
}

std::string CueSheetBeside(fs::path path) {
  constexpr std::size_t kMost = 1 << 20;
  std::ifstream file(path.replace_extension(".cue"), std::ios::binary);
  std::string text(kMost, '\0');
  file.read(text.data(), static_cast<std::streamsize>(kMost));
  text.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
  return text;
}

KeptRecording FileWithTracks(const fs::path& path) {
  KeptRecording recording{path.stem().string(), path.string(), TracksOfCueSheet(CueSheetBeside(path))};
  for (RecordedTrack& track : recording.tracks) {
    const fs::path named = path.parent_path() / fs::path(track.file).filename();
    std::error_code ignored;
    // Whoever renames a recording renames its cue sheet, and not what stands there.
    track.file = fs::exists(named, ignored) && IsSoundFile(named) ? named.string() : recording.path;
  }
  return recording;
}

/// "01 Artist - Title" without the number, which the order tells.
std::string TitleOf(const fs::path& path) {
  const std::string stem = path.stem().string();
  const std::size_t words = stem.find_first_not_of("0123456789");
  return words == std::string::npos || stem[words] != ' ' ? stem : stem.substr(words + 1);
}

KeptRecording FolderOfTracks(const fs::path& folder) {
  KeptRecording recording{folder.filename().string(), folder.string(), {}};
  std::vector<fs::path> files =
      EntriesOf(folder, [](const fs::directory_entry& entry) { return IsSoundFile(entry.path()); });
  std::sort(files.begin(), files.end());
  for (const fs::path& file : files) recording.tracks.push_back({{}, {}, TitleOf(file), file.string()});
  return recording;
}

}  // namespace

bool IsSoundFile(const fs::path& path) {
  const std::string ending = path.extension().string();
  for (const auto format : {RecordingFormat::Flac, RecordingFormat::Wav, RecordingFormat::Ogg,
                            RecordingFormat::Opus, RecordingFormat::Mp3}) {
    if (ending.size() > 1 && support::EqualsIgnoringCase(ending.substr(1), ExtensionOf(format))) return true;
  }
  return false;
}

bool NamesARecording(const std::string& text) {
  if (text.size() < kMoment.size()) return false;
  const std::string_view end = std::string_view(text).substr(text.size() - kMoment.size());
  return std::equal(end.begin(), end.end(), kMoment.begin(), [](char given, char wanted) {
    return wanted == '0' ? given >= '0' && given <= '9' : given == wanted;
  });
}

std::vector<KeptRecording> RecordingsIn(const fs::path& folder, std::size_t most) {
  std::error_code ignored;
  auto found = EntriesOf(folder, [&](const fs::directory_entry& entry) {
    const fs::path& path = entry.path();
    return IsSoundFile(path) ? NamesARecording(path.stem().string())
                             : NamesARecording(path.filename().string()) && entry.is_directory(ignored);
  });
  const auto moment = [](const fs::path& path) {
    const std::string name = IsSoundFile(path) ? path.stem().string() : path.filename().string();
    return name.substr(name.size() - kMoment.size());
  };
  std::sort(found.begin(), found.end(),
            [&](const fs::path& a, const fs::path& b) { return moment(a) > moment(b); });
  if (found.size() > most) found.resize(most);
  std::vector<KeptRecording> recordings;
  for (const fs::path& path : found) {
    recordings.push_back(IsSoundFile(path) ? FileWithTracks(path) : FolderOfTracks(path));
    if (recordings.back().tracks.empty() && !IsSoundFile(path)) recordings.pop_back();
  }
  return recordings;
}

}  // namespace app
