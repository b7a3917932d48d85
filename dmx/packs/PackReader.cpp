// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/packs/PackReader.h"

#include <algorithm>
#include <string>
#include <utility>

#include "dmx/DataFile.h"
#include "support/Sentences.h"

namespace dmx {
namespace {

namespace fs = std::filesystem;
using support::ErrorCode;
using support::Sentence;

constexpr int kMostMoves = 4;

/// The maker's own name; empty where only his folder is known and no list stands beside it.
std::string MakerOf(const FixtureFormats& formats, const fs::path& file) {
  const fs::path folder = file.parent_path();
  const std::string key = folder.filename().string();
  for (const fs::path& place : {folder.parent_path(), folder}) {
    const auto list = WholeDataFile(place / "manufacturers.json", kLongestPackFile);
    if (!list) continue;
    const auto makers = formats.Makers(list.Value());
    const auto found = makers.find(key);
    if (found != makers.end()) return found->second;
  }
  return key;
}

/// "maker/model" and nothing that leads out of the library.
bool IsPlainPlace(const std::string& place) {
  return place.find("..") == std::string::npos && place.find_first_of("\\:") == std::string::npos &&
         !place.starts_with('/') && std::count(place.begin(), place.end(), '/') == 1;
}

}  // namespace

support::Result<PackFixture> OpenPackFixture(const FixtureFormats& formats, const fs::path& path) {
  fs::path place = fs::absolute(path);
  for (int move = 0; move <= kMostMoves; ++move) {
    const auto text = WholeDataFile(place, kLongestPackFile);
    if (!text && move > 0) {
      return support::Failed(ErrorCode::NotFound, Sentence::PackMovedNowhere,
                             {path.string(), place.string()});
    }
    if (!text) return text.Failure();
    auto fixture = formats.Read(text.Value());
    if (!fixture) return fixture.Failure();
    if (fixture.Value().maker.empty()) fixture.Value().maker = MakerOf(formats, place);
    const std::string& moved_to = fixture.Value().moved_to;
    if (moved_to.empty()) return fixture;
    if (!IsPlainPlace(moved_to))
      return support::Failed(ErrorCode::NotFound, Sentence::PackMovedNowhere, {path.string(), moved_to});
    place = place.parent_path().parent_path() / (moved_to + ".json");
  }
  return support::Failed(ErrorCode::Malformed, Sentence::PackMovedInCircles, {path.string()});
}

}  // namespace dmx
