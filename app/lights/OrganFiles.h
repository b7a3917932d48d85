// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/work/OrderedWork.h"
#include "lightorgan/Memories.h"
#include "lightorgan/PatternBank.h"
#include "lightorgan/ports/BankSource.h"
#include "support/Result.h"

namespace app {

struct StationContext;

inline constexpr std::string_view kSnapshotFile = "\\K8000.tlv";
inline constexpr std::string_view kMemoryFile = "\\Memories.tlv";

/// The light organ's files in the program folder, read and written by workers.
///
/// Law: work on the files is done in the order in which it was asked for; of banks to be played the newest
/// wish of a side wins, and one that is overtaken before it was read is never answered. Threads: Load on the
/// conductor; the rest on the window's, which gets the answers.
class OrganFiles final : public lightorgan::BankSource {
 public:
  explicit OrganFiles(const StationContext& context);

  void Load(lightorgan::Side side, lightorgan::IoBoardSize size, int number,
            std::function<void(lightorgan::StepTable)> done) override;

  using Banks = std::vector<lightorgan::Bank>;
  /// A file that is not there has no bank.
  void ReadBanks(lightorgan::Side side, lightorgan::IoBoardSize size,
                 std::function<void(support::Result<Banks>)> done);
  using Done = std::function<void(support::Result<void>)>;
  void SaveBanks(lightorgan::Side side, lightorgan::IoBoardSize size, Banks banks, Done done);

  /// A file that is not there has none.
  using Memories = std::vector<lightorgan::Memory>;
  void ReadMemories(std::function<void(support::Result<Memories>)> done);
  void SaveMemories(const std::vector<lightorgan::Memory>& memories);
  /// Puts the text into the snapshot file and gives what is read back from it. Where it cannot be written
  /// this is told, and the text itself is given.
  void PassSnapshot(const std::string& text, std::function<void(std::string)> done);

  /// Brings what waits to the files. Requires: the gate is closed.
  void Flush() { work_.Flush(); }

 private:
  /// What jobs need, which may run after this is gone.
  struct Outside;

  std::shared_ptr<Outside> outside_;
  OrderedWork work_;
  std::array<std::shared_ptr<std::atomic<int>>, 2> newest_;  // shared with the jobs
};

}  // namespace app
