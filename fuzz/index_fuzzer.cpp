// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "catalogue/IndexFile.h"
#include "catalogue/track_table.h"

namespace {

using catalogue::IndexParser;
using catalogue::IndexReport;
using catalogue::track_table;

void Require(bool holds) {
  if (!holds) abort();
}

IndexReport Load(std::string_view text, track_table& table) {
  IndexParser parser(table);
  parser.Feed(text);
  return parser.Finish();
}

/// Cut where the bytes themselves say.
IndexReport LoadInPieces(std::string_view text, track_table& table) {
  IndexParser parser(table);
  while (!text.empty()) {
    const std::size_t piece = std::min<std::size_t>(text.size(), 1 + static_cast<unsigned char>(text[0]) % 9);
    parser.Feed(text.substr(0, piece));
    text.remove_prefix(piece);
  }
  return parser.Finish();
}

void RequireSame(const track_table& one, const track_table& other) {
  Require(one.Rows() == other.Rows());
  std::vector<std::string_view> cells(one.Columns().size()), others(cells.size());
  for (int row = 1; row <= one.Rows(); ++row) {
    one.Cells(row, cells);
    other.Cells(row, others);
    Require(cells == others);
  }
}

/// Every tab and line end of the text is one between cells or rows; none came out of a cell.
void RequireNothingBreaksOut(std::string_view text, const track_table& table) {
  const auto count = [text](char c) { return std::count(text.begin(), text.end(), c); };
  Require(count('\t') == table.Rows() * (static_cast<std::ptrdiff_t>(table.Columns().size()) - 1));
  Require(count('\r') == table.Rows() && count('\n') == table.Rows());
}

}  // namespace

/// Any bytes load to the same table however they are cut, and a table comes back from its own text whole.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  for (const auto columns : {catalogue::TrackColumns(), catalogue::KaraokeColumns()}) {
    track_table table(columns), cut(columns), again(columns);
    const IndexReport report = Load(text, table);
    Require(report.rows == table.Rows());
    const IndexReport cut_report = LoadInPieces(text, cut);
    Require(report.rows == cut_report.rows && report.short_rows == cut_report.short_rows);
    Require(report.long_rows == cut_report.long_rows && report.broken_rows == cut_report.broken_rows);
    RequireSame(table, cut);
    const std::string saved = catalogue::IndexText(table);
    RequireNothingBreaksOut(saved, table);
    Require(Load(saved, again).Skipped() == 0);
    RequireSame(table, again);
  }
  return 0;
}
