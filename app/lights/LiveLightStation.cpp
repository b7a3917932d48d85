// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lights/LiveLightStation.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "app/StationContext.h"
#include "app/WorkstationView.h"
#include "app/lights/HeardMusic.h"
#include "app/lights/LightStation.h"
#include "app/lights/StagedShow.h"
#include "support/PartLines.h"

namespace app {
namespace {

using support::Sentence;

double SecondsOf(support::TimePoint now) {
  return std::chrono::duration<double>(now.time_since_epoch()).count();
}

void Merge(const dmx::LiveLook& from, dmx::LiveLook& into) {
  if (from.light) into.light = from.light;
  if (from.colour) into.colour = from.colour;
  if (from.gobo) into.gobo = from.gobo;
  if (from.gobo_rotation) into.gobo_rotation = from.gobo_rotation;
  if (from.speed) into.speed = from.speed;
  if (from.pan) into.pan = from.pan;
  if (from.tilt) into.tilt = from.tilt;
}

bool IsSame(const dmx::DMXfilename& a, const dmx::DMXfilename& b) {
  return a.StartChannel == b.StartChannel && a.Filename == b.Filename;
}

/// By old positions; 0: it is gone.
std::vector<int> NewPositions(const dmx::DMXname& before, const dmx::DMXname& now) {
  std::vector<int> positions;
  for (const dmx::DMXfilename& fixture : before) {
    const auto its =
        std::find_if(now.begin(), now.end(), [&](const auto& other) { return IsSame(fixture, other); });
    positions.push_back(its == now.end() ? 0 : static_cast<int>(its - now.begin()) + 1);
  }
  return positions;
}

/// Which of a fixture an effect changes.
int ChangedBy(const dmx::LiveLook& look) {
  return int{look.light.has_value()} | int{look.colour.has_value()} << 1 | int{look.pan.has_value()} << 2 |
         int{look.tilt.has_value()} << 3;
}

template <typename Levels>
void Put(const std::vector<dmx::FaderMove>& moves, Levels& levels) {
  for (const dmx::FaderMove& move : moves) levels[static_cast<std::size_t>(move.channel - 1)] = move.level;
}

}  // namespace

LiveLightStation::LiveLightStation(const StationContext& context, LightStation& lights)
    : context_(context),
      lights_(lights),
      file_(context.files, context.workers, context.gate, context.folder.Native(dmx::kLightGroupsFile),
            [&context](const support::Error& why) {
              context.tell({Sentence::LightGroupsNotSaved, {}, {SayingOf(why)}});
            }) {}

LiveLightStation::~LiveLightStation() = default;

void LiveLightStation::StartUp() {
  const auto text =
      support::ReadWholeFile(context_.folder.Native(dmx::kLightGroupsFile), dmx::kMostGroupBytes);
  if (!text) return;
  if (auto groups = dmx::ParseLightGroups(*text)) {
    groups_ = std::move(*groups);
    return;
  }
  file_.SetAsideFirst("damaged");
  context_.tell({Sentence::LightGroupsDamaged, {std::string(dmx::kLightGroupsFile.substr(1))}});
}

void LiveLightStation::ShutDown() {
  file_.Flush();
}

void LiveLightStation::Post(std::function<void()> job) {
  context_.conductor->Post(std::move(job));
}

void LiveLightStation::KeepGroup(dmx::LightGroup group) {
  const auto same = std::find_if(groups_.begin(), groups_.end(),
                                 [&](const auto& other) { return other.name == group.name; });
  if (group.name.empty() || group.members.empty()) return;
  if (same != groups_.end())
    *same = std::move(group);
  else if (groups_.size() < dmx::kMostGroups)
    groups_.push_back(std::move(group));
  Save();
}

void LiveLightStation::DropGroup(const std::string& name) {
  std::erase_if(groups_, [&](const dmx::LightGroup& group) { return group.name == name; });
  Save();
}

void LiveLightStation::Save() {
  file_.Save([groups = groups_] { return dmx::LightGroupsText(groups); });
}

void LiveLightStation::Ask(std::vector<int> fixtures, dmx::LiveLook look) {
  Post([this, fixtures = std::move(fixtures), look = std::move(look)] {
    FollowPatch();
    for (const int fixture : fixtures) {
      if (fixture < 1 || fixture > std::ssize(fixtures_)) continue;
      const auto place = static_cast<std::size_t>(fixture - 1);
      Merge(look, fixtures_[place].hand);
      Refresh(place, Asked::Yes);
    }
  });
}

void LiveLightStation::LetGo(std::vector<int> fixtures) {
  Post([this, fixtures = std::move(fixtures)] {
    FollowPatch();
    for (const int fixture : fixtures) LetGoOf(fixture);
  });
}

void LiveLightStation::LetGoOf(int fixture) {
  if (fixture < 1 || fixture > std::ssize(fixtures_)) return;
  const dmx::DMXfilename& patched = *patch_->fixtures.Item(fixture);
  OnFixture& on = fixtures_[static_cast<std::size_t>(fixture - 1)];
  on.hand = {};
  on.taken.clear();
  for (int channel = 0; channel < dmx::ChannelCount(patched); ++channel)
    lights_.Layers().LetGo(patched.StartChannel + channel);
}

void LiveLightStation::LetAllGo() {
  Post([this] {
    for (OnFixture& on : fixtures_) {
      on.hand = {};
      on.taken.clear();
    }
    lights_.Layers().LetAllGo();
  });
}

void LiveLightStation::AllDown() {
  lights_.AllDown();  // before the thaw, which would show what lay beneath for a tick
  Post([this] {
    effects_.clear();
    for (OnFixture& on : fixtures_) {
      on.hand = {};
      on.taken.clear();
    }
    held_[static_cast<std::size_t>(LightHold::Freeze)] = false;
    lights_.Layers().SetFreeze(dmx::LightLayers::Freeze::Off);
  });
}

void LiveLightStation::Start(dmx::LightEffect effect) {
  Post([this, effect = std::move(effect)] {
    Drop(effect.fixtures, dmx::SubjectOf(effect.kind));
    if (!effect.fixtures.empty()) effects_.push_back(effect);
    lights_.Layers().RenewEffects();
  });
}

void LiveLightStation::End(std::vector<int> fixtures, dmx::EffectSubject subject) {
  Post([this, fixtures = std::move(fixtures), subject] { Drop(fixtures, subject); });
}

void LiveLightStation::Drop(const std::vector<int>& fixtures, dmx::EffectSubject subject) {
  for (dmx::LightEffect& effect : effects_) {
    if (dmx::SubjectOf(effect.kind) != subject) continue;
    std::erase_if(effect.fixtures, [&](int fixture) {
      return std::find(fixtures.begin(), fixtures.end(), fixture) != fixtures.end();
    });
  }
  std::erase_if(effects_, [](const dmx::LightEffect& effect) { return effect.fixtures.empty(); });
}

void LiveLightStation::Hold(LightHold what, bool held) {
  Post([this, what, held] {
    if (std::exchange(held_[static_cast<std::size_t>(what)], held) == held) return;
    using Stage = dmx::OutputStage;
    if (what == LightHold::Freeze)
      lights_.Layers().SetFreeze(held ? dmx::LightLayers::Freeze::On : dmx::LightLayers::Freeze::Off);
    if (what != LightHold::Blackout) return;
    lights_.Stage().SetHeldDark(held ? Stage::Blackout::On : Stage::Blackout::Off);
  });
}

void LiveLightStation::GoOn(const LiveInHand& live) {
  for (const dmx::LightEffect& effect : live.effects) Start(effect);
}

void LiveLightStation::FollowPatch() {
  if (lights_.PatchNow() != patch_) TakeOver(lights_.PatchNow());
}

void LiveLightStation::TakeOver(const std::shared_ptr<const StagePatch>& patch) {
  const auto count = patch == nullptr ? 0 : static_cast<std::size_t>(patch->fixtures.count());
  std::vector<OnFixture> kept(count);
  if (patch_ != nullptr && patch != nullptr) {
    const std::vector<int> moved = NewPositions(patch_->fixtures, patch->fixtures);
    for (std::size_t place = 0; place < moved.size(); ++place) {
      if (moved[place] == 0) {
        LetGoOf(static_cast<int>(place) + 1);
      } else {
        kept[static_cast<std::size_t>(moved[place] - 1)] = std::move(fixtures_[place]);
      }
    }
    for (dmx::LightEffect& effect : effects_) {
      for (int& fixture : effect.fixtures)
        fixture = fixture <= std::ssize(moved) ? moved[static_cast<std::size_t>(fixture - 1)] : 0;
      std::erase(effect.fixtures, 0);
    }
    std::erase_if(effects_, [](const dmx::LightEffect& effect) { return effect.fixtures.empty(); });
  }
  patch_ = patch;
  fixtures_ = std::move(kept);
}

dmx::Flashing LiveLightStation::Flashing() const {
  const bool guarded = lights_.Stage().Guard() == dmx::OutputStage::FlashGuard::On;
  return guarded ? dmx::Flashing::Guarded : dmx::Flashing::Free;
}

void LiveLightStation::RunEffects(support::TimePoint now) {
  for (OnFixture& on : fixtures_) on.effect = {};
  for (const dmx::LightEffect& effect : effects_) {
    const double rounds = dmx::RoundsAt(effect, music_, SecondsOf(now), Flashing());
    for (std::size_t place = 0; place < effect.fixtures.size(); ++place) {
      const int fixture = effect.fixtures[place];
      if (fixture < 1 || fixture > std::ssize(fixtures_)) continue;
      OnFixture& on = fixtures_[static_cast<std::size_t>(fixture - 1)];
      const auto subject = dmx::SubjectOf(effect.kind);
      const double shown = subject == dmx::EffectSubject::Movement
                               ? rounds
                               : on.gates[subject == dmx::EffectSubject::Light ? 0 : 1].Pass(
                                     rounds, SecondsOf(now), Flashing());
      Merge(dmx::LookAt(effect, place, shown, on.hand), on.effect);
    }
  }
  RefreshAll();
}

void LiveLightStation::RefreshAll() {
  Levels levels{};
  std::vector<dmx::FaderMove> moves;
  for (std::size_t place = 0; place < fixtures_.size(); ++place) {
    OnFixture& on = fixtures_[place];
    if (on.effect == dmx::LiveLook{}) continue;
    const dmx::DMXfilename& fixture = *patch_->fixtures.Item(static_cast<int>(place) + 1);
    AddMoves(moves, fixture, dmx::Share(fixture, on.hand, on.effect).effect);
  }
  Put(moves, levels);
  for (int channel = 1; channel <= dmx::kUniverseChannels; ++channel) {
    const auto at = static_cast<std::size_t>(channel - 1);
    if (levels[at] != effect_levels_[at]) lights_.Layers().SetEffect(channel, levels[at]);
  }
  effect_levels_ = levels;
  // The hand gives an effect what that needs, and takes it back where the effect has ended.
  for (std::size_t place = 0; place < fixtures_.size(); ++place) {
    OnFixture& on = fixtures_[place];
    const int changes = ChangedBy(on.effect);
    if (std::exchange(on.changed, changes) != changes) Refresh(place);
  }
}

void LiveLightStation::Refresh(std::size_t place, Asked asked) {
  OnFixture& on = fixtures_[place];
  if (on.hand == dmx::LiveLook{} && on.taken.empty()) return;
  const dmx::DMXfilename& fixture = *patch_->fixtures.Item(static_cast<int>(place) + 1);
  std::vector<dmx::FaderMove> moves;
  AddMoves(moves, fixture, dmx::Share(fixture, on.hand, on.effect).hand);
  if (asked == Asked::No && moves == on.taken) return;
  for (const dmx::FaderMove& was : on.taken) {
    const bool still = std::any_of(moves.begin(), moves.end(),
                                   [&](const auto& move) { return move.channel == was.channel; });
    if (!still) lights_.Layers().LetGo(was.channel);
  }
  for (const dmx::FaderMove& move : moves) {
    // Others may have moved the channel since, which only who asks anew takes back.
    const bool was = std::find(on.taken.begin(), on.taken.end(), move) != on.taken.end();
    if (!was || asked == Asked::Yes) lights_.Layers().TakeInHand(move.channel, move.level);
  }
  on.taken = std::move(moves);
}

std::vector<dmx::FaderMove> LiveLightStation::MovesOfHolds(support::TimePoint now) const {
  std::vector<dmx::FaderMove> moves;
  if (patch_ == nullptr || (!IsHeld(LightHold::Blinder) && !IsHeld(LightHold::Strobe))) return moves;
  const double flashes = SecondsOf(now) * dmx::MostFlashes(Flashing());
  const bool lit = flashes - std::floor(flashes) < 0.5;
  std::size_t place = 0;
  for (const dmx::DMXfilename& fixture : patch_->fixtures) {
    const OnFixture& on = fixtures_[place++];
    dmx::LiveLook look;
    look.light = 1;
    look.colour = on.hand.colour;
    if (IsHeld(LightHold::Blinder)) look.colour = dmx::MixedColour{255, 255, 255};
    const bool own = Flashing() == dmx::Flashing::Free && !dmx::StrobeMoves(fixture).empty();
    if (IsHeld(LightHold::Strobe) && !own && !lit) look.light = 0;
    AddMoves(moves, fixture, look);
    if (!IsHeld(LightHold::Strobe) || !own) continue;
    for (const dmx::FaderMove& move : dmx::StrobeMoves(fixture)) moves.push_back(move);
  }
  return moves;
}

void LiveLightStation::ShowHolds(support::TimePoint now) {
  Levels levels{};
  Put(MovesOfHolds(now), levels);
  for (int channel = 1; channel <= dmx::kUniverseChannels; ++channel) {
    const auto at = static_cast<std::size_t>(channel - 1);
    if (levels[at] != hold_levels_[at]) lights_.Layers().SetHold(channel, levels[at]);
  }
  hold_levels_ = levels;
}

LiveFixture::Owner LiveLightStation::OwnerOf(int fixture) const {
  using Owner = LiveFixture::Owner;
  const dmx::DMXfilename& patched = *patch_->fixtures.Item(fixture);
  Owner owner = lights_.ShowRuns() ? Owner::Show : Owner::Nobody;
  for (int i = 0; i < dmx::ChannelCount(patched); ++i) {
    const int channel = patched.StartChannel + i;
    if (channel < 1 || channel > dmx::kUniverseChannels) continue;
    const dmx::LightOwner who = lights_.Layers().OwnerOf(channel);
    if (who == dmx::LightOwner::Beneath) continue;
    constexpr std::array<Owner, 4> kOwners{Owner::Nobody, Owner::Effect, Owner::Hand, Owner::Hold};
    owner = std::max(owner, kOwners[static_cast<std::size_t>(who)]);
  }
  return owner;
}

double LiveLightStation::LightOf(int fixture) const {
  const dmx::LightColour colour = dmx::ColourOf(*patch_->fixtures.Item(fixture), lights_.Levels());
  return std::max({colour.red, colour.green, colour.blue}) / 255.0;
}

void LiveLightStation::Publish() {
  LiveView& view = views_.Draft();
  view.patch = patch_;
  view.fixtures.resize(fixtures_.size());
  for (std::size_t place = 0; place < fixtures_.size(); ++place) {
    const int fixture = static_cast<int>(place) + 1;
    view.fixtures[place] = {OwnerOf(fixture), LightOf(fixture), fixtures_[place].hand};
  }
  view.effects = effects_;
  view.held = held_;
  view.music = music_;
  views_.Publish();
}

void LiveLightStation::Tick(const WorkstationView& decks) {
  const support::TimePoint now = context_.clock.Now();
  FollowPatch();
  music_.reset();
  if (const auto heard = HeardBeatsOf(decks)) music_ = dmx::MusicPlace{heard->beat, heard->tempo};
  // What a show took of the effects while it ran is theirs again.
  if (std::exchange(show_ran_, lights_.ShowRuns()) && !lights_.ShowRuns()) lights_.Layers().RenewEffects();
  RunEffects(now);
  ShowHolds(now);
  Publish();
}

}  // namespace app
