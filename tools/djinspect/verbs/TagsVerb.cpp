// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "catalogue/AddFile.h"
#include "catalogue/track_table.h"
#include "platform/tags/TagFileEditor.h"
#include "platform/tags/TagLibTagReader.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

/// Every field by the name that it has in its tag, pictures by their kind and size.
ExitCode InspectAll(const std::string& path, std::ostream& out, std::ostream& err) {
  const auto tags = platform::tags::EverythingIn(path);
  if (!tags) {
    err << tags.Failure().text << '\n';
    return ExitCode::NothingRead;
  }
  auto fields = nlohmann::ordered_json::array(), pictures = nlohmann::ordered_json::array();
  for (const auto& [tag, name, value] : tags.Value().fields)
    fields.push_back({{"tag", tag}, {"name", ReadableText(name)}, {"value", ReadableText(value)}});
  for (const auto& [type, mime, bytes] : tags.Value().pictures)
    pictures.push_back({{"type", type}, {"mime", ReadableText(mime)}, {"bytes", bytes}});
  out << nlohmann::ordered_json{{"fields", fields}, {"pictures", pictures}}.dump(2) << '\n';
  return ExitCode::Read;
}

}  // namespace

/// The thirteen cells of the catalogue row that the file would get, by their columns' keys.
ExitCode InspectTags(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  if (arguments.Has("--all")) return InspectAll(arguments.words[0], out, err);
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
