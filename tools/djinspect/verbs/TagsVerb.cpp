// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "catalogue/AddFile.h"
#include "catalogue/track_table.h"
#include "platform/tags/TagLibTagReader.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {

/// The thirteen cells of the catalogue row that the file would get, by their columns' keys.
ExitCode InspectTags(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  platform::tags::TagLibTagReader reader;
  const auto row = catalogue::AnalyseFile(reader, arguments.words[0]);
  if (!row) {
    err << row.Failure().text << '\n';
    return ExitCode::NothingRead;
  }
  nlohmann::ordered_json cells;
  for (std::size_t i = 0; i < row.Value().size(); ++i) {
    cells[std::string(catalogue::TrackColumns()[i].key)] = ReadableText(row.Value()[i]);
  }
  out << cells.dump(2) << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
