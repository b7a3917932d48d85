// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "app/WorkstationParts.h"

namespace app {

void Workstation::StartUp() {
  Parts& parts = *parts_;
  if (parts.life != Parts::Life::Made) return;
  parts.life = Parts::Life::Running;
  parts.language.Read();
  // The decks' players and the tables with their columns stand since the workstation was made.
  parts.outputs.OpenMixer();
  for (support::Saying& told : parts.collections.Load()) parts.rack.Notice(std::move(told));
  parts.CheckProgramFolder();
  parts.outputs.FollowDevices();
  // From here on the engine is the conductor's: devices may open while the window is painted.
  if (parts.conducting == Conducting::OwnThread) parts.conductor.Start();
  const Preferences stored = ReadPreferences(parts.settings);
  Mailbox& conductor = *parts.context.conductor;
  parts.equaliser.StartUp(stored);
  conductor.Order(parts.rack, &DeckRack::SetGainPercent, std::clamp(stored.gain_percent, 0, 100));
  parts.outputs.Open(parts.prompts);
  parts.headphones.StartUp();
  parts.microphone.StartUp();
  parts.decks.StartUp(stored);
  parts.effects.StartUp(stored);
  parts.lights.StartUp();
  parts.live.StartUp();
  parts.organ.StartUp();
  parts.songs.StartUp();
  parts.singers.StartUp();
  parts.recording.StartUp();
  parts.lists.StartUp(stored);
  parts.visuals.StartUp();
  conductor.Order(parts.rack.Outputs(), &OutputRouting::SetBuffers);
  parts.resume.StartUp();  // behind the outputs and all that it brings back
  parts.equaliser.ReadPresets();
  parts.collections.StartUp();
}

bool Workstation::ShutDown(Leaves leaves) {
  Parts& parts = *parts_;
  if (parts.life != Parts::Life::Running) return true;
  parts.life = Parts::Life::Over;
  parts.conductor.Stop();
  const auto begun = std::chrono::steady_clock::now();
  const bool all_out = parts.gate->Close(kPatience);
  const auto rest = kPatience - (std::chrono::steady_clock::now() - begun);
  const bool tags_done =
      parts.collections.ShutDownTags(std::chrono::duration_cast<std::chrono::milliseconds>(rest));
  parts.microphone.ShutDown();
  parts.songs.ShutDown();
  const bool recorded = parts.recording.ShutDown();
  if (all_out && recorded) parts.recording.Flush();
  parts.rack.ReleaseDecks();
  // One that is held while it opens an output holds the engine's devices too.
  if (all_out) parts.rack.Outputs().Free();
  parts.live.ShutDown();
  parts.lights.ShutDown();
  parts.organ.ShutDown();
  parts.tags.ShutDown();
  parts.collections.Flush();
  parts.equaliser.Flush();
  parts.drafts.Flush();
  parts.singers.ShutDown();
  parts.lists.ShutDown();
  parts.ports.settings.Flush();
  if (leaves == Leaves::Nothing) parts.resume.ShutDown();
  return all_out && tags_done && recorded;
}

}  // namespace app
