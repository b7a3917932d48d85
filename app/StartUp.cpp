// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WorkstationParts.h"

namespace app {

void Workstation::StartUp() {
  Parts& parts = *parts_;
  if (parts.life != Parts::Life::Made) return;
  parts.life = Parts::Life::Running;
  parts.ReadLanguage();
  parts.LoadIndexes();
  parts.ListOutputDevices();
  // From here on the engine is the conductor's: devices may open while the window is painted.
  if (parts.conducting == Conducting::OwnThread) parts.conductor.Start();
  parts.InitialiseEngine();
  parts.ShortenBuffers();
}

void Workstation::ShutDown() {
  Parts& parts = *parts_;
  if (parts.life != Parts::Life::Running) return;
  parts.life = Parts::Life::Over;
  parts.conductor.Stop();
  parts.gate->Close();
  parts.ReleaseDecks();
  parts.ReleaseEngine();
  parts.SaveWhatWaits();
}

void Workstation::Parts::ReadLanguage() {
  string_base = settings.Number("Language", "Current") == 1 ? 1000 : 0;
}

void Workstation::Parts::LoadIndexes() {
  const auto report = catalogue::LoadIndex(folder.Native(catalogue::kTrackIndex), catalogue);
  if (!report) {
    if (report.Failure().code != support::ErrorCode::NotFound) stage.Notice(report.Failure().text);
  } else if (report.Value().Skipped() > 0) {
    stage.Notice(std::to_string(report.Value().Skipped()) + " damaged rows of the catalogue were left out.");
  }
}

void Workstation::Parts::ListOutputDevices() {
  constexpr int kMostDevices = 256;  // an engine that never ends its list does not keep the window shut
  for (int device = 1; device <= kMostDevices; ++device) {
    auto name = ports.engine.BASS_GetDeviceDescription(device);
    if (!name) return;
    device_names.push_back(std::move(*name));
  }
}

void Workstation::Parts::InitialiseEngine() {
  OutputsAtStart outputs = ReadOutputs(settings, device_names);
  if (device_names.empty()) outputs.notice = "No sound output was found; the decks run without sound.";
  conductor.Post([this, outputs = std::move(outputs)] {
    stage.OpenOutputs(outputs.wishes);
    if (!outputs.notice.empty()) stage.Notice(outputs.notice);
  });
}

void Workstation::Parts::ShortenBuffers() {
  conductor.Post([this] { stage.SetBuffers(); });
}

void Workstation::Parts::ReleaseDecks() {
  stage.ReleaseDecks();
}

void Workstation::Parts::ReleaseEngine() {
  stage.ReleaseEngine();
}

void Workstation::Parts::SaveWhatWaits() {
  index.Flush();
  settings.Store().Flush();
}

}  // namespace app
