// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "dmx/EditHistory.h"
#include "dmx/Patch.h"
#include "dmx/ShowPlan.h"
#include "dmx/ShowRecords.h"
#include "dmx/ShowTime.h"
#include "dmx/show.h"
#include "support/Result.h"

namespace dmx {

[[nodiscard]] std::size_t Weight(const Show& show);

/// A show while it is made; every change is a step that can be taken back.
///
/// Law: each step has a record for each channel of Channels(), and what records tell of the step before is
/// true in every scene that was changed. Scenes and steps are numbered from 1; what is not there is not
/// changed. Threads: one at a time.
class ShowEdit {
 public:
  [[nodiscard]] const Show& Now() const { return history_.Now(); }
  [[nodiscard]] const EditHistory<Show>& History() const { return history_; }
  /// Who holds which channel, fixtures without a file included.
  [[nodiscard]] const Patch& Patched() const { return patch_; }
  /// What the records of the steps stand for; 0: their level is kept, and sent nowhere.
  [[nodiscard]] const std::vector<int>& Channels() const { return channels_; }
  /// Null where there is no such step.
  [[nodiscard]] const SceneStep* Step(int scene, int step) const;

  /// A show that is saved as it stands.
  void Begin(Show show);
  void Undo();
  void Redo();
  void Settle() { history_.Settle(); }
  void MarkSaved(std::uint64_t stamp) { history_.MarkSaved(stamp); }
  /// From now on the show differs from what is saved, though nobody changed it.
  void MarkUnsaved() { history_.MarkSaved(0); }

  // Fixtures, by their position from 1. Refusals are said as the patch says them, and change nothing.
  support::Result<void> AddFixture(DMXfilename fixture);
  support::Result<void> MoveFixture(int position, int start);
  /// Its channels' levels go with it.
  void RemoveFixture(int position);
  /// Another file for a fixture, whose own is missing; of it, Filename and what was read count. Records that
  /// tell how many channels it had go on doing so until it is repaired.
  support::Result<void> ReplaceFixture(int position, DMXfilename file);
  /// The show has levels for another number of its channels than its file describes.
  [[nodiscard]] bool NeedsRepair(int position) const;
  /// From now on the show has as many channels of it as its file: further ones are dark in every step, and
  /// the levels of those that the file has no longer are gone.
  void RepairFixture(int position);
  // Those that were set aside are numbered from 1.
  /// Back into the show, with its levels.
  support::Result<void> BringBack(int aside, int start);
  /// Its levels are gone.
  void DropAside(int aside);

  // Scenes. Those that make one return where it stands.
  /// Behind another one, with the levels as its first step.
  int AddScene(int behind, std::string name, ConstUniverseLevels levels);
  int CopyScene(int scene, std::string name);
  void RemoveScene(int scene);
  void MoveScene(int from, int to);
  void RenameScene(int scene, std::string name);
  void SetLoops(int scene, int loops);

  // Steps.
  int AddStep(int scene, int behind, ConstUniverseLevels levels);
  void RecordStep(int scene, int step, ConstUniverseLevels levels);
  int CopyStep(int scene, int step);
  void RemoveSteps(int scene, const std::vector<int>& steps);
  void MoveStep(int scene, int from, int to);
  void SetFade(int scene, const std::vector<int>& steps, Tenths time);
  void SetWait(int scene, const std::vector<int>& steps, Tenths time);

  [[nodiscard]] support::Result<ShowPlan> Plan() const { return ShowPlan::Make(Now().scenes, channels_); }
  /// When the step is first played, since the start of the show.
  [[nodiscard]] ShowTime StartOf(int scene, int step) const;

 private:
  void Take(Show next, std::string_view thing = {});
  /// How a fixture of now is numbered after a change; 0: it is gone.
  using Renumber = std::function<int(int)>;
  /// The show with other fixtures, its records moved along.
  support::Result<void> TakeFixtures(Show next, const Renumber& renumber);
  void ChangeScene(int scene, std::string_view thing, const std::function<void(Scene&)>& change);
  void SetTime(int scene, const std::vector<int>& steps, Tenths time, std::string SceneStep::*which);
  [[nodiscard]] SceneStep NewStep(const Scene& scene, int behind, ConstUniverseLevels levels) const;
  void Lay();

  EditHistory<Show> history_;
  Patch patch_;
  RecordOrder order_ = RecordOrder::Patched;
  std::vector<RecordPlace> places_;
  std::vector<int> channels_;
};

}  // namespace dmx
