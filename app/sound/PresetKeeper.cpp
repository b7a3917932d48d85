// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/PresetKeeper.h"

#include <utility>

namespace app {
namespace {

using support::Sentence;

}  // namespace

PresetKeeper::PresetKeeper(support::FileSaver& files, const support::ProgramFolder& folder,
                           support::Executor& workers, std::shared_ptr<WorkGate> gate,
                           std::shared_ptr<Mailbox> box, const support::Sentences& say)
    : work_(workers, std::move(gate)),
      box_(std::move(box)),
      say_(say),
      file_(std::make_shared<decks::EqPresetFile>(files, folder)) {}

void PresetKeeper::Read(Done done) {
  Post([](decks::EqPresetFile&) { return support::Result<void>{}; }, std::move(done));
}

void PresetKeeper::Save(const std::string& name, const decks::EqValues& values, Done done) {
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

void PresetKeeper::Delete(const std::string& name, Done done) {
  Post(
      [this, name](decks::EqPresetFile& file) -> support::Result<void> {
        const auto deleted = file.Delete(name);
        if (deleted) return deleted;
        return support::Error{deleted.Failure().code,
                              say_(Sentence::PresetNotDeleted, {name, say_(deleted.Failure())})};
      },
      std::move(done));
}

void PresetKeeper::Flush() {
  work_.Flush();
}

void PresetKeeper::Post(Change change, Done done) {
  work_.Post([this, file = file_, box = box_, change = std::move(change), done = std::move(done)] {
    support::Result<void> result = change(*file);
    support::Result<std::vector<decks::EqPreset>> list = file->Read();
    if (result && !list) {
      result = support::Error{list.Failure().code, say_(Sentence::PresetsUnreadable, {say_(list.Failure())})};
    }
    box->Post([this, result = std::move(result), list = std::move(list), done] {
      if (list) list_ = list.Value();
      if (done) done(result);
    });
  });
}

}  // namespace app
