// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <deque>

#include "lightorgan/Outputs.h"
#include "lightorgan/ports/IoBoards.h"
#include "support/Clock.h"

namespace lightorgan {

/// Stands before the boards and lets the switched outputs flash at most four times a second, the number that
/// is taken as safe for people with photosensitive epilepsy (HSE, "Disco lights and flicker sensitive
/// epilepsy").
///
/// Law: darkness always passes at once. An output goes on at most four times within any second, and so do
/// more than a fifth of all outputs in one moment, be it in one call or in many; what has to wait goes on as
/// soon as it may, if it is still wanted then. With the guard lifted every call passes as it came. Analogue
/// outputs pass. Threads: the conductor.
class FlashGuard final : public IoBoards {
 public:
  static constexpr int kMostFlashes = 4;

  FlashGuard(IoBoards& boards, const support::Clock& clock) : boards_(boards), clock_(clock) {}

  void Lift(bool lifted);
  [[nodiscard]] bool Lifted() const { return lifted_; }
  /// How many outputs there are together.
  void SetSize(IoBoardSize size) { outputs_ = OutputsOf(size); }
  /// Lets go on what had to wait.
  void Tick();
  /// An output waits now.
  [[nodiscard]] bool Holding() const { return (wanted_ & ~lit_).any(); }

  void OpenDevice(std::function<void(std::int32_t)> done) override { boards_.OpenDevice(std::move(done)); }
  void CloseDevices() override;
  void SetDigitalChannel(int board, int channel) override;
  void ClearDigitalChannel(int board, int channel) override;
  void OutputAllDigital(int board, std::uint8_t channels) override;
  void OutputAnalogChannel(int board, int channel, std::int32_t value) override {
    boards_.OutputAnalogChannel(board, channel, value);
  }
  void ClearAllDigital(int board) override;
  void ClearAllAnalog(int board) override { boards_.ClearAllAnalog(board); }
  [[nodiscard]] support::Error Trouble() override { return boards_.Trouble(); }

 private:
  using Outputs = std::bitset<kMostOutputs>;
  using Rises = std::deque<support::TimePoint>;

  /// Of those that want to rise now.
  [[nodiscard]] Outputs Allowed(Outputs rising);
  void Rose(Outputs rising);
  /// What rises makes a flash of the moment.
  [[nodiscard]] bool Flash(Outputs moment, Outputs rising) const;
  /// What rose just now, in calls before.
  [[nodiscard]] Outputs Moment(support::TimePoint now) const;
  [[nodiscard]] static bool MayRise(Rises& rises, support::TimePoint now);

  IoBoards& boards_;
  const support::Clock& clock_;
  bool lifted_ = false;
  int outputs_ = kMostOutputs;
  Outputs wanted_;
  Outputs lit_;
  std::array<Rises, kMostOutputs> each_;
  Rises together_;
  Outputs moment_;
  support::TimePoint moment_began_{};
};

}  // namespace lightorgan
