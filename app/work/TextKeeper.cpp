// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/work/TextKeeper.h"

#include <utility>

#include "support/Mutex.h"
#include "support/NumberedFiles.h"

namespace app {

struct TextKeeper::State {
  support::FileSaver& files;
  const std::filesystem::path path;
  const Complain complain;
  support::Mutex saving;  ///< one save at a time
  std::string_view aside DJ_GUARDED_BY(saving);
  bool failing DJ_GUARDED_BY(saving) = false;
  support::Mutex mutex;
  Text newest DJ_GUARDED_BY(mutex);

  [[nodiscard]] Text Take() {
    support::MutexLock lock(mutex);
    return std::exchange(newest, nullptr);
  }
  void PutBack(Text text) {
    support::MutexLock lock(mutex);
    if (newest == nullptr) newest = std::move(text);
  }
};

TextKeeper::TextKeeper(support::FileSaver& files, support::Executor& workers, std::shared_ptr<WorkGate> gate,
                       std::filesystem::path path, Complain complain)
    : workers_(workers),
      gate_(std::move(gate)),
      state_(new State{files, std::move(path), std::move(complain), {}, {}, false, {}, nullptr}) {}

void TextKeeper::Save(Text text) {
  {
    support::MutexLock lock(state_->mutex);
    state_->newest = std::move(text);
  }
  workers_.Post([state = state_, gate = gate_] { gate->Pass([&] { SaveNewest(*state); }); });
}

void TextKeeper::SetAsideFirst(std::string_view mark) {
  support::MutexLock lock(state_->saving);
  state_->aside = mark;
}

void TextKeeper::Flush() {
  SaveNewest(*state_);
}

void TextKeeper::SaveNewest(State& state) {
  support::MutexLock one_at_a_time(state.saving);
  Text text = state.Take();
  if (text == nullptr) return;
  support::Result<void> saved;
  if (!state.aside.empty()) {
    const auto aside = support::SetAside(state.path, state.aside);
    if (!aside) saved = aside.Failure();
  }
  if (saved) {
    state.aside = {};
    saved = state.files.Save(state.path, text());
  }
  if (!saved) {
    state.PutBack(std::move(text));
    if (!std::exchange(state.failing, true)) state.complain(saved.Failure());
    return;
  }
  state.failing = false;
}

}  // namespace app
