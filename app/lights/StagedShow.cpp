// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/StagedShow.h"

#include <algorithm>
#include <map>
#include <system_error>
#include <utility>

#include "dmx/ShowFile.h"
#include "dmx/ShowRecords.h"
#include "support/Text.h"

namespace app {
namespace {

std::string FixtureName(const dmx::DMXfilename& fixture) {
  const std::string_view name = dmx::NameWithoutFolder(fixture.Filename);
  return std::string(name.substr(0, name.rfind('.')));
}

/// "RGB par 1", "RGB par 2"; a number only where there is more than one.
std::vector<std::string> FixtureNames(const dmx::DMXname& fixtures) {
  std::map<std::string, int> of_kind;
  for (const dmx::DMXfilename& fixture : fixtures) ++of_kind[FixtureName(fixture)];
  std::map<std::string, int> named;
  std::vector<std::string> names;
  for (const dmx::DMXfilename& fixture : fixtures) {
    std::string name = FixtureName(fixture);
    const int number = ++named[name];
    if (of_kind[name] > 1) name += " " + std::to_string(number);
    names.push_back(std::move(name));
  }
  return names;
}

}  // namespace

std::shared_ptr<const StagePatch> StagePatch::Make(const dmx::DMXname& fixtures) {
  auto patch = std::make_shared<StagePatch>();
  patch->fixtures = fixtures;
  patch->rules = dmx::RulesFor(fixtures);
  const std::vector<std::string> names = FixtureNames(fixtures);
  int position = 0;
  for (const dmx::DMXfilename& fixture : fixtures) {
    ++position;
    const int count = dmx::ChannelCount(fixture);
    for (int channel = 1; channel <= count; ++channel) {
      const int place = fixture.StartChannel + channel - 1;
      if (place < 1 || place > dmx::kUniverseChannels) continue;
      ChannelLabel& label = patch->labels[static_cast<std::size_t>(place - 1)];
      if (label.fixture != 0) continue;
      label = {position, channel, {}, names[static_cast<std::size_t>(position - 1)], {}};
      if (const dmx::FixtureChannel* about = fixture.Channels.Item(channel)) {
        label.function = about->function;
        label.label = about->label;
      }
    }
  }
  return patch;
}

std::vector<std::filesystem::path> ShowFilesIn(const std::filesystem::path& folder) {
  constexpr std::size_t kMost = 10'000;  // of a folder that is none of ours
  std::vector<std::filesystem::path> shows;
  std::error_code failed;
  for (std::filesystem::directory_iterator entry(folder, failed), end; !failed && entry != end;
       entry.increment(failed)) {
    if (support::ToUpper(entry->path().extension().string()) != ".SHW") continue;
    if (shows.push_back(entry->path()); shows.size() == kMost) break;
  }
  const auto name = [](const std::filesystem::path& path) { return support::ToUpper(path.stem().string()); };
  std::sort(shows.begin(), shows.end(),
            [&](const auto& a, const auto& b) { return name(a) != name(b) ? name(a) < name(b) : a < b; });
  return shows;
}

support::Result<ShowOpening> OpenStagedShow(const std::filesystem::path& path,
                                            const dmx::FixtureLibrary& library) {
  auto reading = dmx::OpenShow(path, library.Say());
  if (!reading) return reading.Failure();
  dmx::Show& show = reading.Value().show;
  dmx::PatchReport patched = dmx::PatchShow(show, library);
  auto plan = dmx::ShowPlan::Make(show.scenes, dmx::RecordChannels(show, patched.patch));
  if (!plan) return plan.Failure();

  auto staged = std::make_shared<StagedShow>();
  staged->name = path.stem().string();
  staged->file = path;
  for (const dmx::Scene& scene : show.scenes) staged->scenes.push_back(scene.SceneName);
  staged->patch = StagePatch::Make(show.fixtures);
  staged->plan = std::make_shared<const dmx::ShowPlan>(std::move(plan).Value());

  ShowReport report;
  report.name = staged->name;
  report.ended_early = reading.Value().ended_early;
  report.refused = std::move(patched.refused);
  for (const int position : patched.missing) {
    report.missing.emplace_back(dmx::NameWithoutFolder(show.fixtures.Item(position)->Filename));
  }
  report.notes = std::move(reading.Value().notes);
  report.notes.insert(report.notes.end(), patched.notes.begin(), patched.notes.end());
  return ShowOpening{std::move(staged), std::move(report)};
}

}  // namespace app
