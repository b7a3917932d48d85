// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Collections.h"

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <unordered_map>
#include <utility>

#include "app/NoticeBoard.h"
#include "app/Ports.h"
#include "app/StationContext.h"
#include "app/ports/Prompts.h"
#include "app/settings/FolderSettings.h"
#include "app/settings/NameSettings.h"
#include "app/sound/AnalysisRows.h"
#include "support/Settings.h"

namespace app {
namespace {

namespace track = catalogue::track;

/// Seconds with three decimals, as cells and tags hold them.
std::string SecondsText(std::chrono::microseconds time) {
  const auto milliseconds = std::chrono::round<std::chrono::milliseconds>(time).count();
  char text[32];
  std::snprintf(text, sizeof text, "%lld.%03lld", static_cast<long long>(milliseconds / 1000),
                static_cast<long long>(milliseconds % 1000));
  return text;
}

catalogue::track_table NoTracks() {
  return catalogue::track_table(catalogue::TrackColumns());
}

}  // namespace

Collections::Collections(const StationContext& context, const Ports& ports, const AnalysisPorts& analysis,
                         const Around& around)
    : context_(context),
      around_(around),
      idle_(ports.background.workers != nullptr ? *ports.background.workers : ports.workers),
      locks_(analysis.locks),
      folders_(ports.folders != nullptr ? *ports.folders : plain_folders_),
      scratch_(context.folder.Native(catalogue::kTagScratch)),
      tree_scan_({folders_, ports.tags, &scratch_, &song_reader_, ports.side_store}, idle_, context.gate,
                 around.cores),
      scan_(ports.scan != nullptr ? *ports.scan : tree_scan_),
      music_(MusicKind(), Outside(), context.gate, context.window),
      karaoke_(KaraokeKind(), Outside(), context.gate, context.window),
      playlists_{NoTracks(), NoTracks(), NoTracks()},
      tags_({ports.tags, ports.tag_writer, ports.side_store, ports.files, context.folder.Native(kTagList)},
            ports.workers, locks_, Complainer()),
      missing_({idle_, ports.workers, ports.clock}, context.gate, context.window, FileTables(),
               [this](MissingFiles::News news, std::size_t count, const std::string& first) {
                 TellOfMissing(news, count, first);
               }),
      intake_({{ports.tags, song_reader_, scratch_, folders_, context.say},
               ports.workers,
               ports.files,
               context.folder.Native(kOrdersFile),
               [this](ListId list) { SaveList(list); },
               [this](const IntakeOutcome& outcome) { TellOfOldOrder(outcome); },
               [this](const catalogue::track_table& playlist, int first_row) {
                 missing_.LookAt(playlist, track::kFilename, first_row);
               },
               [this] { return ReadNameRule(around_.settings); }},
              Lists(), context.gate, context.window),
      removed_(Lists(), [this](ListId list) { SaveList(list); }),
      batch_(
          analysis, {idle_, ports.workers, ports.files, ports.clock, context.say}, context.gate,
          context.window, around.cores, context.folder.Native(kBatchList),
          [this](const std::string& filename, const music::TrackAnalysis& found,
                 const catalogue::FileMarks& marks) { KeepBatch(filename, found, marks); },
          [this] { SaveBatch(); }) {
  PrepareScans(ports.side_store);
}

Collection::Outside Collections::Outside() {
  return {context_.folder, context_.files, context_.workers, context_.clock,
          context_.say,    scan_,          Complainer()};
}

void Collections::PrepareScans(catalogue::SideStore* store) {
  for (Collection* collection : {&music_, &karaoke_}) {
    collection->Scans().LookIn(store);
    collection->Scans().OnLoss(
        [this](const Reindex::Loss& loss, std::function<void(Reindex::Answer)> answer) {
          AskBeforeRowsGo(loss, std::move(answer));
        });
  }
  if (store == nullptr) return;
  music_.Scans().OnMoved([store, locks = locks_](const std::string& from, const std::string& to) {
    support::MutexLock held(locks->Of(to));
    // What is not carried along is found out again.
    static_cast<void>(catalogue::CarryTo(*store, from, to));
  });
}

catalogue::track_table& Collections::Playlist(int number) {
  assert(number >= 1 && number <= kPlaylists && "there are three playlists");
  return playlists_[static_cast<std::size_t>(number - 1)];
}

std::vector<MissingFiles::Table> Collections::FileTables() const {
  std::vector<MissingFiles::Table> tables{{music_.Table(), music_.FilenameColumn()},
                                          {karaoke_.Table(), karaoke_.FilenameColumn()}};
  for (const catalogue::track_table& playlist : playlists_) tables.push_back({playlist, track::kFilename});
  return tables;
}

std::function<void(const support::Error&)> Collections::Complainer() const {
  return [tell = context_.tell](const support::Error& failure) { tell(SayingOf(failure)); };
}

std::vector<support::Saying> Collections::Load() {
  std::vector<support::Saying> sentences;
  for (Collection* collection : {&music_, &karaoke_}) {
    support::Saying told = collection->Load();
    if (told != support::Saying{}) sentences.push_back(std::move(told));
  }
  return sentences;
}

void Collections::StartUp() {
  missing_.Look();
  tags_.StartUp();
  intake_.StartUp();
  batch_.StartUp(GainPercent());
}

void Collections::Flush() {
  SaveBatch();
  music_.Flush();
  karaoke_.Flush();
  batch_.Flush();
  intake_.Flush();
}

void Collections::SaveList(ListId list) {
  for (Collection* collection : {&music_, &karaoke_}) {
    if (collection->List() == list) collection->Save();
  }
}

// --- Scans ---

void Collections::Scan(Collection& collection, const std::string& folder, Reindex::Done done) {
  std::vector<std::string> folders{context_.folder.NativeOfText(folder).string()};
  for (const std::string& other : OtherFolders(around_.settings)) folders.push_back(other);
  collection.Scan(folders, ReadNameRule(around_.settings),
                  [this, done = std::move(done)](const Reindex::Outcome& outcome) {
                    FollowInPlaylists(outcome.moved);
                    if (outcome.replaced) missing_.Look();
                    if (done) done(outcome);
                  });
}

ScanProgress Collections::Scanning() const {
  ScanProgress sum;
  for (const Collection* collection : {&music_, &karaoke_}) {
    if (!collection->IsScanning()) continue;
    const ScanProgress one = collection->Scanning();
    sum = {sum.done + one.done, sum.total + one.total, sum.bytes + one.bytes,
           sum.running.count() == 0 ? one.running : std::min(sum.running, one.running)};
  }
  return sum;
}

void Collections::CancelScans() {
  music_.CancelScan();
  karaoke_.CancelScan();
}

void Collections::AskBeforeRowsGo(const Reindex::Loss& loss, std::function<void(Reindex::Answer)> answer) {
  using support::Sentence;
  const support::Sentences& say = context_.say;
  const std::string gone = std::to_string(loss.gone);
  around_.prompts.Ask(
      {say(Sentence::RowsToGo, {std::to_string(loss.rows), std::to_string(loss.found), gone, loss.first}),
       say(Sentence::TakeRowsOut, {gone}), say(Sentence::KeepRows)},
      [answer = std::move(answer)](bool yes) {
        answer(yes ? Reindex::Answer::TakeOut : Reindex::Answer::Keep);
      });
}

void Collections::FollowInPlaylists(const std::vector<ScanRows::Moved>& moved) {
  for (catalogue::track_table& playlist : playlists_) {
    std::unordered_map<std::string, const std::string*> places;  // of its files, which are few
    if (!moved.empty()) {
      playlist.VisitColumn(track::kFilename, [&places](int, std::string_view file) {
        places.emplace(file, nullptr);
        return true;
      });
    }
    if (places.empty()) continue;
    for (const ScanRows::Moved& file : moved) {
      if (const auto place = places.find(file.from); place != places.end()) place->second = &file.to;
    }
    for (int row = 1; row <= playlist.Rows(); ++row) {
      const std::string* to = places[std::string(playlist.Cell(row, track::kFilename))];
      if (to != nullptr) playlist.SetCell(row, track::kFilename, *to);
    }
  }
}

// --- What is told ---

void Collections::TellOfOldOrder(const IntakeOutcome& outcome) {
  const int rows = outcome.rows + outcome.songs;
  if (!outcome.refused.empty()) return context_.tell(support::AsItStands(outcome.refused.front()));
  if (rows > 0) context_.tell({support::Sentence::AddingWentOn, {std::to_string(rows)}});
}

void Collections::TellOfMissing(MissingFiles::News news, std::size_t count, const std::string& first) {
  const NoticeBoard::Subject subject{NoticeBoard::Subject::Kind::MissingFiles, 0};
  const support::Saying missing{support::Sentence::FilesMissing, {std::to_string(count), first}};
  Mailbox& conductor = *context_.conductor;
  if (count == 0) return conductor.Order(around_.notices, &NoticeBoard::Settle, subject);
  const bool worse = news == MissingFiles::News::Worse;
  conductor.Order(around_.notices, worse ? &NoticeBoard::Warn : &NoticeBoard::Correct, subject, missing);
}

// --- What is found out about a file ---

void Collections::AnalyseAll() {
  batch_.Start(
      [table = music_.Table()] {
        std::vector<std::string> files;
        table.VisitColumn(track::kFilename, [&files](int, std::string_view file) {
          files.emplace_back(file);
          return true;
        });
        return files;
      },
      GainPercent());
}

void Collections::Analyse(std::vector<int> rows) {
  batch_.Start(
      [table = music_.Table(), rows = std::move(rows)] {
        std::vector<std::string> files;
        for (const int row : rows) files.emplace_back(table.Cell(row, track::kFilename));
        return files;
      },
      GainPercent());
}

int Collections::GainPercent() const {
  return std::clamp(around_.settings.Number("Settings", "GainPercent"), 0, 100);
}

void Collections::KeepAnalysis(const std::string& filename, const music::TrackAnalysis& analysis,
                               const catalogue::FileMarks& marks) {
  if (FillRows(filename, analysis, marks)) music_.Save();
}

void Collections::KeepBatch(const std::string& filename, const music::TrackAnalysis& analysis,
                            const catalogue::FileMarks& marks) {
  if (FillRows(filename, analysis, marks)) batch_filled_ = batch_unsorted_ = true;
}

void Collections::SaveBatch() {
  if (std::exchange(batch_filled_, false)) music_.Save();
}

bool Collections::TakeUnsorted() {
  if (batch_.Progress().state == BatchProgress::State::Running) return false;
  return std::exchange(batch_unsorted_, false);
}

bool Collections::FillRows(const std::string& filename, const music::TrackAnalysis& analysis,
                           const catalogue::FileMarks& marks) {
  for (catalogue::track_table& playlist : playlists_) {
    for (const int row : playlist.RowsOf(filename)) FillIn(playlist, row, analysis, marks);
  }
  const std::vector<int> rows = music_.Table().RowsOf(filename);
  bool filled = false;
  for (const int row : rows) filled = FillIn(music_.Table(), row, analysis, marks) || filled;
  WriteTag(filename, rows.empty() ? 0 : rows.front());
  return filled;
}

void Collections::StoreMixPoint(const std::string& filename, MixPoint which,
                                std::chrono::microseconds place) {
  const int column = which == MixPoint::Start ? track::kStartMixPoint : track::kEndMixPoint;
  const std::string text = SecondsText(place);
  for (catalogue::track_table& playlist : playlists_) {
    for (const int row : playlist.RowsOf(filename)) playlist.SetCell(row, column, text);
  }
  const std::vector<int> rows = music_.Table().RowsOf(filename);
  for (const int row : rows) music_.Table().SetCell(row, column, text);
  if (!rows.empty()) music_.Save();
  WriteTag(filename, rows.empty() ? 0 : rows.front());
}

void Collections::WriteTag(const std::string& filename, int row) {
  if (!around_.settings.Flag("Tags", "Write")) return;
  catalogue::MixingTags values = MixingTagsInRow(music_.Table(), row);
  for (const catalogue::track_table& playlist : playlists_) {
    if (values != catalogue::MixingTags{}) break;
    values = MixingTagsInRow(playlist, playlist.FindRow(track::kFilename, filename));
  }
  if (values != catalogue::MixingTags{}) tags_.Write(filename, values);
}

}  // namespace app
