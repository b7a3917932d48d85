// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/FoldText.h"
#include "catalogue/Playlist.h"
#include "catalogue/SearchIndex.h"
#include "catalogue/SortOrder.h"

namespace {

void Require(bool holds) {
  if (!holds) abort();
}

catalogue::PathList InPieces(std::string_view text) {
  catalogue::PathListParser parser;
  while (!text.empty()) {
    const std::size_t piece = std::min<std::size_t>(text.size(), 1 + static_cast<unsigned char>(text[0]) % 9);
    parser.Feed(text.substr(0, piece));
    text.remove_prefix(piece);
  }
  return parser.Finish();
}

/// The paths as the rows of a table, searched by the text's first line.
void Search(std::string_view text, const std::vector<std::string>& paths) {
  const std::atomic<bool> go_on{false};
  catalogue::track_table table(catalogue::TrackColumns());
  for (const std::string& path : paths) {
    table.AddRow(std::vector<std::string_view>{path, path, path, path, path, path, path, path});
  }
  catalogue::SearchIndex index(catalogue::kTrackSearch);
  Require(index.Follow(table, go_on));
  const auto order = catalogue::OrderBy(table, {catalogue::track::kTitle}, go_on);
  Require(static_cast<int>(order.size()) == table.Rows());
  const auto query = catalogue::ParseQuery(text.substr(0, text.find('\n')));
  std::vector<int> sorted = index.Find(query, &order);
  std::sort(sorted.begin(), sorted.end());
  Require(sorted == index.Find(query));
}

}  // namespace

/// Any bytes give the same paths however they are cut, none with a line end in it; folding folds once; and
/// any table of them can be searched and sorted.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  catalogue::PathListParser parser;
  parser.Feed(text);
  const catalogue::PathList list = parser.Finish();
  Require(list.paths == InPieces(text).paths);
  for (const std::string& path : list.paths) {
    Require(!path.empty() && path.front() != '#' && path.find_first_of("\r\n") == std::string::npos);
  }
  const std::string folded = catalogue::Folded(text);
  Require(catalogue::Folded(folded) == folded);
  Require(folded.empty() || (folded.front() != ' ' && folded.back() != ' '));
  Search(text, list.paths);
  return 0;
}
