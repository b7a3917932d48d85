// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/FileAnalyses.h"

#include <algorithm>
#include <atomic>
#include <optional>
#include <utility>

#include "catalogue/AnalysisParts.h"
#include "music/Cues.h"

namespace app {
namespace {

/// The wave is shown so often while it grows.
constexpr double kShare = 0.125;

std::size_t PlaceOf(int deck) {
  return static_cast<std::size_t>(deck - 1);
}

/// What a hand has marked before what was kept is known; a kept cue wins over a pad pressed in that time.
void JoinKept(catalogue::FileMarks& marks, const catalogue::FileMarks& kept) {
  using catalogue::PointBy;
  if (marks.start == PointBy::Unknown) marks.start = kept.start, marks.start_at = kept.start_at;
  if (marks.end == PointBy::Unknown) marks.end = kept.end, marks.end_at = kept.end_at;
  if (marks.grid == nullptr) marks.grid = kept.grid;
  if (!marks.bar) marks.bar = kept.bar;
  marks.cues = music::Joined(kept.cues, marks.cues);
}

}  // namespace

/// What all jobs use. They hold it by shared_ptr, because they may outlive them; the ports are used
/// behind the gate only.
struct FileAnalyses::Shared {
  AnalysisPorts ports;
  support::Executor& workers;
  const std::shared_ptr<WorkGate> gate;
  const std::shared_ptr<Mailbox> box;
  const Complain complain;
  const std::shared_ptr<Found> found;
  std::atomic<bool> complained{false};
};

/// One file's analysis: looked up, else read piece by piece; then its mix points; then kept. Each step is a
/// job of its own.
struct FileAnalyses::Job final : decks::ScanProgress, std::enable_shared_from_this<Job> {
  Job(std::shared_ptr<Shared> common, const decks::MixPointRequest& first)
      : shared(std::move(common)), wanted(first) {}

  // The conductor's.
  void Begin();
  void Learn(const music::TrackAnalysis& analysis, bool complete);
  void LearnMarks(const catalogue::FileMarks& read);
  void KeepMarks();

  // The worker's.
  void Post(void (Job::*step)());
  void LookUp();
  void Read();
  void Scan();
  void Keep(bool whole);
  [[nodiscard]] bool StillThere();
  void ReadMarks();
  void WriteMarks(const std::string& path, catalogue::FileMarks newest, bool all);
  void ComplainOnce(const support::Result<void>& written);
  void Tell(const music::TrackAnalysis& analysis, bool complete);
  void Busy(double fraction) override { busy = fraction; }
  bool Cancelled() override { return dropped || shared->gate->Closed(); }

  const std::shared_ptr<Shared> shared;
  std::atomic<bool> dropped{false};
  std::atomic<double> busy{0};

  decks::MixPointRequest wanted;  ///< the conductor's, to known
  bool working = false;
  std::shared_ptr<const music::TrackAnalysis> known;
  catalogue::FileMarks marks;
  bool marks_changed = false;
  bool marks_known = false;    ///< those that were kept are among them
  bool marks_at_work = false;  ///< a worker writes them; when they change meanwhile, it does so once more
  bool marks_wait = false;

  decks::MixPointRequest request;  ///< the worker's, as the rest
  std::optional<catalogue::SideKey> key;
  std::optional<decks::AnalysisPass> pass;
  music::TrackAnalysis result;
  bool kept = false;
  double shown = 0;
};

FileAnalyses::FileAnalyses(const AnalysisPorts& ports, support::Executor& workers,
                           std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box, Complain complain)
    : shared_(new Shared{ports, workers, std::move(gate), std::move(box), std::move(complain), found_}) {}

void FileAnalyses::Hold(int deck, const decks::MixPointRequest& request) {
  std::shared_ptr<Job>& job = jobs_[PlaceOf(deck)];
  if (job == nullptr || job->wanted.filename != request.filename) {
    Drop(deck);
    const auto same = std::find_if(jobs_.begin(), jobs_.end(), [&](const std::shared_ptr<Job>& other) {
      return other != nullptr && other->wanted.filename == request.filename;
    });
    job = same != jobs_.end() ? *same : std::make_shared<Job>(shared_, request);
  }
  job->wanted = request;
  job->Begin();
}

void FileAnalyses::Drop(int deck) {
  const std::shared_ptr<Job> job = std::exchange(jobs_[PlaceOf(deck)], nullptr);
  if (job != nullptr && std::find(jobs_.begin(), jobs_.end(), job) == jobs_.end()) job->dropped = true;
}

std::shared_ptr<const music::TrackAnalysis> FileAnalyses::Of(int deck) const {
  const std::shared_ptr<Job>& job = jobs_[PlaceOf(deck)];
  return job == nullptr ? nullptr : job->known;
}

catalogue::FileMarks FileAnalyses::MarksOf(int deck) const {
  const std::shared_ptr<Job>& job = jobs_[PlaceOf(deck)];
  return job == nullptr ? catalogue::FileMarks{} : job->marks;
}

void FileAnalyses::ChangeMarks(int deck, const std::function<void(catalogue::FileMarks&)>& change) {
  const std::shared_ptr<Job>& job = jobs_[PlaceOf(deck)];
  if (job == nullptr) return;
  change(job->marks);
  job->marks_changed = true;
  job->KeepMarks();
}

double FileAnalyses::Busy(int deck) const {
  const std::shared_ptr<Job>& job = jobs_[PlaceOf(deck)];
  return job == nullptr ? 0 : job->busy.load();
}

void FileAnalyses::Job::Begin() {
  if (working) return;
  const bool read = known != nullptr;
  if (read && (!known->mix_points || known->mix_points->gain_percent == wanted.gain_percent)) return;
  working = true;
  request = wanted;
  Post(read ? &Job::Scan : &Job::LookUp);
}

void FileAnalyses::Job::Learn(const music::TrackAnalysis& analysis, bool complete) {
  known = std::make_shared<const music::TrackAnalysis>(analysis);
  if (!complete) return;
  working = false;
  if (*shared->found) (*shared->found)(wanted.filename, *known, marks);
  Begin();  // the threshold may have been moved meanwhile
}

void FileAnalyses::Job::LearnMarks(const catalogue::FileMarks& read) {
  JoinKept(marks, read);
  marks_known = true;
  if (marks_changed) KeepMarks();  // a hand was faster than the disk
}

void FileAnalyses::Job::KeepMarks() {
  if (shared->ports.store == nullptr) return;
  marks_wait = marks_at_work;
  if (std::exchange(marks_at_work, true)) return;
  shared->workers.Post([job = shared_from_this(), newest = marks, path = wanted.filename, all = marks_known] {
    job->shared->gate->Pass([&] {
      job->WriteMarks(path, newest, all);
      job->shared->box->Post([job] {
        job->marks_at_work = false;
        if (job->marks_wait) job->KeepMarks();
      });
    });
  });
}

void FileAnalyses::Job::WriteMarks(const std::string& path, catalogue::FileMarks newest, bool all) {
  catalogue::SideStore& store = *shared->ports.store;
  support::MutexLock held(shared->ports.locks->Of(path));
  const auto now = catalogue::KeyOf(store, path);
  if (!now) return;
  // A hand may have been faster than the disk, and the track may be gone before it has answered.
  if (!all) JoinKept(newest, catalogue::ReadMarks(store, *now));
  ComplainOnce(store.Write(now->path, now->stamp, catalogue::SidePart::Marks, catalogue::PackMarks(newest)));
}

void FileAnalyses::Job::ReadMarks() {
  if (!key) return;
  shared->box->Post([job = shared_from_this(), read = catalogue::ReadMarks(*shared->ports.store, *key)] {
    job->LearnMarks(read);
  });
}

void FileAnalyses::Job::Post(void (Job::*step)()) {
  shared->workers.Post([job = shared_from_this(), step] {
    job->shared->gate->Pass([&] {
      if (!job->dropped) return (*job.*step)();
      if (job->pass) job->pass->Close();
    });
  });
}

void FileAnalyses::Job::Tell(const music::TrackAnalysis& analysis, bool complete) {
  shared->box->Post([job = shared_from_this(), analysis, complete] { job->Learn(analysis, complete); });
}

void FileAnalyses::Job::LookUp() {
  const AnalysisPorts& ports = shared->ports;
  if (ports.store != nullptr) key = catalogue::KeyOf(*ports.store, request.filename);
  ReadMarks();
  auto found = key ? catalogue::ReadAnalysis(*ports.store, key->path, key->stamp) : std::nullopt;
  if (!found) {
    pass.emplace(ports.engine, ports.sound, ports.tools, request.filename);
    return Post(&Job::Read);
  }
  result = std::move(*found);
  const bool same = result.mix_points && result.mix_points->gain_percent == request.gain_percent;
  if (!same) result.mix_points.reset();
  if (result.form == nullptr) {
    // Kept by a finder that knew neither key nor bars: shown at once, and read once more.
    Tell(result, false);
    pass.emplace(ports.engine, ports.sound, ports.tools, request.filename);
    return Post(&Job::Read);
  }
  kept = true;
  if (same) return Tell(result, true);
  Tell(result, false);
  Post(&Job::Scan);
}

void FileAnalyses::Job::Read() {
  if (pass->Step()) {
    busy = pass->Progress();
    if (result.wave == nullptr && pass->Progress() >= shown + kShare) {
      shown = pass->Progress();
      music::TrackAnalysis growing;
      growing.wave = std::make_shared<const music::Wave>(pass->WaveSoFar());
      Tell(growing, false);
    }
    return Post(&Job::Read);
  }
  music::TrackAnalysis made = pass->Finish();
  pass.reset();
  // What was kept stands until it is known again, and where the file is gone meanwhile.
  made.mix_points = result.mix_points;
  if (made.length.value > 0 || result.wave == nullptr) result = std::move(made);
  Tell(result, false);
  Post(&Job::Scan);
}

void FileAnalyses::Job::Scan() {
  const auto points = decks::MixPointScan(shared->ports.engine, shared->ports.sound).Run(request, *this);
  busy = 0;
  if (Cancelled()) return;
  result.mix_points.reset();
  if (points) result.mix_points = {*points, request.gain_percent};
  if (points && key) Keep(!kept);
  Tell(result, true);
}

/// The file holds the sound that it held when its analysis began; its tag may have been written since.
bool FileAnalyses::Job::StillThere() {
  return catalogue::KeyOf(*shared->ports.store, request.filename) == key;
}

void FileAnalyses::Job::Keep(bool whole) {
  catalogue::SideStore& store = *shared->ports.store;
  support::MutexLock held(shared->ports.locks->Of(request.filename));
  if (!StillThere()) return;
  const auto written = whole ? catalogue::WriteAnalysis(store, key->path, key->stamp, result)
                             : catalogue::WriteFacts(store, key->path, key->stamp, result);
  kept = kept || written.Ok();
  ComplainOnce(written);
}

void FileAnalyses::Job::ComplainOnce(const support::Result<void>& written) {
  if (!written && !shared->complained.exchange(true)) shared->complain(written.Failure());
}

}  // namespace app
