// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/ShowEdit.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <utility>

#include "dmx/Looks.h"

namespace dmx {
namespace {

constexpr int kMostLoops = std::numeric_limits<std::int16_t>::max();

/// The fixtures as they lie on the universe; the first that does not fit is the failure.
support::Result<Patch> PatchOf(const DMXname& fixtures) {
  Patch patch;
  int position = 0;
  for (const DMXfilename& fixture : fixtures) {
    ++position;
    if (fixture.Channels.count() == 0) continue;
    const auto added = patch.Add(position, fixture.StartChannel, fixture.Channels);
    if (!added) return added.Failure();
  }
  position = 0;
  for (const DMXfilename& fixture : fixtures) {
    ++position;
    if (fixture.Channels.count() == 0) patch.Hold(position, fixture.StartChannel, fixture.NumberOf);
  }
  return patch;
}

/// Whether a fixture of count channels could stand at the start, as far as the others are concerned.
support::Result<void> CheckAmongOthers(DMXname fixtures, int position, int start, int count) {
  fixtures.Remove(position);
  const auto others = PatchOf(fixtures);
  if (!others) return others.Failure();
  return others.Value().Check(start, count);
}

int Same(int fixture) {
  return fixture;
}

/// Finds where the record of a place stands, from 1; 0: nowhere. A fixture finds its own, also where it was
/// moved to; else records of nobody are found by their channel.
class Sources {
 public:
  explicit Sources(const std::vector<RecordPlace>& places) {
    int record = 0;
    for (const RecordPlace& place : places) {
      ++record;
      if (place.fixture != 0) {
        own_.try_emplace({place.fixture, place.channel}, record);
      } else {
        nobodys_[static_cast<std::size_t>(place.on_the_wire)] = record;
      }
    }
    nobodys_[0] = 0;
  }

  [[nodiscard]] int Of(const RecordPlace& place) const {
    const auto own = own_.find({place.fixture, place.channel});
    return own != own_.end() ? own->second : nobodys_[static_cast<std::size_t>(place.on_the_wire)];
  }

 private:
  std::map<std::pair<int, int>, int> own_;
  std::array<int, kUniverseChannels + 1> nobodys_{};
};

void TellDifferences(Scene& scene) {
  const SceneChannel* before = nullptr;
  for (SceneStep& step : scene.Steps) {
    int number = 0;
    for (Sliders& record : step.SceneChannel) {
      const Sliders* previous = before == nullptr ? nullptr : before->Item(number + 1);
      ++number;
      record.Prev = previous == nullptr ? std::int16_t{0} : previous->ChannelValue;
      record.Dif = static_cast<std::int16_t>(record.ChannelValue - record.Prev);
      record.Changed = record.Dif != 0;
    }
    before = &step.SceneChannel;
  }
}

}  // namespace

std::size_t Weight(const Show& show) {
  std::size_t weight = sizeof show;
  for (const DMXfilename& fixture : show.fixtures) {
    weight += sizeof fixture;
    for (const FixtureChannel& channel : fixture.Channels)
      weight += sizeof channel + static_cast<std::size_t>(channel.presets.count()) * sizeof(presets);
  }
  for (const SetAside& aside : show.aside)
    weight +=
        sizeof aside + static_cast<std::size_t>(aside.fixture.Channels.count()) * sizeof(FixtureChannel);
  for (const Scene& scene : show.scenes) {
    weight += sizeof scene;
    for (const SceneStep& step : scene.Steps)
      weight += sizeof step + static_cast<std::size_t>(step.SceneChannel.count()) * sizeof(Sliders);
  }
  return weight;
}

const SceneStep* ShowEdit::Step(int scene, int step) const {
  const Scene* found = Now().scenes.Item(scene);
  return found == nullptr ? nullptr : found->Steps.Item(step);
}

void ShowEdit::Begin(Show show) {
  history_.Begin(std::move(show));
  Lay();
}

void ShowEdit::Undo() {
  history_.Undo();
  Lay();
}

void ShowEdit::Redo() {
  history_.Redo();
  Lay();
}

support::Result<void> ShowEdit::AddFixture(DMXfilename fixture) {
  const auto fits = patch_.Check(fixture.StartChannel, fixture.Channels.count());
  if (!fits) return fits;
  Show next = Now();
  fixture.NumberOf = static_cast<std::int16_t>(fixture.Channels.count());
  next.fixtures.Add(std::move(fixture));
  return TakeFixtures(std::move(next), Same);
}

support::Result<void> ShowEdit::MoveFixture(int position, int start) {
  Show next = Now();
  DMXfilename* fixture = next.fixtures.Item(position);
  if (fixture == nullptr || fixture->StartChannel == start) return {};
  const auto fits = CheckAmongOthers(Now().fixtures, position, start, ChannelCount(*fixture));
  if (!fits) return fits;
  fixture->StartChannel = static_cast<std::int16_t>(start);
  return TakeFixtures(std::move(next), Same);
}

void ShowEdit::RemoveFixture(int position) {
  Show next = Now();
  if (next.fixtures.Item(position) == nullptr) return;
  next.fixtures.Remove(position);
  for (SetAside& aside : next.aside) {
    if (aside.behind >= position) --aside.behind;
  }
  // Fewer fixtures always fit.
  static_cast<void>(TakeFixtures(std::move(next), [position](int fixture) {
    if (fixture == position) return 0;
    return fixture > position ? fixture - 1 : fixture;
  }));
}

support::Result<void> ShowEdit::ReplaceFixture(int position, DMXfilename file) {
  Show next = Now();
  DMXfilename* fixture = next.fixtures.Item(position);
  if (fixture == nullptr) return {};
  const auto fits = CheckAmongOthers(Now().fixtures, position, fixture->StartChannel, file.Channels.count());
  if (!fits) return fits;
  fixture->Filename = std::move(file.Filename);
  fixture->Channels = std::move(file.Channels);
  fixture->cut_short = file.cut_short;
  if (!SpansTell(order_)) fixture->NumberOf = static_cast<std::int16_t>(fixture->Channels.count());
  return TakeFixtures(std::move(next), Same);
}

bool ShowEdit::NeedsRepair(int position) const {
  const DMXfilename* fixture = Now().fixtures.Item(position);
  return fixture != nullptr && SpansTell(order_) && DiffersFromItsFile(*fixture);
}

void ShowEdit::RepairFixture(int position) {
  if (!NeedsRepair(position)) return;
  Show next = Now();
  DMXfilename* fixture = next.fixtures.Item(position);
  fixture->NumberOf = static_cast<std::int16_t>(fixture->Channels.count());
  static_cast<void>(TakeFixtures(std::move(next), Same));  // it is patched that way already
}

support::Result<void> ShowEdit::BringBack(int aside, int start) {
  if (aside < 1 || aside > static_cast<int>(Now().aside.size())) return {};
  Show next = Now();
  const auto returning = next.aside.begin() + (aside - 1);
  const auto fits = patch_.Check(start, returning->fixture.Channels.count());
  if (!fits) return fits;
  const int position = returning->behind + 1;
  DMXfilename fixture = std::move(returning->fixture);
  fixture.StartChannel = static_cast<std::int16_t>(start);
  next.fixtures.Insert(position, std::move(fixture));
  const auto behind = next.aside.erase(returning);
  for (auto later = behind; later != next.aside.end(); ++later) ++later->behind;
  return TakeFixtures(std::move(next), [position, aside](int number) {
    if (number == -aside) return position;
    if (number < -aside) return number + 1;
    return number >= position ? number + 1 : number;
  });
}

void ShowEdit::DropAside(int aside) {
  if (aside < 1 || aside > static_cast<int>(Now().aside.size())) return;
  Show next = Now();
  next.aside.erase(next.aside.begin() + (aside - 1));
  static_cast<void>(TakeFixtures(std::move(next), [aside](int fixture) {
    if (fixture == -aside) return 0;
    return fixture < -aside ? fixture + 1 : fixture;
  }));
}

int ShowEdit::AddScene(int behind, std::string name, ConstUniverseLevels levels) {
  Show next = Now();
  const int position = std::clamp(behind, 0, next.scenes.count()) + 1;
  Scene& scene = next.scenes.Insert(position, {});
  scene.SceneName = std::move(name);
  scene.Steps.Add(NewStep(scene, 0, levels));
  TellDifferences(scene);
  Take(std::move(next));
  return position;
}

int ShowEdit::CopyScene(int scene, std::string name) {
  const Scene* original = Now().scenes.Item(scene);
  if (original == nullptr) return scene;
  Show next = Now();
  next.scenes.Insert(scene + 1, *original).SceneName = std::move(name);
  Take(std::move(next));
  return scene + 1;
}

void ShowEdit::RemoveScene(int scene) {
  Show next = Now();
  next.scenes.Remove(scene);
  Take(std::move(next));
}

void ShowEdit::MoveScene(int from, int to) {
  Show next = Now();
  if (next.scenes.Item(from) == nullptr || next.scenes.Item(to) == nullptr) return;
  next.scenes.Move(from, to);
  Take(std::move(next));
}

void ShowEdit::RenameScene(int scene, std::string name) {
  ChangeScene(scene, "name" + std::to_string(scene),
              [&](Scene& changed) { changed.SceneName = std::move(name); });
}

void ShowEdit::SetLoops(int scene, int loops) {
  ChangeScene(scene, "loops" + std::to_string(scene), [&](Scene& changed) {
    changed.Loops = static_cast<std::int16_t>(std::clamp(loops, 0, kMostLoops));
  });
}

SceneStep ShowEdit::NewStep(const Scene& scene, int behind, ConstUniverseLevels levels) const {
  SceneStep step;
  const SceneStep* before = scene.Steps.Item(behind);
  // The times of the step before are what a row of steps mostly has in common.
  step.FadeTime = before == nullptr ? StepTimeText(Tenths(10)) : before->FadeTime;
  step.WaitTime = before == nullptr ? StepTimeText(Tenths(30)) : before->WaitTime;
  const SceneChannel* look = before == nullptr ? nullptr : &before->SceneChannel;
  step.SceneChannel = RecordLook(levels, channels_, look, look);
  return step;
}

int ShowEdit::AddStep(int scene, int behind, ConstUniverseLevels levels) {
  const Scene* present = Now().scenes.Item(scene);
  if (present == nullptr) return 0;
  const int position = std::clamp(behind, 0, present->Steps.count()) + 1;
  ChangeScene(scene, {}, [&](Scene& changed) {
    changed.Steps.Insert(position, NewStep(changed, position - 1, levels));
    TellDifferences(changed);
  });
  return position;
}

void ShowEdit::RecordStep(int scene, int step, ConstUniverseLevels levels) {
  if (Step(scene, step) == nullptr) return;
  ChangeScene(scene, {}, [&](Scene& changed) {
    SceneChannel& look = changed.Steps.Item(step)->SceneChannel;
    look = RecordLook(levels, channels_, nullptr, &look);
    TellDifferences(changed);
  });
}

int ShowEdit::CopyStep(int scene, int step) {
  const SceneStep* original = Step(scene, step);
  if (original == nullptr) return step;
  ChangeScene(scene, {}, [&](Scene& changed) {
    changed.Steps.Insert(step + 1, *original);
    TellDifferences(changed);
  });
  return step + 1;
}

void ShowEdit::RemoveSteps(int scene, const std::vector<int>& steps) {
  ChangeScene(scene, {}, [&](Scene& changed) {
    for (int step = changed.Steps.count(); step >= 1; --step) {
      if (std::find(steps.begin(), steps.end(), step) != steps.end()) changed.Steps.Remove(step);
    }
    TellDifferences(changed);
  });
}

void ShowEdit::MoveStep(int scene, int from, int to) {
  if (Step(scene, from) == nullptr || Step(scene, to) == nullptr) return;
  ChangeScene(scene, {}, [&](Scene& changed) {
    changed.Steps.Move(from, to);
    TellDifferences(changed);
  });
}

void ShowEdit::SetFade(int scene, const std::vector<int>& steps, Tenths time) {
  SetTime(scene, steps, time, &SceneStep::FadeTime);
}

void ShowEdit::SetWait(int scene, const std::vector<int>& steps, Tenths time) {
  SetTime(scene, steps, time, &SceneStep::WaitTime);
}

void ShowEdit::SetTime(int scene, const std::vector<int>& steps, Tenths time, std::string SceneStep::*which) {
  ChangeScene(scene, {}, [&](Scene& changed) {
    for (const int step : steps) {
      SceneStep* timed = changed.Steps.Item(step);
      if (timed != nullptr) timed->*which = StepTimeText(time);
    }
  });
}

ShowTime ShowEdit::StartOf(int scene, int step) const {
  Tenths start{0};
  int number = 0;
  for (const Scene& earlier : Now().scenes) {
    if (++number == scene) break;
    start += LengthOf(earlier) * std::max<int>(earlier.Loops, 0);
  }
  for (int before = 1; before < step; ++before) {
    const SceneStep* passed = Step(scene, before);
    if (passed != nullptr) start += ParseShowTime(passed->FadeTime) + ParseShowTime(passed->WaitTime);
  }
  return start;
}

void ShowEdit::Take(Show next, std::string_view thing) {
  history_.Change(std::move(next), thing);
  Lay();
}

support::Result<void> ShowEdit::TakeFixtures(Show next, const Renumber& renumber) {
  auto patch = PatchOf(next.fixtures);
  if (!patch) return patch.Failure();
  std::vector<RecordPlace> from = places_;
  for (RecordPlace& place : from) place.fixture = place.fixture == 0 ? 0 : renumber(place.fixture);
  // Where records stand for every channel from 1 on, they go on doing so, as otherwise levels of channels
  // without a fixture would be lost.
  const std::vector<int> taken = patch.Value().Channels();
  const int last = std::max<int>(taken.empty() ? 0 : taken.back(), static_cast<int>(places_.size()));
  const Sources sources(from);
  std::vector<int> arranged;
  for (const RecordPlace& place : RecordPlaces(next, patch.Value(), order_, last))
    arranged.push_back(sources.Of(place));
  ArrangeRecords(next.scenes, arranged);
  for (Scene& scene : next.scenes) TellDifferences(scene);
  Take(std::move(next));
  return {};
}

void ShowEdit::ChangeScene(int scene, std::string_view thing, const std::function<void(Scene&)>& change) {
  Show next = Now();
  Scene* changed = next.scenes.Item(scene);
  if (changed == nullptr) return;
  change(*changed);
  Take(std::move(next), thing);
}

void ShowEdit::Lay() {
  auto patch = PatchOf(Now().fixtures);
  patch_ = patch ? std::move(patch).Value() : Patch{};
  order_ = OrderOf(Now(), patch_);
  places_ = RecordPlaces(Now(), patch_, order_);
  channels_ = RecordChannels(places_);
}

}  // namespace dmx
