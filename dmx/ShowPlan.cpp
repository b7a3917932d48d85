// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/ShowPlan.h"

#include <algorithm>

#include "dmx/ShowTime.h"

#include "support/Sentences.h"

namespace dmx {
namespace {

constexpr std::uint16_t kNotSet = 256;  ///< no step has set the channel so far
constexpr std::size_t kMostLevels = 64 << 20;

int OnTheWay(int from, int to, ShowTime gone, ShowTime whole) {
  const std::int64_t way = (to - from) * gone.count();
  const std::int64_t half = (way < 0 ? -whole.count() : whole.count()) / 2;
  return from + static_cast<int>((way + half) / whole.count());
}

}  // namespace

support::Result<ShowPlan> ShowPlan::Make(const Scenes& scenes, std::span<const int> channels) {
  std::size_t steps = 0;
  for (const Scene& scene : scenes) steps += static_cast<std::size_t>(scene.Steps.count()) * 2;
  if (steps > kMostLevels / std::max<std::size_t>(channels.size(), 1)) {
    return support::Failed(support::ErrorCode::Unsupported, support::Sentence::ShowTooLong);
  }
  ShowPlan plan;
  int record = 0;
  for (const int channel : channels) {
    ++record;
    if (channel == 0) continue;
    plan.channels_.push_back(channel);
    plan.records_.push_back(record);
  }
  int number = 0;
  for (const Scene& scene : scenes) {
    ++number;
    if (scene.Loops < 1 || scene.Steps.count() == 0) continue;
    plan.AddPass(scene, number, 1, 1);
    if (scene.Loops > 1) plan.AddPass(scene, number, 2, scene.Loops - 1);
  }
  return plan;
}

void ShowPlan::AddPass(const Scene& scene, int number, int first_loop, int rounds) {
  Pass pass{length_, ShowTime(0), steps_.size(), static_cast<std::size_t>(scene.Steps.count()),
            number,  first_loop};
  for (const SceneStep& step : scene.Steps) {
    const ShowTime fade = ParseShowTime(step.FadeTime);
    const ShowTime wait = ParseShowTime(step.WaitTime);
    for (std::size_t i = 0; i < channels_.size(); ++i) {
      const Sliders* record = step.SceneChannel.Item(records_[i]);
      const std::uint16_t before = steps_.empty() ? kNotSet : levels_[levels_.size() - channels_.size()];
      levels_.push_back(record != nullptr
                            ? static_cast<std::uint16_t>(std::clamp<int>(record->ChannelValue, 0, 255))
                            : before);
    }
    steps_.push_back({pass.length, fade, wait});
    pass.length += fade + wait;
  }
  length_ += pass.length * rounds;
  passes_.push_back(pass);
}

ShowPlan::Found ShowPlan::Find(ShowTime elapsed) const {
  if (passes_.empty()) return {};
  if (elapsed >= length_) {
    const Step& last = steps_.back();
    const Pass& pass = passes_.back();
    const auto rounds = pass.length.count() == 0 ? 1 : (length_ - pass.start) / pass.length;
    return {&pass, steps_.size() - 1, rounds - 1, last.fade + last.wait};
  }
  elapsed = std::max(elapsed, ShowTime(0));
  const auto pass = std::prev(std::upper_bound(passes_.begin(), passes_.end(), elapsed,
                                               [](ShowTime time, const Pass& p) { return time < p.start; }));
  const ShowTime since_pass = (elapsed - pass->start) % pass->length;
  const auto first = steps_.begin() + static_cast<std::ptrdiff_t>(pass->first_step);
  const auto step =
      std::prev(std::upper_bound(first, first + static_cast<std::ptrdiff_t>(pass->steps), since_pass,
                                 [](ShowTime time, const Step& s) { return time < s.start; }));
  return {&*pass, static_cast<std::size_t>(step - steps_.begin()), (elapsed - pass->start) / pass->length,
          since_pass - step->start};
}

ShowPlan::Place ShowPlan::At(ShowTime elapsed) const {
  const Found found = Find(elapsed);
  if (found.pass == nullptr) return {};
  const Step& step = steps_[found.step];
  return {found.pass->scene, found.pass->first_loop + static_cast<int>(found.round),
          static_cast<int>(found.step - found.pass->first_step) + 1, found.since_step < step.fade,
          std::min(elapsed, length_) - found.since_step + step.fade + step.wait};
}

bool ShowPlan::LevelsAt(ShowTime elapsed, ConstUniverseLevels start, UniverseLevels levels) const {
  const Found found = Find(elapsed);
  if (found.pass == nullptr) return false;
  const Step& step = steps_[found.step];
  const bool fading = found.since_step < step.fade;
  const std::uint16_t* to_row = LevelsOf(found.step);
  const std::uint16_t* from_row = found.step == 0 ? nullptr : LevelsOf(found.step - 1);
  for (std::size_t i = 0; i < channels_.size(); ++i) {
    const auto channel = static_cast<std::size_t>(channels_[i] - 1);
    const auto level = [&](std::uint16_t given) { return given == kNotSet ? start[channel] : given; };
    int shown = level(to_row[i]);
    if (fading) {
      const int from = from_row == nullptr ? start[channel] : level(from_row[i]);
      shown = OnTheWay(from, shown, found.since_step, step.fade);
    }
    levels[channel] = static_cast<DmxLevel>(shown);
  }
  return fading;
}

}  // namespace dmx
