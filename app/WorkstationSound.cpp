// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstdio>

#include "app/WorkstationParts.h"
#include "app/sound/AnalysisRows.h"
#include "decks/GainAnalysis.h"

namespace app {
namespace {

/// Seconds with three decimals, as cells and tags hold them.
std::string SecondsText(std::chrono::microseconds time) {
  const auto milliseconds = std::chrono::round<std::chrono::milliseconds>(time).count();
  char text[32];
  std::snprintf(text, sizeof text, "%lld.%03lld", static_cast<long long>(milliseconds / 1000),
                static_cast<long long>(milliseconds % 1000));
  return text;
}

const decks::EqPreset* Find(const std::vector<decks::EqPreset>& presets, const std::string& name) {
  const auto found = std::find_if(presets.begin(), presets.end(),
                                  [&](const decks::EqPreset& preset) { return preset.name == name; });
  return found == presets.end() ? nullptr : &*found;
}

std::size_t FirstSlider(decks::EqBank bank) {
  return bank == decks::EqBank::First ? 0 : decks::kEqBands;
}

const char* ChoiceKey(decks::EqBank bank) {
  return bank == decks::EqBank::First ? "Preset1" : "Preset2";
}

Workstation::GainAnswer AnswerOf(const decks::clsMp3Info& info) {
  Workstation::GainAnswer answer{decks::GainText(info), std::nullopt};
  if (info.Analysed()) answer.lacks = support::Decibels{static_cast<float>(info.AlbumdBGain)};
  return answer;
}

}  // namespace

void Workstation::SetEqualiser(int slider, int decibels) {
  if (slider < 0 || slider >= decks::kEqSliders) return;
  const int gain = std::clamp(decibels, -kMostEqGain, kMostEqGain);
  parts_->eq_sliders[static_cast<std::size_t>(slider)] = gain;
  const bool first = slider < decks::kEqBands;
  parts_->settings.SetNumber(first ? "Eq1" : "Eq2", std::to_string(slider % decks::kEqBands), gain);
  parts_->conductor.Post([&stage = parts_->stage, slider, gain] { stage.SetEqualiser(slider, gain); });
}

const std::array<int, decks::kEqSliders>& Workstation::Equaliser() const {
  return parts_->eq_sliders;
}

void Workstation::ResendEqualiser() {
  parts_->conductor.Post([&stage = parts_->stage, sliders = parts_->eq_sliders] {
    for (int slider = 0; slider < decks::kEqSliders; ++slider) {
      stage.SetEqualiser(slider, sliders[static_cast<std::size_t>(slider)]);
    }
  });
}

const std::vector<decks::EqPreset>& Workstation::EqPresets() const {
  return parts_->presets.List();
}

std::string Workstation::ChosenEqPreset(decks::EqBank bank) const {
  return parts_->settings.Store().Get(support::kPresetApplication, "EQ", ChoiceKey(bank), "");
}

void Workstation::ApplyEqPreset(decks::EqBank bank, const std::string& name) {
  const decks::EqPreset* preset = Find(EqPresets(), name);
  if (preset == nullptr) return;
  decks::ApplyEqPreset(bank, *preset, parts_->settings.Store(),
                       [this](int slider, int decibels) { SetEqualiser(slider, decibels); });
}

void Workstation::SaveEqPreset(decks::EqBank bank, const std::string& name, PresetDesk::Done done) {
  decks::EqValues values{};
  std::copy_n(parts_->eq_sliders.begin() + static_cast<std::ptrdiff_t>(FirstSlider(bank)), values.size(),
              values.begin());
  // The sliders stand there already, so the new preset is chosen without sending anything to the decks.
  const auto choose = [this, bank, name, done = std::move(done)](const support::Result<void>& saved) {
    if (saved) parts_->settings.Store().Set(support::kPresetApplication, "EQ", ChoiceKey(bank), name);
    if (done) done(saved);
  };
  parts_->presets.Save(name, values, choose);
}

void Workstation::DeleteEqPreset(const std::string& name, PresetDesk::Done done) {
  parts_->presets.Delete(name, std::move(done));
}

void Workstation::SetGainPercent(int percent) {
  const int slider = std::clamp(percent, 0, 100);
  parts_->settings.SetNumber("Settings", "GainPercent", slider);
  parts_->conductor.Post([&stage = parts_->stage, slider] { stage.SetGainPercent(slider); });
}

void Workstation::SetMixPoint(int deck, MixPoint which, std::chrono::microseconds place) {
  if (deck < 1 || deck > kDecks) return;
  const DeckView& view = View().decks[static_cast<std::size_t>(deck - 1)];
  if (view.state == DeckView::State::Empty || view.state == DeckView::State::Loading) return;
  place = std::clamp(place, std::chrono::microseconds(0), std::max(view.length, {}));
  parts_->conductor.Post(
      [&stage = parts_->stage, deck, which, place] { stage.Deck(deck).SetMixPoint(which, place); });
  parts_->StoreMixPoint(view.filename, which, place);
}

void Workstation::ResetMixPoint(int deck, MixPoint which) {
  if (deck < 1 || deck > kDecks) return;
  const DeckView& view = View().decks[static_cast<std::size_t>(deck - 1)];
  const auto found = view.found.Of(which);
  if (!found) return;
  parts_->conductor.Post(
      [&stage = parts_->stage, deck, which] { stage.Deck(deck).SetMixPoint(which, std::nullopt); });
  parts_->StoreMixPoint(view.filename, which, *found);
}

void Workstation::Parts::StoreMixPoint(const std::string& filename, MixPoint which,
                                       std::chrono::microseconds place) {
  namespace track = catalogue::track;
  const int column = which == MixPoint::Start ? track::kStartMixPoint : track::kEndMixPoint;
  const std::string text = SecondsText(place);
  for (catalogue::track_table& playlist : playlists) {
    for (const int row : playlist.RowsOf(filename)) playlist.SetCell(row, column, text);
  }
  const std::vector<int> rows = catalogue.RowsOf(filename);
  for (const int row : rows) catalogue.SetCell(row, column, text);
  if (!rows.empty()) index.Save(catalogue);
  WriteTag(filename, rows.empty() ? 0 : rows.front());
}

void Workstation::Parts::WriteTag(const std::string& filename, int row) {
  if (!settings.Flag("Tags", "Write")) return;
  catalogue::MixingTags values = MixingTagsInRow(catalogue, row);
  for (const catalogue::track_table& playlist : playlists) {
    if (values != catalogue::MixingTags{}) break;
    values = MixingTagsInRow(playlist, playlist.FindRow(catalogue::track::kFilename, filename));
  }
  if (values != catalogue::MixingTags{}) tags.Write(filename, values);
}

void Workstation::QueryGain(int deck, GainShown done) {
  if (deck < 1 || deck > kDecks) return;
  Parts& parts = *parts_;
  const std::string filename = View().decks[static_cast<std::size_t>(deck - 1)].filename;
  if (filename.empty()) return;
  const decks::clsMp3Info known = parts.gains[filename];
  if (known.Analysed() || parts.ports.commands == nullptr) return done(AnswerOf(known));
  parts.ports.workers.Post(
      [&parts, gate = parts.gate, window = parts.window, filename, done = std::move(done)] {
        gate->Pass([&] {
          decks::clsMp3Info info;
          static_cast<void>(decks::GainAnalysis(*parts.ports.commands, parts.folder).Query(filename, info));
          window->Post([&parts, filename, info, done] {
            parts.gains[filename] = info;
            done(AnswerOf(info));
          });
        });
      });
}

void Workstation::SetOutput(int output, OutputView choice) {
  Parts& parts = *parts_;
  if (output < 1 || output > kOutputs || choice.device < 0) return;
  StoreOutput(parts.settings, output, choice, parts.device_names);
  const OutputWish wish = WishFor(choice, parts.device_names, parts.say);
  const bool shared = output == 1 && !HasSecondOutput(parts.settings);
  parts.conductor.Post([&parts, output, wish, shared] {
    parts.stage.MoveOutput(output, wish);
    if (shared) parts.stage.MoveOutput(2, wish);
  });
}

void Workstation::ShareOutput() {
  Parts& parts = *parts_;
  ShareFirstOutput(parts.settings);
  parts.conductor.Post([&stage = parts.stage] { stage.ShareOutput(); });
}

bool Workstation::HasOwnOutput() const {
  return HasSecondOutput(parts_->settings);
}

void Workstation::ReturnOutput(int output) {
  parts_->conductor.Post([&stage = parts_->stage, output] { stage.ReturnOutput(output); });
}

}  // namespace app
