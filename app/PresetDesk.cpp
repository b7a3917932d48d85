// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/PresetDesk.h"

#include <deque>
#include <utility>

#include "support/Mutex.h"

namespace app {
namespace {

using support::Sentence;

}  // namespace

struct PresetDesk::State {
  State(support::FileSaver& files, const support::ProgramFolder& folder) : file(files, folder) {}

  support::Mutex working;  ///< one change at a time
  decks::EqPresetFile file DJ_GUARDED_BY(working);
  support::Mutex mutex;
  std::deque<std::function<void(decks::EqPresetFile&)>> waiting DJ_GUARDED_BY(mutex);
};

PresetDesk::PresetDesk(support::FileSaver& files, const support::ProgramFolder& folder,
                       support::Executor& workers, std::shared_ptr<WorkGate> gate,
                       std::shared_ptr<Mailbox> box, const support::Sentences& say)
    : workers_(workers),
      gate_(std::move(gate)),
      box_(std::move(box)),
      say_(say),
      state_(std::make_shared<State>(files, folder)) {}

void PresetDesk::Read(Done done) {
  Post([](decks::EqPresetFile&) { return support::Result<void>{}; }, std::move(done));
}

void PresetDesk::Save(const std::string& name, const decks::EqValues& values, Done done) {
  Post(
      [this, name, values](decks::EqPresetFile& file) -> support::Result<void> {
        const auto saved = file.Save(name, values);
        if (saved) return saved;
        const bool refused = saved.Failure().code == support::ErrorCode::Empty ||
                             saved.Failure().code == support::ErrorCode::Malformed;
        return support::Error{saved.Failure().code,
                              refused ? say_(Sentence::PresetNeedsName)
                                      : say_(Sentence::PresetNotSaved, {name, say_(saved.Failure())})};
      },
      std::move(done));
}

void PresetDesk::Delete(const std::string& name, Done done) {
  Post(
      [this, name](decks::EqPresetFile& file) -> support::Result<void> {
        const auto deleted = file.Delete(name);
        if (deleted) return deleted;
        return support::Error{deleted.Failure().code,
                              say_(Sentence::PresetNotDeleted, {name, say_(deleted.Failure())})};
      },
      std::move(done));
}

void PresetDesk::Flush() {
  for (;;) {
    {
      support::MutexLock lock(state_->mutex);
      if (state_->waiting.empty()) return;
    }
    WorkOnOne(*state_);
  }
}

void PresetDesk::Post(Change change, Done done) {
  auto work = [this, box = box_, change = std::move(change), done = std::move(done)](auto& file) {
    support::Result<void> result = change(file);
    support::Result<std::vector<decks::EqPreset>> list = file.Read();
    if (result && !list) {
      result = support::Error{list.Failure().code, say_(Sentence::PresetsUnreadable, {say_(list.Failure())})};
    }
    box->Post([this, result = std::move(result), list = std::move(list), done] {
      if (list) list_ = list.Value();
      if (done) done(result);
    });
  };
  {
    support::MutexLock lock(state_->mutex);
    state_->waiting.emplace_back(std::move(work));
  }
  workers_.Post([state = state_, gate = gate_] { gate->Pass([&] { WorkOnOne(*state); }); });
}

void PresetDesk::WorkOnOne(State& state) {
  support::MutexLock one_at_a_time(state.working);
  std::function<void(decks::EqPresetFile&)> work;
  {
    support::MutexLock lock(state.mutex);
    if (state.waiting.empty()) return;
    work = std::move(state.waiting.front());
    state.waiting.pop_front();
  }
  work(state.file);
}

}  // namespace app
