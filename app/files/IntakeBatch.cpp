// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/IntakeBatch.h"

#include <filesystem>
#include <string_view>
#include <utility>

#include "catalogue/AddFile.h"
#include "catalogue/IndexFile.h"
#include "catalogue/Playlist.h"
#include "catalogue/RowMoves.h"

namespace app {
namespace {

namespace fs = std::filesystem;
using catalogue::PlaylistFile;
using support::Sentence;

constexpr int kMostToldFiles = 500;
constexpr int kQuickOnesAtOnce = 256;

bool IsThere(const std::string& path) {
  std::error_code error;
  return fs::exists(path, error) && !error;
}

std::string NameOf(const std::string& path) {
  return fs::path(path).filename().string();
}

catalogue::ScanMode KindsFor(ListId list) {
  return list == ListId::Karaoke ? catalogue::ScanMode::Karaoke : catalogue::ScanMode::Music;
}

/// Takes out the rows whose file stands in the other table too.
void LeaveOut(catalogue::track_table& rows, const catalogue::track_table& known, int column) {
  std::unordered_map<std::string, int> ours;
  rows.VisitColumn(column, [&ours](int row, std::string_view file) {
    ours.emplace(file, row);
    return true;
  });
  std::vector<int> gone;
  std::string name;
  known.VisitColumn(column, [&](int, std::string_view file) {
    name = file;
    if (const auto found = ours.find(name); found != ours.end()) {
      gone.push_back(found->second);
      ours.erase(found);
    }
    return !ours.empty();
  });
  catalogue::RemoveRows(rows, std::move(gone));
}

}  // namespace

IntakeBatch::IntakeBatch(std::shared_ptr<const IntakeOrder> order, const catalogue::NameRule& names,
                         const Ports& ports, const catalogue::track_table& catalogue,
                         const catalogue::track_table& karaoke)
    : order_(std::move(order)),
      names_(names),
      ports_(ports),
      known_tracks_(catalogue),
      known_songs_(karaoke),
      looking_(false),
      total_(static_cast<int>(order_->paths.size())) {}

AddingProgress IntakeBatch::Progress() const {
  return {done_, total_, looking_};
}

bool IntakeBatch::Step() {
  for (int quick = 0; quick < kQuickOnesAtOnce; ++quick) {
    if (stop_) {
      outcome_.stopped = true;
      return false;
    }
    if (walk_) return WalkOn(), true;
    if (next_path_ < order_->paths.size()) {
      Expand(order_->paths[next_path_++]);
    } else if (!matched_) {
      FindKnown();
    } else if (next_entry_ == entries_.size()) {
      return false;
    } else {
      const bool read = Take(entries_[next_entry_++]);
      ++done_;
      if (read) return true;
    }
  }
  return true;
}

void IntakeBatch::Expand(const std::string& path) {
  if (order_->source == IntakeOrder::Source::Opened) return ExpandPlaylist(path);
  std::error_code error;
  if (fs::is_directory(path, error)) return BeginWalk(path);
  const PlaylistFile kind = catalogue::PlaylistFileOf(path);
  if (IntoPlaylist() && kind != PlaylistFile::Track && kind != PlaylistFile::Nothing) {
    return ExpandPlaylist(path);
  }
  Put(path, Entry::From::Hand);
}

void IntakeBatch::ExpandPlaylist(const std::string& path) {
  switch (catalogue::PlaylistFileOf(path)) {
    case PlaylistFile::Track:
      return Put(path, Entry::From::List);
    case PlaylistFile::Own:
      return ReadTable(path);
    case PlaylistFile::List:
      return ReadList(path);
    case PlaylistFile::Nothing:
      return;
  }
}

void IntakeBatch::ReadTable(const std::string& path) {
  catalogue::track_table rows(catalogue::TrackColumns());
  const auto report = catalogue::LoadIndex(path, rows, ports_.say);
  if (!report) return Refuse(ports_.say(Sentence::PlaylistUnreadable, {NameOf(path)}));
  const int skipped = report.Value().Skipped();
  if (skipped > 0) {
    const bool paths = report.Value().rows == 0 && catalogue::LooksLikePathList(path);
    Refuse(paths ? ports_.say(Sentence::PlaylistIsPathList, {NameOf(path)})
                 : ports_.say(Sentence::PlaylistLinesLeftOut, {NameOf(path), std::to_string(skipped)}));
  }
  const int first = tables_.Rows() + 1;
  tables_.AppendAll(std::move(rows));
  entries_.push_back({path, {}, Entry::From::Table, first, tables_.Rows() + 1});
}

void IntakeBatch::ReadList(const std::string& path) {
  auto list = catalogue::ReadPathList(path);
  if (!list) return Refuse(ports_.say(list.Failure()));
  for (std::string& entry : list.Value().paths) Put(std::move(entry), Entry::From::List);
  if (const int left_out = list.Value().too_long; left_out > 0) {
    Refuse(ports_.say(Sentence::PlaylistLinesLeftOut, {NameOf(path), std::to_string(left_out)}));
  }
}

void IntakeBatch::BeginWalk(const std::string& path) {
  looking_ = true;
  walk_.emplace(
      ports_.folders, path,
      [mode = KindsFor(order_->list)](std::string_view name) { return catalogue::IsPlayable(mode, name); },
      [](std::string_view name) { return !catalogue::IsDebris(name); });
}

void IntakeBatch::WalkOn() {
  const auto folder = walk_->Step();
  if (folder) {
    for (const catalogue::ListedFile& file : folder->files) {
      Put(catalogue::PathIn(folder->path, file.name), Entry::From::Folder);
    }
  }
  if (walk_->Now() != catalogue::FolderWalk::State::Going) EndWalk();
}

void IntakeBatch::EndWalk() {
  const auto state = walk_->Now();
  for (const std::string& folder : walk_->Unreadable()) {
    Refuse(ports_.say(Sentence::FolderUnreadable, {folder}));
  }
  if (state == catalogue::FolderWalk::State::RootMissing) {
    Refuse(ports_.say(Sentence::FolderUnreadable, {walk_->Where()}));
  } else if (state == catalogue::FolderWalk::State::Lost) {
    Refuse(ports_.say(Sentence::FolderWentAway, {walk_->Where()}));
  }
  walk_.reset();
}

void IntakeBatch::Put(std::string path, Entry::From from) {
  std::string audio = catalogue::AudioPathOf(path);
  // A picture and its sound are one song; in a list of paths a track may stand twice.
  if (from != Entry::From::List && !put_.insert(audio).second) return;
  entries_.push_back({std::move(path), std::move(audio), from});
  if (looking_) done_ = static_cast<int>(entries_.size());
}

void IntakeBatch::FindKnown() {
  matched_ = true;
  for (const Entry& entry : entries_) track_row_.emplace(entry.audio, 0);
  std::string name;
  known_tracks_.VisitColumn(catalogue::track::kFilename, [&](int row, std::string_view file) {
    name = file;
    if (const auto found = track_row_.find(name); found != track_row_.end() && found->second == 0) {
      found->second = row;
    }
    return true;
  });
  known_songs_.VisitColumn(catalogue::karaoke::kFilename, [&](int, std::string_view file) {
    name = file;
    if (track_row_.contains(name)) song_files_.insert(name);
    return true;
  });
  done_ = 0;
  total_ = static_cast<int>(entries_.size());
  looking_ = false;
}

bool IntakeBatch::Take(const Entry& entry) {
  if (entry.from == Entry::From::Table) {
    for (int row = entry.first_row; row < entry.end_row; ++row) list_.AppendFrom(tables_, row);
    return false;
  }
  const bool midi = catalogue::KindOf(entry.path) == catalogue::FileKind::MidiSong;
  return midi || order_->list == ListId::Karaoke ? TakeSong(entry) : TakeTrack(entry);
}

bool IntakeBatch::TakeSong(const Entry& entry) {
  if (!song_files_.insert(entry.audio).second) {
    ++outcome_.known;
    Note(entry);
    return false;
  }
  const auto row = catalogue::AnalyseSong(ports_.songs, ports_.tags, entry.audio, &ports_.scratch, names_);
  if (!row) {
    song_files_.erase(entry.audio);
    Refuse(ports_.say(row.Failure()));
    return true;
  }
  songs_.AddRow(catalogue::KaraokeRow(catalogue::ViewsOf(row.Value())));
  Note(entry);
  return true;
}

bool IntakeBatch::TakeKnown(const Entry& entry) {
  if (const auto ours = list_row_.find(entry.audio); ours != list_row_.end()) {
    list_.AppendFrom(list_, ours->second);
    return true;
  }
  const int row = track_row_[entry.audio];
  if (row == 0) return false;
  if (!IntoPlaylist()) {
    ++outcome_.known;
    return true;
  }
  if (!IsThere(entry.audio)) return false;
  list_.AppendFrom(known_tracks_, row);
  return true;
}

bool IntakeBatch::TakeTrack(const Entry& entry) {
  if (TakeKnown(entry)) return Note(entry), false;
  const auto row = catalogue::AnalyseFile(ports_.tags, entry.audio, ports_.say, &ports_.scratch, names_);
  if (!row) {
    Refuse(ports_.say(row.Failure()));
    return true;
  }
  const catalogue::CellViews cells = catalogue::ViewsOf(row.Value());
  if (IntoPlaylist()) list_row_.emplace(entry.audio, list_.AddRow(cells));
  const bool new_to_catalogue = entry.from != Entry::From::List && track_row_[entry.audio] == 0;
  if (new_to_catalogue) tracks_.AddRow(cells);
  Note(entry);
  return true;
}

void IntakeBatch::Note(const Entry& entry) {
  if (outcome_.first.empty()) outcome_.first = entry.audio;
  outcome_.last = entry.audio;
}

void IntakeBatch::Refuse(std::string sentence) {
  if (outcome_.left_out++ < kMostToldFiles) outcome_.refused.push_back(std::move(sentence));
}

bool IntakeBatch::IsUpToDate(const catalogue::track_table& catalogue,
                             const catalogue::track_table& karaoke) const {
  return (tracks_.Rows() == 0 || catalogue.IsCopyOf(known_tracks_)) &&
         (songs_.Rows() == 0 || karaoke.IsCopyOf(known_songs_));
}

void IntakeBatch::LeaveOutKnown(const catalogue::track_table& catalogue,
                                const catalogue::track_table& karaoke) {
  const int before = tracks_.Rows() + songs_.Rows();
  LeaveOut(tracks_, catalogue, catalogue::track::kFilename);
  LeaveOut(songs_, karaoke, catalogue::karaoke::kFilename);
  if (!IntoPlaylist()) outcome_.known += before - tracks_.Rows() - songs_.Rows();
  known_tracks_ = catalogue;
  known_songs_ = karaoke;
}

IntakeOutcome IntakeBatch::Outcome() {
  const bool songs = order_->list == ListId::Karaoke;
  outcome_.rows = IntoPlaylist() ? list_.Rows() : songs ? songs_.Rows() : tracks_.Rows();
  outcome_.songs = songs ? 0 : songs_.Rows();
  return std::move(outcome_);
}

}  // namespace app
