// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "lightorgan/Bands.h"
#include "lightorgan/BoardOutput.h"
#include "lightorgan/FlashGuard.h"
#include "lightorgan/Modes.h"
#include "lightorgan/OnsetDetector.h"
#include "lightorgan/PatternBank.h"
#include "lightorgan/Snapshot.h"
#include "lightorgan/Speed.h"
#include "lightorgan/ports/BankSource.h"
#include "lightorgan/ports/IoBoards.h"
#include "lightorgan/ports/Music.h"
#include "support/Clock.h"
#include "support/Settings.h"

namespace lightorgan {

/// The outside of the light organ.
struct LightOrganPorts {
  IoBoards& boards;
  SpectrumSource& spectrum;
  BeatSource& beats;
  BankSource& banks;
  support::Settings& settings;
  const support::Clock& clock;
};

/// What one side of the light organ shows; element i - 1 is output i.
struct SideView {
  std::array<int, kMostOutputs> sliders{};  ///< `IOScroller` 0 to 100, `DacScroller` 0 to 255
  std::array<float, kMostOutputs> bands{};  ///< 0 to 1, in the modes that follow the spectrum
  int speed = 0;                            ///< `ScrollerIO`, `ScrollerDAC`
  int bank = 1;                             ///< `ScrollerPatternIO`, `ScrollerPatternDAC`
  int row = 0;                              ///< of the bank, 0 before the first
  /// The bank as it is played; null before one was read. Shared, because the window draws from it while
  /// another one is read; it never changes.
  std::shared_ptr<const StepTable> table;
};
/// What the beat mode follows now.
enum class BeatFrom { Nothing, Grid, Sound };
struct LightOrganView {
  IoBoardSize size = IoBoardSize::One;
  IoMode io_mode = IoMode::Constant;
  DacMode dac_mode = DacMode::Constant;
  std::array<bool, kMostOutputs> leds{};     ///< `Led`: what the switched outputs are told
  std::array<int, kMostOutputs> values{};    ///< what the analogue outputs are told
  std::array<bool, kMostOutputs> buttons{};  ///< `btnOn`
  SideView io;
  SideView dac;
  bool boards_in_use = false;
  bool guard_lifted = false;
  bool guard_holds = false;  ///< the flash guard keeps an output dark now
  BeatFrom beat_from = BeatFrom::Nothing;
  std::string trouble;     ///< a sentence about the boards, or empty
  support::Saying saying;  ///< the same in the language chosen
};

/// The light organ: switched and analogue outputs that follow the music, each side in one of its modes.
///
/// It runs and shows its lamps with no board connected. What the user moves is stored at once. Outputs count
/// from 1; values out of range are taken as the nearest. Threads: the conductor.
class LightOrgan {
 public:
  explicit LightOrgan(const LightOrganPorts& ports);

  /// Reads the settings and presses the two stored buttons; opens the boards when they were in use.
  /// no_board: called when boards were wanted and none could be opened.
  void Start(std::function<void()> no_board);
  /// The lamps end dark.
  void ShutDown();
  /// Every 10 ms.
  void Tick();

  /// Presses a mode button, 0 to 8.
  void cmdK8000(int index);
  void IOScroller(int output, int level);
  void DacScroller(int output, int value);
  /// Turns an output over; its lamp follows in constant mode.
  void btnOn(int output);
  void ScrollerIO(int speed);
  void ScrollerDAC(int speed);
  void ScrollerPatternIO(int bank);
  void ScrollerPatternDAC(int bank);
  void SetIoBoardSize(IoBoardSize size);
  void SwitchBoards(bool on);
  void LiftGuard(bool lifted);
  /// Reads the selected banks again, for a file that was edited.
  void ReloadBanks();
  /// Plays this in the place of the selected bank until a bank is selected or read again.
  void TryBank(Side side, std::shared_ptr<const StepTable> table);

  /// Of the state as it is now, for the file and the list of memories.
  [[nodiscard]] Snapshot Remember() const;
  void Recall(const Snapshot& snapshot);

  [[nodiscard]] const LightOrganView& View();

 private:
  void tmrPPio_ThatTime();
  void tmrDACpp_ThatTime();
  void tmrSpectrum_ThatTime(Side side);
  void tmrBeat_ThatTime();

  void ReadSettings();
  void SetIoMode(IoMode mode);
  void SetDacMode(DacMode mode);
  void Store(std::string_view section, std::string_view key, int value);
  /// One that stands there already, or by default, is not written.
  void StoreMode(std::string_view side, std::string_view word);
  [[nodiscard]] int Stored(std::string_view section, std::string_view key) const;
  void OpenBoards();
  void LoadBankOf(Side side, int number);
  void Light(int output, bool on);
  void Dim(int output, int value);
  void LightAll(bool on);
  void FollowIoBands(std::chrono::microseconds elapsed);
  void FollowBeats();
  [[nodiscard]] bool BeatHeard();
  [[nodiscard]] int Outputs() const { return OutputsOf(view_.size); }
  std::chrono::microseconds SinceLast(support::TimePoint& last) const;

  struct Pattern {
    std::shared_ptr<const StepTable> table;
    [[nodiscard]] int Rows() const { return table == nullptr ? 0 : table->Rows(); }
    int row = 0;
    int wish = 0;  ///< counts the banks asked for; the newest wins
  };
  /// What follows the spectrum on one side.
  struct Followed {
    BandFollower mixed{kBoardChannels}, left{kBoardChannels}, right{kBoardChannels};
    support::TimePoint last{};
  };
  [[nodiscard]] std::array<float, kMostOutputs> Levels(Followed& followed, bool stereo,
                                                       std::chrono::microseconds elapsed);

  LightOrganPorts ports_;
  FlashGuard guard_;
  BoardOutput boards_;
  std::function<void()> no_board_;
  LightOrganView view_;
  Pattern io_pattern_, dac_pattern_;
  Followed io_followed_, dac_followed_;
  std::array<LevelSwitch, kMostOutputs> switches_{};
  OnsetDetector onsets_;
  support::TimePoint last_onset_{};
  std::optional<HeardBeat> beat_;
  bool beat_flag_ = true;  ///< clear while the outputs are lit by the last beat
  IntervalTimer io_timer_, dac_timer_, beat_timer_;
  std::shared_ptr<int> alive_ = std::make_shared<int>();  // shared with banks that are still being read
};

}  // namespace lightorgan
