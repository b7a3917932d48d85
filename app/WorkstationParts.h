// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "app/ApplyButton.h"
#include "app/Collections.h"
#include "app/DeckRack.h"
#include "app/Decks.h"
#include "app/EffectStation.h"
#include "app/EqualiserStation.h"
#include "app/HeadphoneStation.h"
#include "app/Language.h"
#include "app/OutputStation.h"
#include "app/Ports.h"
#include "app/RackDecks.h"
#include "app/StationContext.h"
#include "app/Visuals.h"
#include "app/WaitingPrompts.h"
#include "app/Workstation.h"
#include "app/lights/Drafts.h"
#include "app/lights/EditorFiles.h"
#include "app/lights/FixturePacks.h"
#include "app/lights/LightStation.h"
#include "app/lights/LiveLightStation.h"
#include "app/lights/OrganStation.h"
#include "app/lists/ListStation.h"
#include "app/recording/RecordingStation.h"
#include "app/resume/ResumeStation.h"
#include "app/settings/Preferences.h"
#include "app/singers/SingerStation.h"
#include "app/songs/SongStation.h"
#include "app/sound/GainQueries.h"
#include "app/sound/MicrophoneStation.h"
#include "app/tags/TagStation.h"
#include "app/work/Conductor.h"
#include "app/work/IdleCores.h"
#include "app/work/WorkGate.h"
#include "support/Settings.h"

namespace app {

/// What a Workstation is made of. Order matters: what is declared later uses what stands before it.
struct Workstation::Parts {
  Parts(const Ports& outside, const support::ProgramFolder& program_folder, Conducting how);

  [[nodiscard]] StationContext MakeContext();
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
  support::Settings settings;
  Life life = Life::Made;
  support::Sentences say;
  app::Language language;
  WaitingPrompts prompts;
  std::size_t settings_notices = 0;  ///< told so far
  std::shared_ptr<WorkGate> gate = std::make_shared<WorkGate>();
  std::shared_ptr<FileLocks> locks = std::make_shared<FileLocks>();
  std::shared_ptr<Mailbox> window = std::make_shared<Mailbox>();
  Conductor conductor;
  DeckRack rack;
  RackDecks mixing{rack};
  StationContext context;
  std::shared_ptr<IdleCores> cores;  // with the lanes of long work
  app::Collections collections;
  app::ApplyButton apply;
  EqualiserStation equaliser;
  OutputStation outputs;
  HeadphoneStation headphones;
  MicrophoneStation microphone;
  EffectStation effects;
  app::Visuals visuals;
  LightStation lights;
  LiveLightStation live;
  OrganStation organ;
  SongStation songs;
  SingerStation singers;
  ListStation lists;
  RecordingStation recording;
  EditorFiles editors;
  app::FixturePacks packs;
  app::Drafts drafts;
  ResumeStation resume;
  TagStation tags;
  GainQueries gains;
  app::Decks decks;
};

}  // namespace app
