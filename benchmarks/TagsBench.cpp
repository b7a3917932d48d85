// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <taglib/fileref.h>
#include <taglib/tag.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

#include "benchmarks/Bench.h"
#include "benchmarks/ScanTree.h"
#include "platform/files/testing/TestFolder.h"
#include "platform/tags/TagFileEditor.h"

namespace bench {
namespace {

constexpr int kTaggedFiles = 1000;
constexpr int kTagRuns = 5;

/// What takes every write back is kept, as while the program runs.
void WriteOurs(const std::vector<std::string>& paths, const std::string& artist) {
  platform::tags::TagFileEditor editor;
  std::vector<catalogue::TagUndo> journal;
  catalogue::TagEdit edit;
  edit[catalogue::TagField::Artist] = artist;
  for (const std::string& path : paths) {
    auto written = editor.Write(path, edit);
    if (!written) std::abort();
    journal.push_back(std::move(written.Value()));
  }
}

/// In place, without a look at what came out, and lost where the power goes meanwhile.
void WriteBare(const std::vector<std::string>& paths, const std::string& artist) {
  for (const std::string& path : paths) {
    TagLib::FileRef file(path.c_str(), false);
    if (file.isNull()) std::abort();
    file.tag()->setArtist(artist);
    if (!file.save()) std::abort();
  }
}

}  // namespace

std::vector<Figure> MeasureTags() {
  const platform::files::testing::TestFolder folder;
  const auto paths = MakeCollection(folder.Path(), kTaggedFiles);
  std::vector<double> ours, bare;
  const auto rate = [](const auto& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return kTaggedFiles / std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  };
  for (int run = 0; run < kTagRuns; ++run) {
    const std::string artist = "Artist of run " + std::to_string(run);
    ours.push_back(rate([&] { WriteOurs(paths, artist); }));
    bare.push_back(rate([&] { WriteBare(paths, artist + "b"); }));
  }
  return {
      {"artist of 1,000 files written, read again, swapped in, flushed, undo kept (TagLib alone, in place)",
       "files/s", Median(ours), Median(bare), ""}};
}

}  // namespace bench
