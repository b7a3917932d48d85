// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "app/WorkstationParts.h"
#include "app/settings/NameSettings.h"
#include "support/Text.h"
#include "support/WordRow.h"

namespace app {
namespace {

/// The twenty sliders Eq out of the sections of both banks.
std::array<int, decks::kEqSliders> StoredSliders(const Preferences& preferences) {
  std::array<int, decks::kEqSliders> sliders{};
  for (std::size_t bank = 0; bank < preferences.decks.size(); ++bank) {
    for (const auto& [key, value] : preferences.decks[bank].equaliser) {
      const auto place = support::ParseInteger(key);  // "High", "Mid" and "Bass" are none of the twenty
      if (!place || *place < 0 || *place >= decks::kEqBands) continue;
      const auto gain = std::clamp<std::int64_t>(support::LeadingInteger(value), -kMostEqGain, kMostEqGain);
      sliders[bank * decks::kEqBands + static_cast<std::size_t>(*place)] = static_cast<int>(gain);
    }
  }
  return sliders;
}

}  // namespace

void Workstation::StartUp() {
  Parts& parts = *parts_;
  if (parts.life != Parts::Life::Made) return;
  parts.life = Parts::Life::Running;
  parts.ReadLanguage();
  parts.NameTheWindow();
  // The decks' players and the tables with their columns stand since the workstation was made.
  parts.OpenMixer();
  parts.LoadIndexes();
  parts.CheckProgramFolder();
  parts.ListOutputDevices();
  parts.FollowOutputDevices();
  // From here on the engine is the conductor's: devices may open while the window is painted.
  if (parts.conducting == Conducting::OwnThread) parts.conductor.Start();
  parts.InitialiseEngine();
  parts.StoredTempos();
  parts.lights.StartUp();
  parts.organ.StartUp();
  parts.songs.StartUp();
  parts.lists.StartUp(parts.preferences);
  parts.FindVisualisations();
  parts.ShortenBuffers();
  parts.resume.StartUp();  // behind the outputs and all that it brings back
  parts.ReadPresets();
  parts.missing.Look();
  parts.tags.StartUp();
  parts.intake.NameBy(ReadNameRule(parts.settings));
  parts.intake.StartUp();
  parts.batch.StartUp(std::clamp(parts.preferences.gain_percent, 0, 100));
}

bool Workstation::ShutDown() {
  Parts& parts = *parts_;
  if (parts.life != Parts::Life::Running) return true;
  parts.life = Parts::Life::Over;
  parts.conductor.Stop();
  const auto begun = std::chrono::steady_clock::now();
  const bool all_out = parts.gate->Close(kPatience);
  const auto rest = kPatience - (std::chrono::steady_clock::now() - begun);
  const bool tags_done = parts.tags.ShutDown(std::chrono::duration_cast<std::chrono::milliseconds>(rest));
  parts.songs.ShutDown();
  parts.ReleaseDecks();
  // One that is held while it opens an output holds the engine's devices too.
  if (all_out) parts.ReleaseEngine();
  parts.lights.ShutDown();
  parts.organ.ShutDown();
  parts.SaveWhatWaits();
  parts.resume.ShutDown();
  return all_out && tags_done;
}

void Workstation::Parts::ReadLanguage() {
  string_base = support::BaseOf(support::LanguageOf(settings.Number("Language", "Current")));
  say.Choose(string_base);
}

void Workstation::Parts::NameTheWindow() {
  skin_folder = folder.Native("\\Skins");
}

void Workstation::Parts::OpenMixer() {
  if (ports.mixer == nullptr) return;
  // A sound system may take its time to answer; the slider follows when it has.
  // What it told before the slider was moved, and is taken out of the box after that, is an echo of steps
  // that the hand has left behind.
  auto told = [box = conductor.Box(), sets = volume_sets, this](int percent) {
    box->Post([this, percent, before = sets->load()] {
      if (before == *volume_sets) stage.FollowMixer(percent);
    });
  };
  ports.workers.Post(
      [mixer = ports.mixer, gate = gate, told = std::move(told)] { gate->Pass([&] { mixer->Open(told); }); });
}

void Workstation::Parts::LoadIndexes() {
  using support::Sentence;
  loaded.tracks = LoadTable(catalogue::kTrackIndex, catalogue, index,
                            {Sentence::CatalogueDamaged, Sentence::CatalogueUnreadable});
  loaded.karaoke = LoadTable(catalogue::kKaraokeIndex, karaoke, karaoke_index,
                             {Sentence::KaraokeDamaged, Sentence::KaraokeUnreadable});
}

catalogue::IndexReport Workstation::Parts::LoadTable(std::string_view name, catalogue::track_table& table,
                                                     IndexKeeper& keeper, const LoadSentences& sentences) {
  const std::filesystem::path path = folder.Native(name);
  const auto report = catalogue::LoadIndex(path, table, say);
  if (!report) {
    if (report.Failure().code == support::ErrorCode::NotFound) return {};
    keeper.SetAsideFirst(kUnreadable);
    stage.Notice(say(sentences.unreadable, {path.string()}));
    return {};
  }
  if (const int skipped = report.Value().Skipped(); skipped > 0) {
    keeper.SetAsideFirst(kDamaged);
    stage.Notice(say(sentences.damaged, {std::to_string(skipped)}));
  }
  return report.Value();
}

void Workstation::Parts::CheckProgramFolder() {
  ports.workers.Post([this, gate = gate, path = folder.Native("\\can-write.tmp"), tell = Teller()] {
    gate->Pass([&] {
      if (!ports.files.Save(path, "")) return tell(say(support::Sentence::FolderReadOnly));
      std::error_code ignored;
      std::filesystem::remove(path, ignored);
    });
  });
}

void Workstation::Parts::ListOutputDevices() {
  device_names.clear();
  constexpr int kMostDevices = 256;  // an engine that never ends its list does not keep the window shut
  for (int device = 1; device <= kMostDevices; ++device) {
    auto name = ports.engine.BASS_GetDeviceDescription(device);
    if (!name) return;
    device_names.push_back(std::move(*name));
  }
}

void Workstation::Parts::FollowOutputDevices() {
  stage.OnDevicesListed([this] { window->Post([this] { ListOutputDevices(); }); });
}

void Workstation::Parts::InitialiseEngine() {
  preferences = ReadPreferences(settings);
  OutputsAtStart outputs = ReadOutputs(settings, device_names, say);
  if (device_names.empty()) outputs.notice = say(support::Sentence::NoOutputs);
  eq_sliders = StoredSliders(preferences);
  conductor.Post([this, sliders = eq_sliders, percent = preferences.gain_percent] {
    stage.StoredEqualiser(sliders);
    stage.SetGainPercent(std::clamp(percent, 0, 100));
  });
  conductor.Post([this, outputs = std::move(outputs), none = device_names.empty()] {
    auto failures = stage.OpenOutputs(outputs.wishes);
    if (none && !failures.empty()) failures = {outputs.notice};
    for (std::string& failure : failures) {
      window->Post([this, failure = std::move(failure)] { Prompt(failure); });
    }
    if (!outputs.notice.empty()) {
      stage.Notices().Warn({NoticeBoard::Subject::Kind::StoredOutput, 0}, outputs.notice);
    }
  });
}

void Workstation::Parts::FindVisualisations() {
  if (ports.visualisation == nullptr) return;
  conductor.Post([this, plugins = folder.Native("\\Plugins")] {
    constexpr int kOption = 4;
    auto names = ports.visualisation->BASS_VIS_FindPlugins(plugins);
    ports.visualisation->BASS_VIS_SetConfig(kOption, 0);
    const int rate = std::clamp(settings.Number("Visualisation", "Resolution"), 1, 60);
    window->Post([this, names = std::move(names), rate] {
      visualisers = names;
      visualisation_rate = rate;
    });
  });
}

void Workstation::Parts::ReadPresets() {
  presets.Read([complain = Complainer()](const support::Result<void>& read) {
    if (!read) complain(read.Failure());
  });
}

void Workstation::Parts::ShortenBuffers() {
  conductor.Post([this] { stage.SetBuffers(); });
}

void Workstation::Parts::Prompt(std::string sentence) {
  if (prompts != nullptr) return prompts->Tell(sentence);
  unseen_prompts.push_back(std::move(sentence));
}

void Workstation::Parts::ReleaseDecks() {
  stage.ReleaseDecks();
}

void Workstation::Parts::ReleaseEngine() {
  stage.ReleaseEngine();
}

void Workstation::Parts::SaveWhatWaits() {
  SaveBatch();
  index.Flush();
  karaoke_index.Flush();
  batch.Flush();
  presets.Flush();
  intake.Flush();
  lists.ShutDown();
  settings.Store().Flush();
}

}  // namespace app
