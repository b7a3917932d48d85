// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later

// first_index FOLDER AS OUT
// Writes the index OUT of the audio files in FOLDER, in the order of their names, as they will lie in the
// folder AS; "./NAME" is a folder beside the index, wherever that is laid.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "catalogue/AddFile.h"
#include "catalogue/IndexFile.h"
#include "catalogue/track_table.h"
#include "platform/files/DiskFileSaver.h"
#include "platform/tags/TagLibTagReader.h"

namespace {

namespace fs = std::filesystem;

int Complain(const std::string& sentence) {
  std::fprintf(stderr, "%s\n", sentence.c_str());
  return 1;
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc != 4) return Complain("first_index FOLDER AS OUT");
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(argv[1])) files.push_back(entry.path());
  std::sort(files.begin(), files.end());

  catalogue::track_table table(catalogue::TrackColumns());
  platform::tags::TagLibTagReader reader;
  for (const fs::path& file : files) {
    const auto row = catalogue::AnalyseFile(reader, file.string());
    if (!row) return Complain(row.Failure().text);
    table.AddRow(std::vector<std::string_view>(row.Value().begin(), row.Value().end()));
    table.SetCell(table.Rows(), catalogue::track::kFilename, (fs::path(argv[2]) / file.filename()).string());
  }
  platform::files::DiskFileSaver saver;
  const auto saved = catalogue::SaveIndex(saver, argv[3], table);
  return saved ? 0 : Complain(saved.Failure().text);
}
