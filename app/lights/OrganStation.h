// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/lights/HeardMusic.h"
#include "app/lights/OrganFiles.h"
#include "lightorgan/LightOrgan.h"
#include "lightorgan/ports/IoBoards.h"
#include "support/TripleBuffer.h"

namespace app {

struct StationContext;
struct WorkstationView;

/// What the window draws of it; a snapshot of one tick.
struct OrganView {
  lightorgan::LightOrganView lamps;
  HeardFrom from = HeardFrom::Nothing;  ///< that is followed
  double bpm = 0;                       ///< as it is heard, 0 when unknown
};

/// The light organ in the running program.
///
/// Law: while a board is in use and none could be opened, the view says so until the boards are switched.
/// Threads: StartUp, View and commands on the window's; Tick on the conductor, also before StartUp; ShutDown
/// once the conductor has stopped.
class OrganStation {
 public:
  OrganStation(const StationContext& context, OrganSound sound, lightorgan::IoBoards* boards);
  ~OrganStation();

  void StartUp();
  /// decks: of the same tick.
  void Tick(const WorkstationView& decks);
  void ShutDown();

  [[nodiscard]] const OrganView& View() { return views_.Read(); }

  using Command = std::function<void(lightorgan::LightOrgan&)>;
  /// Done by the conductor, soon.
  void Ask(Command command);
  void SwitchBoards(bool on);

  // The bank files. Answers come on the window's thread.
  void ReadBanks(lightorgan::Side side, lightorgan::IoBoardSize size,
                 std::function<void(support::Result<OrganFiles::Banks>)> done);
  /// What plays from the file is read again.
  void SaveBanks(lightorgan::Side side, lightorgan::IoBoardSize size, OrganFiles::Banks banks,
                 OrganFiles::Done done);

  // The list "Memories". Filled in soon after StartUp.
  [[nodiscard]] const std::vector<lightorgan::Memory>& Memories() const { return memories_; }
  /// The present state under a name, in the place of the memory that has it already. What the name may not
  /// hold is left out; the prefix is put before it.
  void Remember(const std::string& name);
  /// By its place in the list; nothing for one that is not there.
  void Recall(std::size_t memory);
  void Forget(std::size_t memory);
  /// As Remember would name it.
  [[nodiscard]] static std::string MemoryName(const std::string& name);

 private:
  class NoBoards;

  void TakeMemories(const support::Result<OrganFiles::Memories>& read);
  void Keep(const lightorgan::Memory& memory);
  void SaveMemories();

  const StationContext& context_;
  HeardMusic music_;
  OrganFiles files_;
  std::unique_ptr<NoBoards> no_boards_;
  lightorgan::LightOrgan organ_;
  bool started_ = false;     ///< the conductor's
  bool none_found_ = false;  ///< the conductor's
  std::vector<lightorgan::Memory> memories_;
  bool memories_read_ = false;  ///< else the file may hold others, and is not written over
  std::shared_ptr<int> alive_ = std::make_shared<int>();  // shared with answers that come too late
  support::TripleBuffer<OrganView> views_;
};

}  // namespace app
