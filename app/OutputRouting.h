// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "app/OutputView.h"
#include "app/settings/OutputSettings.h"
#include "app/sound/DeckStation.h"
#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "decks/ports/AudioEngine.h"
#include "decks/ports/SoundControl.h"
#include "support/Executor.h"

namespace app {

struct WorkstationView;
class NoticeBoard;

/// Which devices are open, and which output plays on which of them. Threads: the conductor.
class OutputRouting {
 public:
  OutputRouting(decks::AudioEngine& engine, decks::SoundControl& sound, support::Executor& workers,
                std::shared_ptr<WorkGate> gate, std::shared_ptr<Mailbox> box, const support::Sentences& say,
                const DeckStations& decks, NoticeBoard& notices);

  /// Releases the engine in case it was running and opens the outputs; each that fails is skipped with a
  /// sentence, which is given back. Blocks while devices open, so nothing plays yet.
  [[nodiscard]] std::vector<std::string> OpenAll(const std::array<OutputWish, kOutputs>& wishes);
  /// Update period and playback buffer, short ones, so that decks answer at once.
  void SetBuffers();
  /// Moves an output's device back to where it was before it was lost, see WorkstationView::can_return.
  void Return(int output);
  /// Moves an output (1 to 3) while music plays. A device that is not open yet is opened by a worker; the
  /// decks go on where they are until it is, and stay there when it cannot be. The newest wish for an output
  /// wins.
  void Move(int output, const OutputWish& wish);
  /// Output 2 goes where output 1 was wished to.
  void Share() { Move(2, moves_[0]); }
  void Free();

  /// Called when the engine knows a device more.
  void OnDevicesListed(std::function<void()> listed) { listed_ = std::move(listed); }
  void Tick();
  void Show(WorkstationView& view) const;

 private:
  [[nodiscard]] DeckStation& Deck(int number) { return *decks_[static_cast<std::size_t>(number - 1)]; }
  void CannotOpen(int output, const OutputWish& wish);
  [[nodiscard]] support::Saying SentenceOn(const OutputWish& wish) const;
  bool Open(const OutputWish& wish);
  void Opened(int device, bool success);
  void Route(int output, OutputView place);
  /// What was told of the output before is settled.
  void RouteAsWished(int output);
  void TellRoles();
  void TellIfForHeadphones(int output);
  void TellOf(const decks::DeviceEvent& event);
  void FollowHand(const decks::DeviceEvent& event);

  decks::AudioEngine& engine_;
  decks::SoundControl& sound_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  const support::Sentences& say_;
  const DeckStations& decks_;
  NoticeBoard& notices_;
  std::array<OutputView, kOutputs> outputs_{};
  std::array<OutputWish, kOutputs> moves_{};  ///< the newest wish for each output
  std::set<int> opening_;                     ///< devices that a worker is at
  std::set<int> open_;
  std::set<int> can_return_;  ///< devices
  std::function<void()> listed_;
};

}  // namespace app
