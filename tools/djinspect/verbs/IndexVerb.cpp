// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "catalogue/IndexFile.h"
#include "catalogue/track_table.h"
#include "platform/files/DiskFileSaver.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

/// Row by row, as a whole collection is too much for one tree.
void PrintTable(const catalogue::track_table& table, int skipped, std::ostream& out) {
  auto columns = nlohmann::json::array();
  for (const catalogue::Column& column : table.Columns()) columns.push_back(column.key);
  out << "{\"columns\": " << columns.dump() << ",\n \"rows\": [";
  std::vector<std::string_view> cells(table.Columns().size());
  for (int row = 1; row <= table.Rows(); ++row) {
    table.Cells(row, cells);
    auto line = nlohmann::json::array();
    for (const std::string_view cell : cells) line.push_back(ReadableText(cell));
    out << (row == 1 ? "\n  " : ",\n  ") << line.dump();
  }
  out << "],\n \"skipped\": " << skipped << "}\n";
}

}  // namespace

/// The rows of an index file, and how many lines of it are no row; writes the table again where asked to.
ExitCode InspectIndex(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  catalogue::track_table table(arguments.Has("--karaoke") ? catalogue::KaraokeColumns()
                                                          : catalogue::TrackColumns());
  const auto report = catalogue::LoadIndex(arguments.words[0], table);
  if (!report) {
    err << report.Failure().text << '\n';
    return ExitCode::NothingRead;
  }
  PrintTable(table, report.Value().Skipped(), out);
  const auto copy = arguments.options.find("--rewrite");
  if (copy == arguments.options.end()) return ExitCode::Read;
  platform::files::DiskFileSaver saver;
  const auto saved = catalogue::SaveIndex(saver, copy->second, table);
  if (saved) return ExitCode::Read;
  err << saved.Failure().text << '\n';
  return ExitCode::NothingRead;
}

}  // namespace tools::djinspect
