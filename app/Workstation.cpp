// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Workstation.h"

#include <utility>

#include "app/Conductor.h"
#include "app/Stage.h"
#include "support/Text.h"

namespace app {

struct Workstation::Parts {
  Parts(const Ports& outside, support::ProgramFolder program_folder, Conducting how)
      : ports(outside),
        folder(std::move(program_folder)),
        conducting(how),
        conductor([this] { stage.Tick(); }),
        stage(outside.engine, outside.sound, conductor.Box()) {}

  Ports ports;
  support::ProgramFolder folder;
  Conducting conducting;
  bool running = false;
  catalogue::track_table catalogue{catalogue::TrackColumns()};
  std::vector<std::string> device_names;
  std::shared_ptr<Mailbox> window = std::make_shared<Mailbox>();
  Conductor conductor;
  Stage stage;

  void OnDeck(int deck, std::function<void(DeckStation&)> command) {
    if (deck < 1 || deck > kDecks) return;
    conductor.Post([this, deck, command = std::move(command)] { command(stage.Deck(deck)); });
  }
};

Workstation::Workstation(const Ports& ports, support::ProgramFolder folder, Conducting conducting)
    : parts_(std::make_unique<Parts>(ports, std::move(folder), conducting)) {}

Workstation::~Workstation() {
  ShutDown();
}

void Workstation::StartUp() {
  Parts& parts = *parts_;
  for (int device = 1;; ++device) {
    auto name = parts.ports.engine.BASS_GetDeviceDescription(device);
    if (!name) break;
    parts.device_names.push_back(std::move(*name));
  }
  parts.conductor.Post([&parts] {
    std::array<OutputWish, 3> wishes{};
    wishes[0].place.device = wishes[1].place.device = 1;
    parts.stage.OpenOutputs(wishes);
    parts.stage.SetBuffers();
  });
  parts.running = true;
  if (parts.conducting == Conducting::OwnThread) parts.conductor.Start();
}

void Workstation::ShutDown() {
  Parts& parts = *parts_;
  if (!std::exchange(parts.running, false)) return;
  parts.conductor.Stop();
  parts.stage.ReleaseDecks();
  parts.stage.ReleaseEngine();
  parts.ports.settings.Flush();
}

const WorkstationView& Workstation::View() {
  return parts_->stage.View();
}

void Workstation::LoadDeck(int deck, const catalogue::track_table& table, int row) {
  namespace track = catalogue::track;
  Track wanted;
  wanted.filename = table.Cell(row, track::kFilename);
  wanted.artist = table.Cell(row, track::kArtist);
  wanted.title = table.Cell(row, track::kTitle);
  wanted.bpm = support::ParseReal(table.Cell(row, track::kBpm)).value_or(0);
  parts_->OnDeck(deck, [wanted = std::move(wanted)](DeckStation& station) { station.Load(wanted); });
}

void Workstation::Play(int deck) {
  parts_->OnDeck(deck, [](DeckStation& station) { station.Play(); });
}

void Workstation::Pause(int deck) {
  parts_->OnDeck(deck, [](DeckStation& station) { station.Pause(); });
}

void Workstation::Resume(int deck) {
  parts_->OnDeck(deck, [](DeckStation& station) { station.Resume(); });
}

void Workstation::Stop(int deck) {
  parts_->OnDeck(deck, [](DeckStation& station) { station.Stop(); });
}

void Workstation::Seek(int deck, std::chrono::microseconds position) {
  parts_->OnDeck(deck, [position](DeckStation& station) { station.Seek(position); });
}

void Workstation::SetVolume(int deck, int volume) {
  parts_->OnDeck(deck, [volume](DeckStation& station) { station.SetVolume(volume); });
}

void Workstation::SetTempo(int deck, float percent) {
  parts_->OnDeck(deck, [percent](DeckStation& station) { station.SetTempo(percent); });
}

void Workstation::SetPreVolume(int deck, int volume) {
  parts_->OnDeck(deck, [volume](DeckStation& station) { station.SetPreVolume(volume); });
}

void Workstation::SetOutput(int output, OutputView choice) {
  if (output < 1 || output > 3) return;
  parts_->conductor.Post([this, output, choice] { parts_->stage.Route(output, choice); });
}

const std::vector<std::string>& Workstation::DeviceNames() const {
  return parts_->device_names;
}

catalogue::track_table& Workstation::Catalogue() {
  return parts_->catalogue;
}

void Workstation::AddFiles(std::vector<std::string> paths, AddedFiles done) {
  parts_->window->Post([this, paths = std::move(paths), done = std::move(done)] {
    std::vector<std::string> refused;
    int rows = 0;
    for (const std::string& path : paths) {
      const auto tags = parts_->ports.tags.Read(path);
      if (!tags) {
        refused.push_back(tags.Failure().text);
        continue;
      }
      const int row = parts_->catalogue.AddRow();
      parts_->catalogue.SetCell(row, catalogue::track::kArtist, tags.Value().artist);
      parts_->catalogue.SetCell(row, catalogue::track::kTitle, tags.Value().title);
      parts_->catalogue.SetCell(row, catalogue::track::kFilename, path);
      ++rows;
    }
    if (done) done(rows, std::move(refused));
  });
}

void Workstation::PumpWindow() {
  for (const Mailbox::Job& job : parts_->window->Take()) job();
}

void Workstation::Tick() {
  if (parts_->conducting == Conducting::ByHand) parts_->conductor.ConductOnce();
}

}  // namespace app
