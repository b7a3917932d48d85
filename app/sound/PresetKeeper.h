// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/work/Mailbox.h"
#include "app/work/OrderedWork.h"
#include "app/work/WorkGate.h"
#include "decks/EqPresets.h"
#include "support/Executor.h"
#include "support/Sentences.h"

namespace app {

/// The equaliser's presets: the list as it was read last, and changes of it that workers bring to the file.
///
/// Law: changes reach the file in the order in which they were asked for, one at a time; after Flush none
/// waits. Threads: the owner's, who empties the box.
class PresetKeeper {
 public:
  /// On the owner's thread; a sentence for the user on failure. The list is read anew by then.
  using Done = std::function<void(support::Result<void>)>;

  PresetKeeper(support::FileSaver& files, const support::ProgramFolder& folder, support::Executor& workers,
               std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box, const support::Sentences& say);

  void Read(Done done);
  void Save(const std::string& name, const decks::EqValues& values, Done done);
  void Delete(const std::string& name, Done done);
  /// Brings what waits to the file on this thread. Requires: the gate is closed.
  void Flush();

  /// In the order of the file.
  [[nodiscard]] const std::vector<decks::EqPreset>& List() const { return list_; }

 private:
  using Change = std::function<support::Result<void>(decks::EqPresetFile&)>;

  void Post(Change change, Done done);

  OrderedWork work_;
  std::shared_ptr<Mailbox> box_;
  const support::Sentences& say_;
  std::shared_ptr<decks::EqPresetFile> file_;  // shared with jobs that may start after the keeper is gone
  std::vector<decks::EqPreset> list_;
};

}  // namespace app
