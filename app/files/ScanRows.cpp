// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/ScanRows.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "app/sound/AnalysisRows.h"
#include "catalogue/AnalysisParts.h"

namespace app {
namespace {

namespace fs = std::filesystem;
namespace track = catalogue::track;
namespace karaoke = catalogue::karaoke;
using catalogue::track_table;

// What a tag tells, and what is known for mixing.
constexpr std::array kTrackTold{track::kArtist, track::kTitle, track::kTime,    track::kGenre,
                                track::kAlbum,  track::kYear,  track::kBitrate, track::kFreq};
constexpr std::array kKaraokeTold{karaoke::kArtist, karaoke::kTitle, karaoke::kGenre, karaoke::kTime};
constexpr std::array kMixing{track::kBpm, track::kGain, track::kStartMixPoint, track::kEndMixPoint};

std::string_view& At(std::vector<std::string_view>& cells, int column) {
  return cells[static_cast<std::size_t>(column - 1)];
}

/// A disk that does not answer, or a folder that may not be read, says nothing about a file.
bool IsGone(std::string_view path) {
  std::error_code error;
  return fs::status(fs::path(std::string(path)), error).type() == fs::file_type::not_found;
}

/// The folder that a file lay in is there and holds something, so its disk is there too.
bool FolderStands(std::string_view path) {
  std::error_code error;
  const fs::directory_iterator first(fs::path(std::string(path)).parent_path(), error);
  return !error && first != fs::directory_iterator();
}

class Join {
 public:
  Join(const track_table& before, const ScanFound& found, const std::vector<ScannedFolder>& folders,
       catalogue::SideStore* store)
      : before_(before),
        found_(found),
        folders_(folders),
        store_(store != nullptr && store->KeepsSounds() ? store : nullptr),
        music_(before.Columns().size() == catalogue::TrackColumns().size()),
        path_(music_ ? track::kFilename : karaoke::kFilename),
        met_(static_cast<std::size_t>(before.Rows()) + 1),
        joined_{track_table(before.Columns()), track_table(before.Columns()), 0, {}} {}

  ScanRows Run() {
    old_.reserve(static_cast<std::size_t>(before_.Rows()));
    before_.VisitColumn(path_, [this](int row, std::string_view path) {
      old_.try_emplace(path, row);
      return true;
    });
    for (int row = 1; row <= found_.rows.Rows(); ++row) Take(row);
    TakeLost();
    return std::move(joined_);
  }

 private:
  void Take(int row) {
    found_.rows.Cells(row, cells_);
    const auto old = old_.find(At(cells_, path_));
    const int old_row = old == old_.end() ? 0 : old->second;
    met_[static_cast<std::size_t>(old_row)] = true;
    if (old_row == 0) new_rows_.push_back(joined_.rows.Rows() + 1);
    if (!music_) return void(joined_.rows.AddRow(cells_));
    const auto place = static_cast<std::size_t>(row - 1);
    const bool fresh = old_row == 0 || (place < found_.fresh.size() && found_.fresh[place]);
    // Where the sound is another one, it mostly has another length.
    const bool same =
        old_row > 0 && (!fresh || before_.Cell(old_row, track::kTime) == At(cells_, track::kTime));
    bool hand_asked = false;
    if (same && !fresh) hand_asked = Carry(old_row);
    const int added = joined_.rows.AddRow(cells_);
    if (fresh || hand_asked) FillInKept(added, same ? old_row : 0);
    if (same && fresh) CarryWhereEmpty(old_row, added);
  }

  /// True where a mix point of the row before differs from the tag's: a hand may have put it there.
  bool Carry(int old_row) {
    bool differs = false;
    for (const int column : kMixing) {
      const std::string_view known = before_.Cell(old_row, column);
      if (known.empty()) continue;
      std::string_view& cell = At(cells_, column);
      const bool point = column == track::kStartMixPoint || column == track::kEndMixPoint;
      differs = differs || (point && !cell.empty() && cell != known);
      if (cell.empty()) cell = known;
    }
    return differs;
  }

  void CarryWhereEmpty(int old_row, int row) {
    for (const int column : kMixing) {
      if (!joined_.rows.Cell(row, column).empty() || before_.Cell(old_row, column).empty()) continue;
      joined_.rows.SetCell(row, column, before_.Cell(old_row, column));
    }
  }

  void FillInKept(int row, int old_row) {
    const auto key = KeyOfRow(row);
    if (!key) return;
    const catalogue::FileMarks marks = catalogue::ReadMarks(*store_, *key);
    const auto facts = store_->Read(key->path, key->stamp, catalogue::SidePart::Facts);
    auto known =
        facts ? catalogue::UnpackFacts(*facts).value_or(music::TrackAnalysis{}) : music::TrackAnalysis{};
    const auto grid = store_->Read(key->path, key->stamp, catalogue::SidePart::Grid);
    auto beats = grid ? catalogue::UnpackGrid(*grid) : std::nullopt;
    if (beats) known.grid = std::make_shared<const music::BeatGrid>(std::move(*beats));
    FillIn(joined_.rows, row, known, AsTagsGo(marks));
    // What was kept earlier did not tell where.
    using catalogue::PointBy;
    if (marks.start == PointBy::Hand && !marks.start_at) Restore(old_row, row, track::kStartMixPoint);
    if (marks.end == PointBy::Hand && !marks.end_at) Restore(old_row, row, track::kEndMixPoint);
  }

  void Restore(int old_row, int row, int column) {
    const std::string_view known = before_.Cell(old_row, column);
    if (!known.empty()) joined_.rows.SetCell(row, column, known);
  }

  /// A point that the tag gives stays; only a hand's goes before it.
  static catalogue::FileMarks AsTagsGo(catalogue::FileMarks marks) {
    using catalogue::PointBy;
    for (PointBy* by : {&marks.start, &marks.end}) *by = *by == PointBy::Scan ? PointBy::Unknown : *by;
    return marks;
  }

  std::optional<catalogue::SideKey> KeyOfRow(int row) const {
    if (store_ == nullptr) return std::nullopt;
    return catalogue::KeptKeyOf(*store_, std::string(joined_.rows.Cell(row, path_)));
  }

  [[nodiscard]] bool WasScanned(std::string_view path) const {
    return std::any_of(folders_.begin(), folders_.end(),
                       [&](const ScannedFolder& one) { return one.there && LiesBelow(path, one.path); });
  }

  void TakeLost() {
    std::vector<int> lost;
    for (int row = 1; row <= before_.Rows(); ++row) {
      const auto first = old_.find(before_.Cell(row, path_));
      if (!met_[static_cast<std::size_t>(first->second)]) lost.push_back(row);
    }
    if (lost.empty()) return;
    FindMoves(lost);
    for (const int row : lost) {
      const std::string_view path = before_.Cell(row, path_);
      if (moved_.contains(path)) continue;
      if (WasScanned(path) && IsGone(path)) {
        joined_.gone.AppendFrom(before_, row);
      } else {
        joined_.rows.AppendFrom(before_, row);
        ++joined_.kept;
      }
    }
  }

  /// The name of the file and what its tag tells, as one text.
  std::string MarkOf(const track_table& table, int row) const {
    const std::string_view path = table.Cell(row, path_);
    std::string mark(path.substr(path.find_last_of("/\\") + 1));
    const std::span<const int> told =
        music_ ? std::span<const int>(kTrackTold) : std::span<const int>(kKaraokeTold);
    for (const int column : told) {
      mark += '\0';
      mark += table.Cell(row, column);
    }
    return mark;
  }

  /// Rows by their marks; 0 where a mark is there twice.
  std::unordered_map<std::string, int> MarksOf(const track_table& table, const std::vector<int>& rows) const {
    std::unordered_map<std::string, int> marks;
    for (const int row : rows) {
      const auto [place, is_new] = marks.try_emplace(MarkOf(table, row), row);
      if (!is_new) place->second = 0;
    }
    return marks;
  }

  /// A file was moved where it is found once elsewhere: by its sound, or by its name and all that its tag
  /// tells.
  void FindMoves(const std::vector<int>& lost) {
    if (new_rows_.empty()) return;
    for (const int row : new_rows_) {
      const auto key = KeyOfRow(row);
      if (!key) continue;
      const auto old = old_.find(catalogue::LastPathOf(*store_, *key));
      if (old == old_.end() || met_[static_cast<std::size_t>(old->second)]) continue;
      Note(old->second, row);
    }
    const auto new_marks = MarksOf(joined_.rows, new_rows_);
    const auto old_marks = MarksOf(before_, lost);
    for (const int row : lost) {
      if (moved_.contains(before_.Cell(row, path_))) continue;
      const std::string mark = MarkOf(before_, row);
      const auto place = new_marks.find(mark);
      if (place != new_marks.end() && place->second != 0 && old_marks.at(mark) == row)
        Note(row, place->second);
    }
  }

  void Note(int old_row, int row) {
    const std::string_view from = before_.Cell(old_row, path_);
    if (!IsGone(from) || !(WasScanned(from) || FolderStands(from))) return;
    if (!moved_.try_emplace(from, row).second) return;
    joined_.moved.push_back({std::string(from), std::string(joined_.rows.Cell(row, path_))});
    if (music_) CarryWhereEmpty(old_row, row);
    // Where it is now is noted, for the next time.
    if (KeyOfRow(row)) static_cast<void>(catalogue::KeyOf(*store_, joined_.moved.back().to));
  }

  const track_table& before_;
  const ScanFound& found_;
  const std::vector<ScannedFolder>& folders_;
  catalogue::SideStore* const store_;
  const bool music_;
  const int path_;
  std::unordered_map<std::string_view, int> old_;  ///< rows of the table before, by their paths
  std::vector<bool> met_;                          ///< by row, from 1
  std::vector<int> new_rows_;
  std::unordered_map<std::string_view, int> moved_;
  std::vector<std::string_view> cells_ = std::vector<std::string_view>(track_table::kMostColumns);
  ScanRows joined_;
};

}  // namespace

bool LiesBelow(std::string_view path, std::string_view folder) {
  while (!folder.empty() && (folder.back() == '/' || folder.back() == '\\')) folder.remove_suffix(1);
  return path.size() > folder.size() && path.starts_with(folder) &&
         (path[folder.size()] == '/' || path[folder.size()] == '\\');
}

ScanRows JoinRows(const track_table& before, const ScanFound& found,
                  const std::vector<ScannedFolder>& folders, catalogue::SideStore* store) {
  return Join(before, found, folders, store).Run();
}

}  // namespace app
