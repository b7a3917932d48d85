// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lists/EveningLog.h"

#include <algorithm>
#include <deque>
#include <system_error>
#include <utility>
#include <vector>

#include "app/WorkstationView.h"
#include "catalogue/IndexFile.h"
#include "support/Mutex.h"
#include "support/NumberedFiles.h"
#include "support/Text.h"

namespace app {
namespace {

namespace column = catalogue::track;
using std::chrono::seconds;

constexpr int kFirstHour = 6;
constexpr support::Duration kLongEnough = seconds(30);
/// A tick that comes later than that did not hear what was played meanwhile by ear.
constexpr support::Duration kLongestTick = seconds(60);

}  // namespace

std::tm LocalTimeNow() {
  static support::Mutex one_at_a_time;  // the library keeps the answer in one place
  support::MutexLock lock(one_at_a_time);
  const std::time_t now = std::time(nullptr);
  const std::tm* local = std::localtime(&now);
  return local == nullptr ? std::tm{} : *local;
}

std::string EveningOf(std::tm local_time) {
  using namespace std::chrono;
  const year_month_day date{year(local_time.tm_year + 1900),
                            month(static_cast<unsigned>(local_time.tm_mon + 1)),
                            day(static_cast<unsigned>(local_time.tm_mday))};
  const year_month_day evening{sys_days(date) - days(local_time.tm_hour < kFirstHour ? 1 : 0)};
  const auto two = [](unsigned number) { return (number < 10 ? "0" : "") + std::to_string(number); };
  return std::to_string(static_cast<int>(evening.year())) + "-" +
         two(static_cast<unsigned>(evening.month())) + "-" + two(static_cast<unsigned>(evening.day()));
}

std::string HistoryFile(const std::string& evening) {
  return "\\History\\" + evening + ".tpl";
}

HeardTracks::HeardTracks(const support::Clock& clock, Heard heard) : clock_(clock), told_(std::move(heard)) {}

void HeardTracks::Tick(const WorkstationView& view, const DeckView& song) {
  const support::TimePoint now = clock_.Now();
  const support::Duration passed = last_ == support::TimePoint{} ? support::Duration{} : now - last_;
  last_ = now;
  for (std::size_t i = 0; i < kHeardDecks; ++i) Listen(heard_[i], view.decks[i], passed);
  Listen(heard_[kHeardDecks], song, passed);
}

void HeardTracks::Listen(Listening& listening, const DeckView& deck, support::Duration passed) {
  const bool sounds = deck.state == DeckView::State::Playing;
  const bool over = !sounds && deck.state != DeckView::State::Paused;
  if (over || deck.filename != listening.file) listening = {deck.filename, {}, false};
  if (!sounds || deck.waiting || passed > kLongestTick) return;
  listening.heard += passed;
  const support::Duration half = deck.length / 2;
  const bool enough =
      listening.heard >= kLongEnough || (half > support::Duration{} && listening.heard >= half);
  if (enough && !std::exchange(listening.told, true)) told_(deck);
}

void HeardTracks::GoOn(int deck, const std::string& file) {
  heard_[static_cast<std::size_t>(deck - 1)] = {file, {}, true};
}

struct EveningLog::HeardTrack {
  void AppendTo(catalogue::track_table& history) const;
  std::string evening;
  DeckView heard;
  std::shared_ptr<const catalogue::track_table> known;
};

void EveningLog::HeardTrack::AppendTo(catalogue::track_table& history) const {
  if (known != nullptr) {
    if (const int row = known->FindRow(column::kFilename, heard.filename); row > 0) {
      history.AppendFrom(*known, row);
      return;
    }
  }
  const int row = history.AddRow();
  history.SetCell(row, column::kArtist, heard.artist);
  history.SetCell(row, column::kTitle, heard.title);
  const auto length = std::chrono::duration_cast<seconds>(heard.length);
  history.SetCell(row, column::kTime, support::FormatMinutes(length.count()));
  history.SetCell(row, column::kFilename, heard.filename);
  if (heard.bpm > 0) history.SetCell(row, column::kBpm, support::FormatReal(heard.bpm, 2));
}

struct EveningLog::State {
  State(support::FileSaver& saver, support::ProgramFolder program_folder, Complain complainer)
      : files(saver), folder(std::move(program_folder)), complain(std::move(complainer)) {}

  support::FileSaver& files;
  const support::ProgramFolder folder;
  const Complain complain;
  support::Mutex saving;  ///< one save at a time
  bool told DJ_GUARDED_BY(saving) = false;
  std::string evening DJ_GUARDED_BY(saving);
  catalogue::track_table history DJ_GUARDED_BY(saving){catalogue::TrackColumns()};
  support::Mutex mutex;
  std::deque<HeardTrack> waiting DJ_GUARDED_BY(mutex);
};

EveningLog::EveningLog(support::FileSaver& files, const support::ProgramFolder& folder,
                       support::Executor& workers, std::shared_ptr<WorkGate> gate, Complain complain)
    : workers_(workers),
      gate_(std::move(gate)),
      state_(std::make_shared<State>(files, folder, std::move(complain))) {}

void EveningLog::Add(const std::string& evening, const DeckView& track,
                     std::shared_ptr<const catalogue::track_table> catalogue) {
  DeckView facts = track;
  facts.wave.reset();
  facts.grid.reset();
  {
    support::MutexLock lock(state_->mutex);
    state_->waiting.push_back({evening, std::move(facts), std::move(catalogue)});
  }
  workers_.Post([state = state_, gate = gate_] { gate->Pass([&] { SaveWaiting(*state); }); });
}

void EveningLog::Flush() {
  SaveWaiting(*state_);
}

void EveningLog::SaveWaiting(State& state) {
  support::MutexLock one_at_a_time(state.saving);
  std::deque<HeardTrack> waiting;
  {
    support::MutexLock lock(state.mutex);
    waiting.swap(state.waiting);
  }
  while (!waiting.empty()) {
    const std::string evening = waiting.front().evening;
    const std::filesystem::path path = state.folder.Native(HistoryFile(evening));
    if (evening != state.evening) {
      const auto read = catalogue::LoadIndex(path, state.history);
      const bool unreadable = !read && read.Failure().code != support::ErrorCode::NotFound;
      const bool damaged = read && read.Value().Skipped() > 0;
      // The save says what is wrong where that fails.
      if (unreadable || damaged) {
        static_cast<void>(support::SetAside(path, unreadable ? "unreadable" : "damaged"));
      }
    }
    state.evening = evening;
    while (!waiting.empty() && waiting.front().evening == evening) {
      waiting.front().AppendTo(state.history);
      waiting.pop_front();
    }
    std::error_code ignored;  // the save says what is wrong
    std::filesystem::create_directories(path.parent_path(), ignored);
    const support::Result<void> saved = catalogue::SaveIndex(state.files, path, state.history);
    if (!saved && !state.told) state.complain(saved.Failure());
    state.told = !saved;
  }
}

}  // namespace app
