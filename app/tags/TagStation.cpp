// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tags/TagStation.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "app/Collections.h"
#include "app/WorkstationView.h"
#include "app/settings/NameSettings.h"
#include "catalogue/AnalysisParts.h"
#include "catalogue/Companion.h"
#include "support/Mutex.h"

namespace app {
namespace {

namespace track = catalogue::track;
using catalogue::PlannedName;
using catalogue::TagEdit;
using catalogue::TagField;
using catalogue::TagSheet;

constexpr std::size_t kFilesATurn = 8;
constexpr std::size_t kMostReported = 1000;  ///< sentences

/// The columns that show fields of a tag.
struct ShownField {
  TagField field;
  int column;
  int karaoke;  ///< 0: none
};
constexpr ShownField kShownFields[] = {{TagField::Artist, track::kArtist, catalogue::karaoke::kArtist},
                                       {TagField::Title, track::kTitle, catalogue::karaoke::kTitle},
                                       {TagField::Album, track::kAlbum, 0},
                                       {TagField::Genre, track::kGenre, catalogue::karaoke::kGenre},
                                       {TagField::Year, track::kYear, 0},
                                       {TagField::Bpm, track::kBpm, 0}};

/// With its dot.
std::string EndingOf(const std::string& path) {
  return path.substr(std::min(path.rfind('.'), path.size()));
}

std::string WithoutEnding(const std::string& path) {
  return path.substr(0, path.size() - EndingOf(path).size());
}

}  // namespace

struct TagStation::Result {
  std::string path;
  std::optional<support::Error> failure;
  TagSheet sheet;
  catalogue::TagUndo undo;
  TagEdit edit;
  std::optional<catalogue::TrackCells> cells;
  std::string to;
};

/// With the worker that is at it and the window; only the worker moves next on.
struct TagStation::Job {
  Work work = Work::None;
  std::vector<Change> changes;  ///< to be written; of a reading the paths alone
  Batch batch;
  std::vector<PlannedName> names;
  Cover cover;
  Took took;
  Done done;
  Outside outside;
  const support::Sentences* say = nullptr;
  catalogue::NameRule rule;
  support::Executor* workers = nullptr;
  std::shared_ptr<WorkGate> gate;
  std::shared_ptr<Mailbox> box;
  TagStation* station = nullptr;

  std::size_t next = 0;
  std::atomic<std::size_t> finished{0};
  std::atomic<bool> stop{false};
  bool dropped = false;             ///< the window's: nobody wants to hear of it
  Batch written;                    ///< the window's
  Report report;                    ///< the same
  std::size_t taken = 0;            ///< the same: answers
  std::vector<std::size_t> failed;  ///< the same: of those, in order
  support::Mutex mutex;
  std::vector<Result> answers DJ_GUARDED_BY(mutex);  ///< that the window has not taken yet
  bool music = false, karaoke = false;               ///< rows changed

  [[nodiscard]] std::size_t Total() const {
    return work == Work::Undo ? batch.size() : work == Work::Rename ? names.size() : changes.size();
  }
  void Answer(Result result) {
    const support::MutexLock lock(mutex);
    answers.push_back(std::move(result));
  }
  [[nodiscard]] std::vector<Result> Answers() {
    const support::MutexLock lock(mutex);
    return std::exchange(answers, {});
  }
  Result DoNext();
  Result ReadOne();
  Result WriteOne();
  Result UndoOne();
  Result RenameOne();
  void KeepMixingTags(const std::string& path, TagEdit& edit) const;
  void AfterWrite(Result& result, const std::optional<catalogue::FileStamp>& before) const;
  [[nodiscard]] std::optional<catalogue::FileStamp> StampOf(const std::string& path) const {
    return outside.store == nullptr ? std::nullopt : outside.store->StampOf(path);
  }
};

TagStation::Result TagStation::Job::DoNext() {
  switch (work) {
    case Work::Read:
      return ReadOne();
    case Work::Write:
      return WriteOne();
    case Work::Undo:
      return UndoOne();
    case Work::Rename:
      return RenameOne();
    case Work::None:
      break;
  }
  return {};
}

TagStation::Result TagStation::Job::ReadOne() {
  Result result;
  result.path = changes[next].path;
  support::MutexLock held(outside.locks->Of(result.path));
  auto read = outside.editor->Read(result.path);
  if (!read) {
    result.failure = read.Failure();
  } else {
    result.sheet = std::move(read.Value());
    result.sheet[TagField::Comment] = catalogue::VisibleComment(result.sheet[TagField::Comment]);
  }
  return result;
}

/// What is kept of the file goes along to its new state, and its row is made anew.
void TagStation::Job::AfterWrite(Result& result, const std::optional<catalogue::FileStamp>& before) const {
  const auto after = before ? StampOf(result.path) : std::nullopt;
  // What is not carried along is found out again.
  if (after) static_cast<void>(catalogue::CarryOver(*outside.store, result.path, *before, *after));
  const auto row = catalogue::AnalyseFile(*outside.tags, result.path, *say, nullptr, rule);
  if (row) result.cells = row.Value();
}

/// The comment that is to be written gets the block behind it that stands there now, with the new tempo, or
/// the old one would come back from there.
void TagStation::Job::KeepMixingTags(const std::string& path, TagEdit& edit) const {
  std::optional<std::string>& comment = edit[TagField::Comment];
  const std::optional<std::string>& bpm = edit[TagField::Bpm];
  if (!comment && !bpm) return;
  const auto tags = outside.tags->Read(path);
  if (!tags) return;
  const std::string& block = tags.Value().text_block;
  if (comment) comment = catalogue::WithVisibleComment(block, *comment);
  if (!bpm || bpm->empty() || !catalogue::ScanTextBlock(block).bpm) return;
  comment = catalogue::WithMixingTags(comment.value_or(block), {{}, {}, {}, *bpm});
}

TagStation::Result TagStation::Job::WriteOne() {
  Result result;
  result.path = changes[next].path;
  result.edit = changes[next].edit;
  TagEdit edit = result.edit;
  if (cover != nullptr) edit.cover = *cover;
  support::MutexLock held(outside.locks->Of(result.path));
  KeepMixingTags(result.path, edit);
  const auto before = StampOf(result.path);
  auto put = outside.editor->Write(result.path, edit);
  if (!put) {
    result.failure = put.Failure();
    return result;
  }
  result.undo = std::move(put.Value());
  AfterWrite(result, before);
  return result;
}

TagStation::Result TagStation::Job::UndoOne() {
  Result result;
  result.path = batch[next].path;
  result.edit = batch[next].undo.fields;
  support::MutexLock held(outside.locks->Of(result.path));
  const auto before = StampOf(result.path);
  // The very file that the write left goes back by its bytes; of any other the newest values stay.
  catalogue::TagUndo undo = batch[next].undo;
  if (undo.fields[TagField::Comment])
    undo.fields[TagField::Comment] = catalogue::VisibleComment(*undo.fields[TagField::Comment]);
  KeepMixingTags(result.path, undo.fields);
  if (const auto undone = outside.editor->Undo(result.path, undo); !undone) {
    result.failure = undone.Failure();
    return result;
  }
  AfterWrite(result, before);
  return result;
}

TagStation::Result TagStation::Job::RenameOne() {
  Result result;
  result.path = names[next].from;
  result.to = names[next].to;
  support::MutexLock held(outside.locks->Of(result.path));
  // A song's picture is known by the name of its sound.
  const std::string picture = catalogue::CompanionOf(result.path, "cdg");
  auto renamed = outside.editor->Rename(result.path, result.to);
  if (renamed && !picture.empty()) {
    renamed = outside.editor->Rename(picture, WithoutEnding(result.to) + EndingOf(picture));
    if (!renamed) static_cast<void>(outside.editor->Rename(result.to, result.path));
  }
  if (!renamed) {
    result.failure = renamed.Failure();
  } else if (outside.store != nullptr) {
    static_cast<void>(catalogue::CarryTo(*outside.store, result.path, result.to));
  }
  return result;
}

TagStation::TagStation(const StationContext& context, const Outside& outside, Collections& collections)
    : context_(context), outside_(outside), collections_(collections) {}

TagStation::~TagStation() {
  if (job_ != nullptr) job_->stop = true;
}

void TagStation::Start(std::shared_ptr<Job> job) {
  job->outside = outside_;
  job->say = &context_.say;
  job->rule = ReadNameRule(context_.settings);
  job->workers = &context_.workers;
  job->gate = context_.gate;
  job->box = context_.window;
  job->station = this;
  job->report.work = job->work;
  job_ = std::move(job);
  Post(job_);
}

/// A turn of some files; between two of them other work of the pool has its turn.
void TagStation::Post(const std::shared_ptr<Job>& job) {
  job->workers->Post([job] {
    for (std::size_t i = 0; i < kFilesATurn && job->next < job->Total() && !job->stop; ++i) {
      const bool open = job->gate->Pass([&] { job->Answer(job->DoNext()); });
      if (!open) return;
      ++job->next;
      ++job->finished;
    }
    job->box->Post([job, over = job->stop || job->next >= job->Total()] {
      job->station->Take(job);
      if (over) return job->station->Finish(job);
      job->station->HoldBack(*job);
      Post(job);
    });
  });
}

void TagStation::Read(std::vector<std::string> files, Took took, Done done) {
  if (job_ != nullptr && job_->work == Work::Read) Leave();
  auto job = std::make_shared<Job>();
  job->work = Work::Read;
  job->changes.reserve(files.size());
  for (std::string& file : files) job->changes.push_back({std::move(file), {}});
  job->took = std::move(took);
  job->done = std::move(done);
  Start(std::move(job));
}

void TagStation::Write(std::vector<Change> changes, const Cover& cover, Done done) {
  auto job = std::make_shared<Job>();
  job->work = Work::Write;
  job->changes = std::move(changes);
  job->cover = cover;
  job->done = std::move(done);
  Start(std::move(job));
}

void TagStation::Undo(Done done) {
  if (journal_.empty()) return;
  auto job = std::make_shared<Job>();
  job->work = Work::Undo;
  job->batch = std::move(journal_.back());
  journal_.pop_back();
  job->done = std::move(done);
  Start(std::move(job));
}

bool TagStation::IsHeld(const std::string& path) const {
  return working_ || std::find(held_.begin(), held_.end(), path) != held_.end();
}

void TagStation::Rename(std::vector<PlannedName> names, Done done) {
  Report report;
  std::vector<PlannedName> free;
  for (PlannedName& name : names) {
    if (!IsHeld(name.from)) {
      free.push_back(std::move(name));
      continue;
    }
    Wait(std::move(name), report);
  }
  RenameNow(std::move(free), std::move(report), std::move(done));
}

void TagStation::Wait(PlannedName name, Report& report) {
  if (report.sentences.size() < kMostReported)
    report.sentences.push_back(
        context_.say(support::Sentence::RenameWaits, {std::string(catalogue::BareName(name.from))}));
  std::erase_if(waiting_, [&](const PlannedName& other) { return other.from == name.from; });
  waiting_.push_back(std::move(name));
}

/// A deck may have been given one of them meanwhile, or a scan begun.
void TagStation::HoldBack(Job& job) {
  if (job.work != Work::Rename) return;
  const auto first = job.names.begin() + static_cast<std::ptrdiff_t>(job.next);
  const auto last = first + std::min<std::ptrdiff_t>(job.names.end() - first, kFilesATurn);
  const auto held =
      std::stable_partition(first, last, [this](const PlannedName& name) { return !IsHeld(name.from); });
  for (auto name = held; name != last; ++name) Wait(std::move(*name), job.report);
  job.names.erase(held, last);
}

void TagStation::RenameNow(std::vector<PlannedName> names, Report report, Done done) {
  auto job = std::make_shared<Job>();
  job->work = Work::Rename;
  job->names = std::move(names);
  job->report = std::move(report);
  job->done = std::move(done);
  Start(std::move(job));
}

void TagStation::Follow(const WorkstationView& view, const std::string& song) {
  held_.assign(1, song);
  for (const DeckView& deck : view.decks) {
    held_.push_back(deck.filename);
    held_.push_back(deck.loaded);
  }
  working_ = collections_.IsScanning() || collections_.Batch().Progress().state != BatchProgress::State::Idle;
  if (waiting_.empty() || Busy()) return;
  const auto held = std::stable_partition(waiting_.begin(), waiting_.end(),
                                          [this](const PlannedName& name) { return IsHeld(name.from); });
  if (held == waiting_.end()) return;
  std::vector<PlannedName> free(std::make_move_iterator(held), std::make_move_iterator(waiting_.end()));
  waiting_.erase(held, waiting_.end());
  RenameNow(std::move(free), {}, [this](const Report& report) { TellLeft(report); });
}

/// Nobody waits for the report: the status line has the first of it.
void TagStation::TellLeft(const Report& report) const {
  if (!report.sentences.empty()) context_.tell(support::AsItStands(report.sentences.front()));
}

void TagStation::Stop() {
  if (job_ != nullptr) job_->stop = true;
}

void TagStation::Leave() {
  if (job_ == nullptr) return;
  job_->took = nullptr;
  job_->done = [this](const Report& report) { TellLeft(report); };
  if (job_->work != Work::Read) return;
  job_->stop = job_->dropped = true;
  job_.reset();
}

TagStation::Progress TagStation::Now() const {
  if (job_ == nullptr) return {};
  return {job_->work, job_->finished, job_->Total()};
}

void TagStation::Take(const std::shared_ptr<Job>& job) {
  if (job->dropped) return;
  for (Result& result : job->Answers()) {
    if (result.failure) job->failed.push_back(job->taken);
    ++job->taken;
    TakeOne(*job, result);
  }
}

void TagStation::ShutDown() {
  const auto job = std::exchange(job_, nullptr);
  if (job == nullptr) return;
  Take(job);
  SaveRows(*job);
  job->dropped = true;
}

void TagStation::SaveRows(const Job& job) {
  if (job.music) collections_.Music().Save();
  if (job.karaoke) collections_.Karaoke().Save();
}

void TagStation::TakeOne(Job& job, Result& result) {
  if (result.failure) {
    if (job.report.sentences.size() < kMostReported)
      job.report.sentences.push_back(context_.say(*result.failure));
    return;
  }
  ++job.report.done;
  switch (job.work) {
    case Work::Read:
      if (job.took) job.took(result.path, std::move(result.sheet));
      return;
    case Work::Write:
      job.written.push_back({result.path, std::move(result.undo)});
      job.report.written.push_back(result.path);
      break;
    case Work::Rename:
      job.report.renamed.push_back({result.path, result.to, PlannedName::State::Renamed, false});
      return FollowName(job, result.path, result.to);
    case Work::Undo:
    case Work::None:
      break;
  }
  if (result.cells) FollowRows(job, result.path, result.edit, *result.cells);
}

void TagStation::FollowRows(Job& job, const std::string& path, const TagEdit& edit,
                            const catalogue::TrackCells& cells) {
  for (const ShownField& shown : kShownFields) {
    if (!edit[shown.field]) continue;
    const std::string& cell = cells[static_cast<std::size_t>(shown.column - 1)];
    const auto put = [&](catalogue::track_table& table, int column) {
      for (const int row : table.RowsOf(path)) table.SetCell(row, column, cell);
    };
    for (catalogue::track_table& playlist : collections_.Playlists()) put(playlist, shown.column);
    put(collections_.Music().Table(), shown.column);
    if (shown.karaoke != 0) put(collections_.Karaoke().Table(), shown.karaoke);
  }
  job.music = job.music || !collections_.Music().Table().RowsOf(path).empty();
  job.karaoke = job.karaoke || !collections_.Karaoke().Table().RowsOf(path).empty();
}

void TagStation::FollowName(Job& job, const std::string& from, const std::string& to) {
  const auto put = [&](catalogue::track_table& table, int column) {
    const std::vector<int> rows = table.RowsOf(from);
    for (const int row : rows) table.SetCell(row, column, to);
    return !rows.empty();
  };
  for (catalogue::track_table& playlist : collections_.Playlists()) put(playlist, track::kFilename);
  job.music = put(collections_.Music().Table(), track::kFilename) || job.music;
  job.karaoke = put(collections_.Karaoke().Table(), catalogue::karaoke::kFilename) || job.karaoke;
  collections_.Removed().FollowFile(from, to);
  if (outside_.renamed) outside_.renamed(from, to);
  for (Batch& batch : journal_) {
    for (Undone& undone : batch) {
      if (undone.path == from) undone.path = to;
    }
  }
}

/// The index is saved once for all files.
void TagStation::Finish(const std::shared_ptr<Job>& job) {
  if (job->dropped) return;
  if (job_ == job) job_.reset();
  SaveRows(*job);
  job->report.stopped = job->finished < job->Total();
  if (!job->written.empty()) journal_.push_back(std::move(job->written));
  if (job->work == Work::Undo) {
    // What was not reached, or failed, can still be taken back.
    Batch left;
    for (std::size_t i = 0; i < job->batch.size(); ++i) {
      const bool done = i < job->taken && !std::binary_search(job->failed.begin(), job->failed.end(), i);
      if (!done) left.push_back(std::move(job->batch[i]));
    }
    if (!left.empty()) journal_.push_back(std::move(left));
  }
  Trim(job->report);
  if (job->done) job->done(job->report);
}

void TagStation::Trim(Report& report) {
  std::size_t weight = 0, left_out = 0;
  for (auto batch = journal_.rbegin(); batch != journal_.rend(); ++batch) {
    for (Undone& undone : *batch) {
      weight += undone.undo.Weight();
      if (weight <= kHeaviestJournal) continue;
      left_out += batch == journal_.rbegin() ? 1 : 0;
      undone.path.clear();
      undone.undo = {};
    }
    std::erase_if(*batch, [](const Undone& undone) { return undone.path.empty(); });
  }
  std::erase_if(journal_, [](const Batch& batch) { return batch.empty(); });
  if (left_out > 0)
    report.sentences.push_back(context_.say(support::Sentence::UndoLeftOut, {std::to_string(left_out)}));
}

}  // namespace app
