// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/DocumentFlow.h"

#include <utility>

namespace app {

DocumentFlow::DocumentFlow(Document document, Asking asking)
    : document_(std::move(document)), asking_(std::move(asking)) {}

DocumentFlow::Step DocumentFlow::Still(Step step) {
  return [command = std::weak_ptr<int>(command_), number = *command_, step = std::move(step)] {
    const auto present = command.lock();
    if (present && *present == number) step();
  };
}

void DocumentFlow::New() {
  ++*command_;
  SavedOrNotThen([this] { document_.clear(); });
}

void DocumentFlow::Open() {
  ++*command_;
  SavedOrNotThen([this] {
    asking_.choose_to_open(
        [this, alive = std::weak_ptr<int>(command_), number = *command_](const Path& path) {
          const auto present = alive.lock();
          if (present && *present == number) document_.read(path);
        });
  });
}

void DocumentFlow::Open(const Path& path) {
  ++*command_;
  SavedOrNotThen([this, path] { document_.read(path); });
}

void DocumentFlow::Save() {
  ++*command_;
  SaveThen([] {});
}

void DocumentFlow::Leave(std::function<void()> then) {
  ++*command_;
  SavedOrNotThen(then);
}

void DocumentFlow::SavedOrNotThen(const Step& then) {
  if (!document_.changed()) return then();
  const Step save = Still([this, then] { SaveThen(then); });
  const Step leave = Still(then);
  asking_.save_first([save, leave](SaveFirst answer) {
    if (answer == SaveFirst::Yes) save();
    if (answer == SaveFirst::No) leave();
  });
}

void DocumentFlow::SaveThen(const Step& then) {
  const std::string refusal = document_.refusal();
  if (!refusal.empty()) return asking_.tell(refusal);
  const std::string question = document_.question();
  if (question.empty()) return ChooseAndWrite(then);
  const Step write = Still([this, then] { ChooseAndWrite(then); });
  asking_.mend(question, [write](bool mend) {
    if (!mend) write();
  });
}

void DocumentFlow::ChooseAndWrite(const Step& then) {
  asking_.choose_to_save(
      [this, then, alive = std::weak_ptr<int>(command_), number = *command_](const Path& path) {
        const auto present = alive.lock();
        if (!present || *present != number) return;
        document_.write(path, [go_on = Still(then)](bool written) {
          if (written) go_on();
        });
      });
}

}  // namespace app
