// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "app/ApplyButton.h"
#include "app/Collections.h"
#include "app/Decks.h"
#include "app/EqualiserDesk.h"
#include "app/Language.h"
#include "app/OutputDesk.h"
#include "app/Ports.h"
#include "app/Stage.h"
#include "app/Visuals.h"
#include "app/WaitingPrompts.h"
#include "app/Workstation.h"
#include "app/lights/EditorDesk.h"
#include "app/lights/LightDesk.h"
#include "app/lights/OrganDesk.h"
#include "app/lists/ListDesk.h"
#include "app/resume/ResumeDesk.h"
#include "app/settings/Preferences.h"
#include "app/settings/Settings.h"
#include "app/songs/SongDesk.h"
#include "app/sound/GainQueries.h"
#include "app/work/Conductor.h"
#include "app/work/IdleCores.h"
#include "app/work/WorkGate.h"

namespace app {

/// What a Workstation is made of. Order matters: what is declared later uses what stands before it.
struct Workstation::Parts {
  Parts(const Ports& outside, const support::ProgramFolder& program_folder, Conducting how);

  [[nodiscard]] DeskContext MakeContext();
  [[nodiscard]] AnalysisPorts Analysis() const;
  /// Once a tick of the conductor, when the decks have been looked at.
  void Tick(const WorkstationView& view);
  /// What a worker found out about a deck's file goes to the window's thread.
  void FollowAnalyses();
  void CheckProgramFolder();
  /// Brings what the settings store has to say to the status line.
  void TellOfSettings();

  enum class Life { Made, Running, Over };

  Ports ports;
  support::ProgramFolder folder;
  Conducting conducting;
  app::Settings settings;
  Life life = Life::Made;
  support::Sentences say;
  app::Language language;
  WaitingPrompts prompts;
  std::size_t settings_notices = 0;  ///< told so far
  std::shared_ptr<WorkGate> gate = std::make_shared<WorkGate>();
  std::shared_ptr<FileLocks> locks = std::make_shared<FileLocks>();
  std::shared_ptr<Mailbox> window = std::make_shared<Mailbox>();
  Conductor conductor;
  Stage stage;
  DeskContext context;
  std::shared_ptr<IdleCores> cores;  // with the lanes of long work
  app::Collections collections;
  app::ApplyButton apply;
  EqualiserDesk equaliser;
  OutputDesk outputs;
  app::Visuals visuals;
  LightDesk lights;
  OrganDesk organ;
  SongDesk songs;
  ListDesk lists;
  EditorDesk editors;
  ResumeDesk resume;
  GainQueries gains;
  app::Decks decks;
};

}  // namespace app
