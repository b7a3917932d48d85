// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/IndexKeeper.h"

#include <fstream>
#include <utility>

#include "catalogue/IndexFile.h"
#include "support/NumberedFiles.h"

namespace app {

struct IndexKeeper::State {
  State(support::FileSaver& saver, std::filesystem::path file,
        std::function<void(const support::Error&)> complainer)
      : files(saver), path(std::move(file)), complain(std::move(complainer)) {}

  support::FileSaver& files;
  const std::filesystem::path path;
  const std::function<void(const support::Error&)> complain;
  std::string_view aside;  ///< mark of the name that the file gets first; empty for none
  bool told = false;       ///< of the failure, under the lock of saving
  support::Mutex saving;   ///< one save at a time, so that an older state never lands on a newer one
  support::Mutex mutex;
  std::optional<catalogue::track_table> newest DJ_GUARDED_BY(mutex);
  bool made_anew DJ_GUARDED_BY(mutex) = false;  ///< since the last save
};

namespace {

bool SaysTheSame(const std::filesystem::path& path, const catalogue::track_table& table) {
  std::ifstream file(path, std::ios::binary);
  catalogue::IndexPrinter printer(table, path.parent_path());
  std::string read;
  for (std::string_view piece = printer.Next(); !piece.empty(); piece = printer.Next()) {
    read.resize(piece.size());
    file.read(read.data(), static_cast<std::streamsize>(read.size()));
    if (!file || read != piece) return false;
  }
  return file && file.peek() == std::ifstream::traits_type::eof();
}

}  // namespace

IndexKeeper::IndexKeeper(support::FileSaver& files, support::Executor& workers,
                         std::shared_ptr<WorkGate> gate, std::filesystem::path path,
                         std::function<void(const support::Error&)> complain)
    : workers_(workers),
      gate_(std::move(gate)),
      state_(std::make_shared<State>(files, std::move(path), std::move(complain))) {}

void IndexKeeper::SetAsideFirst(std::string_view mark) {
  support::MutexLock one_at_a_time(state_->saving);
  state_->aside = mark;
}

void IndexKeeper::Save(const catalogue::track_table& table) {
  Post(table, false);
}

void IndexKeeper::Replace(const catalogue::track_table& table) {
  Post(table, true);
}

void IndexKeeper::Post(const catalogue::track_table& table, bool made_anew) {
  {
    support::MutexLock lock(state_->mutex);
    state_->newest = table;
    state_->made_anew = state_->made_anew || made_anew;
  }
  workers_.Post([state = state_, gate = gate_] { gate->Pass([&] { SaveNewest(*state); }); });
}

support::Result<void> IndexKeeper::PutAway(State& state, const catalogue::track_table& table,
                                           bool& made_anew) {
  if (!state.aside.empty()) {
    if (const auto aside = support::SetAside(state.path, state.aside); !aside) return aside.Failure();
    state.aside = {};
  }
  if (made_anew) {
    if (SaysTheSame(state.path, table)) return {};
    if (auto kept = support::KeepCopy(state.path, "before", kCopies); !kept) return kept;
    made_anew = false;  // also where the rest fails: the next try makes no second copy
  }
  return catalogue::SaveIndex(state.files, state.path, table, catalogue::Paths::FromTheFolder);
}

void IndexKeeper::Flush() {
  SaveNewest(*state_);
}

void IndexKeeper::SaveNewest(State& state) {
  support::MutexLock one_at_a_time(state.saving);
  std::optional<catalogue::track_table> table;
  bool made_anew = false;
  {
    support::MutexLock lock(state.mutex);
    table.swap(state.newest);
    made_anew = std::exchange(state.made_anew, false);
  }
  if (!table) return;
  const support::Result<void> saved = PutAway(state, *table, made_anew);
  if (!saved && !state.told) state.complain(saved.Failure());
  state.told = !saved;
  if (saved) return;
  support::MutexLock lock(state.mutex);  // for the next save, or for the one at the end
  if (!state.newest) state.newest.swap(table);
  state.made_anew = state.made_anew || made_anew;
}

}  // namespace app
