// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/work/TextKeeper.h"
#include "dmx/LightEffects.h"
#include "dmx/LightGroups.h"
#include "dmx/LightLayers.h"
#include "dmx/LiveLook.h"
#include "support/Clock.h"
#include "support/TripleBuffer.h"

namespace app {

class LightStation;
struct StagePatch;
struct StationContext;
struct WorkstationView;

/// What lasts as long as it is held.
enum class LightHold : std::uint8_t { Blackout, Blinder, Strobe, Freeze };
inline constexpr std::size_t kLightHolds = 4;

/// A fixture on the live console.
struct LiveFixture {
  enum class Owner : std::uint8_t { Nobody, Show, Effect, Hand, Hold };
  Owner owner = Owner::Nobody;  ///< the highest one of its channels
  double light = 0;             ///< 0 to 1, of the lamp as it stands before master and guards
  dmx::LiveLook hand;           ///< what was asked for by hand
};

/// What the live console draws; a snapshot of one tick.
struct LiveView {
  std::shared_ptr<const StagePatch> patch;  ///< null: nothing is patched
  std::vector<LiveFixture> fixtures;        ///< in the order of the patch
  std::vector<dmx::LightEffect> effects;    ///< those that run
  std::array<bool, kLightHolds> held{};
  std::optional<dmx::MusicPlace> music;  ///< none: effects go by the clock
};

/// What the live console holds, to go on with it in another run of the program.
struct LiveInHand {
  std::vector<dmx::LightEffect> effects;
  bool operator==(const LiveInHand&) const = default;
};

/// Lamps that are steered by hand, fixture by fixture and not channel by channel, and effects that follow the
/// music.
///
/// Law: an effect is where the place in the music says, so that a loop, a seek or another tempo needs no word
/// to it. Fixtures are told by their positions in the patch; when that changes, each keeps what it had.
/// Threads: StartUp, View, groups and commands on the window's; Tick and InHand on the conductor; ShutDown
/// once the conductor has stopped.
class LiveLightStation {
 public:
  LiveLightStation(const StationContext& context, LightStation& lights);
  ~LiveLightStation();

  void StartUp();
  /// Before the light station's. decks: of the same tick.
  void Tick(const WorkstationView& decks);
  void ShutDown();
  [[nodiscard]] LiveInHand InHand() const { return {effects_}; }
  void GoOn(const LiveInHand& live);

  [[nodiscard]] const LiveView& View() { return views_.Read(); }

  /// Takes in hand what the look names; what it leaves out stays.
  void Ask(std::vector<int> fixtures, dmx::LiveLook look);
  /// The hand gives these fixtures back to what goes on below, and raw faders of theirs too.
  void LetGo(std::vector<int> fixtures);
  void LetAllGo();
  /// All faders to 0, and nobody moves them any more: no hand, effect or freeze.
  void AllDown();
  /// Takes the place of those that change the same on these fixtures.
  void Start(dmx::LightEffect effect);
  /// On these fixtures; the others go on.
  void End(std::vector<int> fixtures, dmx::EffectSubject subject);
  void Hold(LightHold what, bool held);

  /// Saved groups, in order. All changes are written at once.
  [[nodiscard]] const std::vector<dmx::LightGroup>& Groups() const { return groups_; }
  /// One of that name is replaced.
  void KeepGroup(dmx::LightGroup group);
  void DropGroup(const std::string& name);

 private:
  using Levels = std::array<std::optional<dmx::DmxLevel>, dmx::kUniverseChannels>;
  struct OnFixture {
    dmx::LiveLook hand;
    dmx::LiveLook effect;                   ///< of this tick
    int changed = 0;                        ///< what an effect changes of it
    std::vector<dmx::FaderMove> taken;      ///< channels that the look keeps in hand
    std::array<dmx::FlashGate, 2> gates{};  ///< of what changes light, and colour
  };

  void Post(std::function<void()> job);
  void Save();
  // The conductor's.
  void FollowPatch();
  void TakeOver(const std::shared_ptr<const StagePatch>& patch);
  void RunEffects(support::TimePoint now);
  enum class Asked { No, Yes };
  void Refresh(std::size_t place, Asked asked = Asked::No);
  void RefreshAll();
  void ShowHolds(support::TimePoint now);
  [[nodiscard]] std::vector<dmx::FaderMove> MovesOfHolds(support::TimePoint now) const;
  void LetGoOf(int fixture);
  void Drop(const std::vector<int>& fixtures, dmx::EffectSubject subject);
  [[nodiscard]] bool IsHeld(LightHold what) const { return held_[static_cast<std::size_t>(what)]; }
  [[nodiscard]] dmx::Flashing Flashing() const;
  [[nodiscard]] LiveFixture::Owner OwnerOf(int fixture) const;
  [[nodiscard]] double LightOf(int fixture) const;
  void Publish();

  const StationContext& context_;
  LightStation& lights_;
  TextKeeper file_;                      // the window's
  std::vector<dmx::LightGroup> groups_;  // the window's

  std::shared_ptr<const StagePatch> patch_;
  std::vector<OnFixture> fixtures_;
  std::vector<dmx::LightEffect> effects_;
  std::array<bool, kLightHolds> held_{};
  bool show_ran_ = false;
  std::optional<dmx::MusicPlace> music_;
  Levels effect_levels_{};
  Levels hold_levels_{};
  support::TripleBuffer<LiveView> views_;
};

}  // namespace app
