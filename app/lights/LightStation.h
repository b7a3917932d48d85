// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "dmx/FaderMoves.h"
#include "dmx/OutputStage.h"
#include "dmx/Patch.h"
#include "dmx/ShowPlayer.h"
#include "dmx/dmx_output.h"
#include "dmx/ports/DmxInterface.h"
#include "support/Result.h"
#include "support/TripleBuffer.h"

namespace dmx {
class NetOutput;
struct NetWish;
class LightLayers;
}  // namespace dmx

namespace app {

struct StagePatch;
struct ShowReport;
struct StagedShow;
struct StationContext;
struct WorkstationView;

/// The show player of the main window, as it stands in one tick.
struct ShowView {
  std::shared_ptr<const StagedShow> show;  ///< what plays, or will at Play; null: none was opened
  std::shared_ptr<const StagedShow> next;  ///< takes its place at Play, or as soon as it has ended
  dmx::ShowPlayer::State state = dmx::ShowPlayer::State::Stopped;
  dmx::ShowTime position{0};
  dmx::ShowPlan::Place place;
  dmx::ShowPlayer::Repeat repeat = dmx::ShowPlayer::Repeat::Once;
};

/// What the window draws of the lights; a snapshot of one tick.
struct LightView {
  std::array<dmx::DmxLevel, dmx::kUniverseChannels> levels{};       ///< of the faders
  std::array<dmx::DmxLevel, dmx::kUniverseChannels> on_the_wire{};  ///< behind master, blackout and guard
  std::shared_ptr<const StagePatch> patch;                          ///< null: nothing is patched
  dmx::DmxInterfaceStatus status;
  std::string trouble;  ///< of the interface, a sentence in the language chosen; may be empty
  bool has_interface = false;
  bool output_on = false;
  int grand_master = dmx::OutputStage::kFullMaster;
  bool blackout = false;
  bool flash_guard = true;
  ShowView show;
};

/// How the lamps stand and what moves them, to go on with it in another run of the program.
struct LightsInHand {
  int grand_master = dmx::OutputStage::kFullMaster;
  bool blackout = false;
  std::array<dmx::DmxLevel, dmx::kUniverseChannels> levels{};  ///< beneath hands and effects
  std::vector<dmx::FaderMove> hands;                           ///< channels that a hand keeps
  std::filesystem::path show;  ///< empty: none, or one that was never in a file
  dmx::ShowPlayer::State state = dmx::ShowPlayer::State::Stopped;
  dmx::ShowTime position{0};
  dmx::ShowPlayer::Repeat repeat = dmx::ShowPlayer::Repeat::Once;
  bool operator==(const LightsInHand&) const = default;
};

/// Stage lighting in the running program: universe, output, show player.
///
/// Law: what the window hands over is kept until nobody else holds it, so that the conductor never frees a
/// show. Threads: StartUp, View and commands on the window's; Tick on the conductor, also before StartUp;
/// ShutDown once the conductor has stopped.
class LightStation {
 public:
  /// wire: null where there is no interface. net: the part of it that goes over a network; null where none
  /// does.
  LightStation(const StationContext& context, dmx::DmxInterface* wire, dmx::NetOutput* net = nullptr);
  ~LightStation();

  void StartUp();
  /// decks: of the same tick.
  void Tick(const WorkstationView& decks);
  void ShutDown();
  /// The conductor's.
  [[nodiscard]] LightsInHand InHand() const;

  [[nodiscard]] const LightView& View();

  // Output. The switch is stored ("Setup"/"UseK8062").
  enum class Output { Off, On };
  void TurnOutput(Output output);
  /// 0 to dmx::OutputStage::kFullMaster.
  void SetGrandMaster(int master);
  void SetBlackout(dmx::OutputStage::Blackout blackout);
  /// On at every start of the program.
  void SetFlashGuard(dmx::OutputStage::FlashGuard guard);
  /// Over a network; stored. Requires: HasNet().
  void ChooseNet(const dmx::NetWish& wish);
  [[nodiscard]] bool HasNet() const { return net_ != nullptr; }
  [[nodiscard]] dmx::NetWish Net() const;
  /// What the editors ask of the interface when they open, whatever the switch says.
  void ShowEditorLoaded();
  void FixtureEditorLoaded();

  // Faders. Wherever one is moved from, this is its way to the lamp.
  /// Where a hand keeps the channel the hand's level moves, else what lies beneath.
  void MoveFader(int channel, dmx::DmxLevel level);
  void MoveFaders(std::vector<dmx::FaderMove> moves);
  /// By a hand that keeps the channels until it lets go of them.
  void TakeInHand(std::vector<dmx::FaderMove> moves);
  /// No hand keeps a channel, and all faders of the show and the editors are at the bottom.
  void AllDown();

  // Shows.
  /// Where they lie.
  [[nodiscard]] std::filesystem::path ShowFolder() const;
  /// A worker looks; called back on the window's thread with the show files there, by name.
  using ShowsListed = std::function<void(const std::vector<std::filesystem::path>&)>;
  void ListShows(ShowsListed done);
  using ShowOpened = std::function<void(const support::Result<ShowReport>&)>;
  /// A worker reads it, and the next start of the program does so again; called back on the window's thread.
  /// Of several that are being opened the newest is taken; while a show plays it becomes ShowView::next.
  void OpenShow(const std::filesystem::path& path, ShowOpened done);
  /// The same for a show that is in memory.
  void TakeShow(std::shared_ptr<const StagedShow> show);
  /// The same for a plan and what it is patched to.
  void TakePlan(std::shared_ptr<const dmx::ShowPlan> plan, const dmx::DMXname& fixtures, std::string name,
                std::vector<std::string> scenes = {});
  /// Names and rules of the channels while a show is built. A show that plays keeps its own until it stops.
  void TakePatch(const dmx::DMXname& fixtures);
  /// From its start.
  void PlayShow();
  void PauseShow();
  void ResumeShow();
  /// The faders stay where they are.
  void StopShow();
  void SeekShow(dmx::ShowTime position);
  void RepeatShow(dmx::ShowPlayer::Repeat repeat);
  /// As it was in another run of the program. Whoever opens, plays or stops a show before it is read has it.
  void GoOn(const LightsInHand& lights);

  // The conductor's.
  [[nodiscard]] dmx::LightLayers& Layers() { return *layers_; }
  [[nodiscard]] dmx::OutputStage& Stage() { return output_; }
  /// Null: nothing is patched.
  [[nodiscard]] const std::shared_ptr<const StagePatch>& PatchNow() const { return patch_; }
  /// Of the faders.
  [[nodiscard]] const std::array<dmx::DmxLevel, dmx::kUniverseChannels>& Levels() const {
    return universe_.Levels();
  }
  [[nodiscard]] bool ShowRuns() const { return player_.Now() != dmx::ShowPlayer::State::Stopped; }

 private:
  using Job = std::function<void()>;

  void Post(Job job);
  /// Keeps it here for as long as the conductor or a view has it.
  void Keep(std::shared_ptr<const void> given);
  void DropUnused();

  // The conductor's.
  void Move(const dmx::FaderMove& move);
  void StageShow(std::shared_ptr<const StagedShow> show);
  void StagePatchNow(std::shared_ptr<const StagePatch> patch);
  void TakeWhatWaits();
  void FillShow(ShowView& view) const;

  const StationContext& context_;
  dmx::FixtureLibrary library_;
  std::vector<std::shared_ptr<const void>> given_;  // the window's
  int newest_opening_ = 0;                          // the window's
  int show_commands_ = 0;                           // the window's

  dmx::NetOutput* const net_;
  std::unique_ptr<dmx::DmxInterface> nothing_;  ///< in place of an interface
  dmx::OutputStage output_;
  dmx::Universe universe_;
  std::unique_ptr<dmx::LightLayers> layers_;
  dmx::OutputSwitch switch_;
  dmx::ShowPlayer player_;
  dmx::ShowPlayer::Repeat repeat_ = dmx::ShowPlayer::Repeat::Once;
  std::shared_ptr<const StagedShow> show_;
  std::shared_ptr<const StagedShow> next_;
  std::shared_ptr<const StagePatch> patch_;
  std::shared_ptr<const StagePatch> next_patch_;
  support::TripleBuffer<LightView> views_;
};

}  // namespace app
