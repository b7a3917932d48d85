// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/BatchAnalysis.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "support/Mutex.h"
#include "support/Text.h"

namespace app {
namespace {

using BatchState = BatchProgress::State;

constexpr int kFilesASave = 32;
constexpr int kSavesOfABatch = 1000;  ///< a long one saves less often, because what it saves is long too
constexpr std::size_t kManyFiles = 10'000;
constexpr std::size_t kMostSentences = 1000;

/// One that a line cannot hold is analysed, but not gone on with in the next run.
bool FitsALine(const std::string& file) {
  return !file.empty() && file.find_first_of("\r\n") == std::string::npos;
}

std::vector<std::string> ReadList(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string text(std::istreambuf_iterator<char>(file), {});
  std::vector<std::string> files;
  for (const std::string_view line : support::SplitLines(text)) {
    if (!line.empty()) files.emplace_back(line);
  }
  return files;
}

/// All of the first ones, and those of the others that are not among them, each once.
std::shared_ptr<const BatchAnalysis::Files> Join(const BatchAnalysis::Files& first,
                                                 BatchAnalysis::Files others) {
  auto all = std::make_shared<BatchAnalysis::Files>();
  all->reserve(first.size() + others.size());  // what is known points into it
  std::unordered_set<std::string_view> known;
  const auto add = [&](std::string file) {
    all->push_back(std::move(file));
    if (!known.insert(all->back()).second) all->pop_back();
  };
  for (const std::string& file : first) add(file);
  for (std::string& file : others) add(std::move(file));
  return all;
}

std::string TextOf(const BatchAnalysis::Files& files, std::size_t from) {
  std::string text;
  for (; from < files.size(); ++from) {
    if (FitsALine(files[from])) text += files[from] + "\r\n";
  }
  return text;
}

}  // namespace

/// The newest state of the list wins, whatever order the workers save in.
struct BatchAnalysis::List {
  List(support::FileSaver& saver, std::filesystem::path file) : files(saver), path(std::move(file)) {}

  struct Left {
    std::shared_ptr<const Files> files;
    std::size_t from;
  };

  void SaveNewest() {
    support::MutexLock one_at_a_time(saving);
    std::optional<Left> left;
    {
      support::MutexLock lock(mutex);
      left.swap(newest);
    }
    // What is not saved is analysed again by the next run, which finds it in the side store.
    if (left) static_cast<void>(files.Save(path, TextOf(*left->files, left->from)));
  }

  support::FileSaver& files;
  const std::filesystem::path path;
  support::Mutex saving;
  support::Mutex mutex;
  std::optional<Left> newest DJ_GUARDED_BY(mutex);
};

BatchAnalysis::BatchAnalysis(const AnalysisPorts& ports, const Outside& outside,
                             std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box,
                             std::shared_ptr<const IdleCores> cores, std::filesystem::path list, Keep keep,
                             Save save)
    : outside_(outside),
      gate_(std::move(gate)),
      box_(std::move(box)),
      cores_(std::move(cores)),
      keep_(std::move(keep)),
      save_(std::move(save)),
      analyses_(ports, outside.background, gate_, box_, [](const support::Error&) {}),
      files_(std::make_shared<const Files>()),
      list_(std::make_shared<List>(outside.files, std::move(list))) {
  analyses_.OnFound([this](const std::string& file, const music::TrackAnalysis& found,
                           const catalogue::FileMarks& marks) { Done(file, found, marks); });
}

void BatchAnalysis::StartUp(int gain_percent) {
  gain_percent_ = gain_percent;
  Start([path = list_->path] { return ReadList(path); }, gain_percent);
}

void BatchAnalysis::Start(std::function<Files()> files, int gain_percent) {
  wishes_.push_back({std::move(files), gain_percent});
  if (wishes_.size() == 1) JoinNext();
}

void BatchAnalysis::JoinNext() {
  const Before before = state_ == BatchState::Idle ? Before::Forgotten : Before::Kept;
  outside_.workers.Post([this, gate = gate_, box = box_, wish = std::move(wishes_.front()), before,
                         number = forgotten_,
                         first = before == Before::Kept ? files_ : std::make_shared<const Files>()] {
    gate->Pass([&] {
      auto all = Join(*first, wish.files());
      box->Post([this, before, number, all = std::move(all), gain_percent = wish.gain_percent] {
        if (number == forgotten_) Joined(before, all, gain_percent);
      });
    });
  });
}

void BatchAnalysis::Joined(Before before, std::shared_ptr<const Files> all, int gain_percent) {
  wishes_.pop_front();
  if (before == Before::Forgotten) Forget();
  PutAway(std::exchange(files_, std::move(all)));
  gain_percent_ = gain_percent;
  if (next_ < files_->size()) {
    SaveList();
    Resume();
  }
  if (!wishes_.empty()) JoinNext();
}

void BatchAnalysis::Pause() {
  if (state_ != BatchState::Running) return;
  state_ = BatchState::Paused;
  std::size_t first = next_;
  for (int slot = 1; slot <= kDecks; ++slot) {
    auto& place = slots_[static_cast<std::size_t>(slot - 1)];
    if (!place) continue;
    first = std::min(first, *place);
    place.reset();
    analyses_.Drop(slot);
  }
  // Those behind it that are done already will be found in the side store.
  next_ = first;
  done_ = static_cast<int>(first);
  CheckPoint();
}

void BatchAnalysis::Resume() {
  state_ = BatchState::Running;
  since_ = outside_.clock.Now();
  done_since_ = 0;
  GoOn();
}

void BatchAnalysis::Cancel() {
  wishes_.clear();
  ++forgotten_;
  for (int slot = 1; slot <= kDecks; ++slot) {
    if (std::exchange(slots_[static_cast<std::size_t>(slot - 1)], std::nullopt)) analyses_.Drop(slot);
  }
  if (state_ == BatchState::Idle) return;
  state_ = BatchState::Idle;
  if (save_) save_();
  Forget();
  SaveList();
}

/// A long list is let go of by a worker.
void BatchAnalysis::PutAway(std::shared_ptr<const Files> files) {
  if (files->size() < kManyFiles) return;
  outside_.workers.Post([files = std::move(files)] {});
}

void BatchAnalysis::Forget() {
  PutAway(std::exchange(files_, std::make_shared<const Files>()));
  left_out_.clear();
  next_ = saved_from_ = 0;
  done_ = since_save_ = 0;
}

void BatchAnalysis::GoOn() {
  const int wanted = std::min(cores_->Now(), kDecks);
  int busy = 0;
  for (const auto& slot : slots_) busy += slot ? 1 : 0;
  for (int slot = 1; slot <= kDecks && busy < wanted && next_ < files_->size(); ++slot) {
    if (slots_[static_cast<std::size_t>(slot - 1)]) continue;
    Begin(slot);
    ++busy;
  }
  if (busy > 0 || next_ < files_->size()) return;
  state_ = BatchState::Idle;
  if (save_) save_();
  saved_from_ = files_->size();
  SaveList();
}

void BatchAnalysis::Begin(int slot) {
  slots_[static_cast<std::size_t>(slot - 1)] = next_;
  analyses_.Hold(slot, {(*files_)[next_++], 0, gain_percent_});
}

void BatchAnalysis::Done(const std::string& file, const music::TrackAnalysis& found,
                         const catalogue::FileMarks& marks) {
  const auto slot = std::find_if(slots_.begin(), slots_.end(),
                                 [&](const auto& place) { return place && (*files_)[*place] == file; });
  if (slot == slots_.end()) return;
  slot->reset();
  analyses_.Drop(static_cast<int>(slot - slots_.begin()) + 1);
  ++done_;
  ++done_since_;
  if (found.length.value > 0) {
    keep_(file, found, marks);
  } else if (left_out_.size() < kMostSentences) {
    left_out_.push_back(outside_.say(support::Sentence::FileNotAnalysed, {file}));
  }
  const int many = std::max(kFilesASave, static_cast<int>(files_->size()) / kSavesOfABatch);
  if (++since_save_ >= many) CheckPoint();
  GoOn();
}

std::size_t BatchAnalysis::FirstOpen() const {
  std::size_t first = next_;
  for (const auto& place : slots_) first = place ? std::min(first, *place) : first;
  return first;
}

/// The list goes behind what the save before this one took along, which may not have reached the disk yet.
void BatchAnalysis::CheckPoint() {
  since_save_ = 0;
  if (save_) save_();
  SaveList();
  saved_from_ = FirstOpen();
}

void BatchAnalysis::SaveList() {
  {
    support::MutexLock lock(list_->mutex);
    list_->newest = List::Left{files_, saved_from_};
  }
  outside_.workers.Post([list = list_, gate = gate_] { gate->Pass([&] { list->SaveNewest(); }); });
}

void BatchAnalysis::Flush() {
  list_->SaveNewest();
}

BatchProgress BatchAnalysis::Progress() const {
  BatchProgress progress;
  progress.state = state_;
  progress.done = done_;
  progress.total = static_cast<int>(files_->size());
  progress.left_out = static_cast<int>(left_out_.size());
  if (state_ == BatchState::Idle) return progress;
  if (next_ > 0) progress.file = (*files_)[next_ - 1];
  if (state_ != BatchState::Running || done_since_ == 0) return progress;
  const auto took = std::chrono::duration<double>(outside_.clock.Now() - since_);
  progress.remaining = std::chrono::seconds(
      static_cast<std::int64_t>(took.count() / done_since_ * (progress.total - progress.done)));
  return progress;
}

}  // namespace app
