// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "catalogue/IndexFile.h"
#include "catalogue/Playlist.h"
#include "catalogue/track_table.h"
#include "support/Sentences.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

void PrintRows(const catalogue::track_table& table, std::ostream& out) {
  out << "{\"rows\": [";
  std::vector<std::string_view> cells(table.Columns().size());
  for (int row = 1; row <= table.Rows(); ++row) {
    table.Cells(row, cells);
    auto line = nlohmann::json::array();
    for (const std::string_view cell : cells) line.push_back(ReadableText(cell));
    out << (row == 1 ? "\n  " : ",\n  ") << line.dump();
  }
  out << "]}\n";
}

void PrintEntries(const std::vector<std::string>& paths, std::ostream& out) {
  out << "{\"entries\": [";
  for (std::size_t i = 0; i < paths.size(); ++i) {
    out << (i == 0 ? "\n  " : ",\n  ") << nlohmann::json(ReadableText(paths[i])).dump();
  }
  out << "]}\n";
}

}  // namespace

/// The paths of an M3U or M3U8, the rows of a TPL; told by the file's last letters.
ExitCode InspectPlaylist(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  const std::string& path = arguments.words[0];
  const support::Sentences say;
  if (catalogue::PlaylistFileOf(path) == catalogue::PlaylistFile::Own) {
    catalogue::track_table table(catalogue::TrackColumns());
    if (const auto report = catalogue::LoadIndex(path, table, say); !report) {
      err << say(report.Failure()) << '\n';
      return ExitCode::NothingRead;
    }
    PrintRows(table, out);
    return ExitCode::Read;
  }
  if (catalogue::PlaylistFileOf(path) != catalogue::PlaylistFile::List) {
    err << "A playlist's name ends in TPL, M3U or M3U8.\n";
    return ExitCode::NothingRead;
  }
  const auto list = catalogue::ReadPathList(path);
  if (!list) {
    err << say(list.Failure()) << '\n';
    return ExitCode::NothingRead;
  }
  PrintEntries(list.Value().paths, out);
  return ExitCode::Read;
}

}  // namespace tools::djinspect
