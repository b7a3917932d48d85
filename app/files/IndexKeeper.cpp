// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/IndexKeeper.h"

#include <utility>

#include "catalogue/IndexFile.h"

namespace app {

struct IndexKeeper::State {
  State(support::FileSaver& saver, std::filesystem::path file,
        std::function<void(const support::Error&)> complainer)
      : files(saver), path(std::move(file)), complain(std::move(complainer)) {}

  support::FileSaver& files;
  const std::filesystem::path path;
  const std::function<void(const support::Error&)> complain;
  bool told = false;      ///< of the failure, under the lock of saving
  support::Mutex saving;  ///< one save at a time, so that an older state never lands on a newer one
  support::Mutex mutex;
  std::optional<catalogue::track_table> newest DJ_GUARDED_BY(mutex);
};

IndexKeeper::IndexKeeper(support::FileSaver& files, support::Executor& workers,
                         std::shared_ptr<WorkGate> gate, std::filesystem::path path,
                         std::function<void(const support::Error&)> complain)
    : workers_(workers),
      gate_(std::move(gate)),
      state_(std::make_shared<State>(files, std::move(path), std::move(complain))) {}

void IndexKeeper::Save(const catalogue::track_table& table) {
  {
    support::MutexLock lock(state_->mutex);
    state_->newest = table;
  }
  workers_.Post([state = state_, gate = gate_] { gate->Pass([&] { SaveNewest(*state); }); });
}

void IndexKeeper::Flush() {
  SaveNewest(*state_);
}

void IndexKeeper::SaveNewest(State& state) {
  support::MutexLock one_at_a_time(state.saving);
  std::optional<catalogue::track_table> table;
  {
    support::MutexLock lock(state.mutex);
    table.swap(state.newest);
  }
  if (!table) return;
  const support::Result<void> saved = catalogue::SaveIndex(state.files, state.path, *table);
  if (!saved && !state.told) state.complain(saved.Failure());
  state.told = !saved;
}

}  // namespace app
