// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/LightOrgan.h"

#include <algorithm>
#include <string>

#include "support/Text.h"

namespace lightorgan {
namespace {

constexpr int kHighestLevel = 100;
constexpr int kHighestValue = 255;
constexpr std::chrono::milliseconds kFlash{100};
// Half of the conductor's interval: a beat is met at most so much too early or too late.
constexpr std::chrono::microseconds kAhead{5'000};

std::size_t At(int output) {
  return static_cast<std::size_t>(output - 1);
}

std::string_view BankSection(Side side) {
  return side == Side::Io ? "Banks" : "BanksDAC";
}

}  // namespace

LightOrgan::LightOrgan(const LightOrganPorts& ports)
    : ports_(ports), guard_(ports.boards, ports.clock), boards_(guard_, ports.settings) {}

void LightOrgan::Store(std::string_view section, std::string_view key, int value) {
  ports_.settings.SetNumber(section, key, value);
}

void LightOrgan::StoreMode(std::string_view side, std::string_view word) {
  if (ports_.settings.Text("Effects", side) == word) return;
  ports_.settings.SetText("Effects", side, word);
}

int LightOrgan::Stored(std::string_view section, std::string_view key) const {
  return ports_.settings.Number(section, key, 0, 1'000'000);
}

void LightOrgan::Start(std::function<void()> no_board) {
  no_board_ = std::move(no_board);
  ReadSettings();
  if (ports_.settings.Flag("Setup", "UseK8000")) OpenBoards();
  cmdK8000(static_cast<int>(IoModeOf(ports_.settings.Text("Effects", "IO"))));
  cmdK8000(static_cast<int>(DacModeOf(ports_.settings.Text("Effects", "DAC"))));
}

void LightOrgan::ReadSettings() {
  view_.size = IoBoardSizeOf(ports_.settings.Text("Setup", "IoBoardSize"));
  guard_.SetSize(view_.size);
  for (int output = 1; output <= kMostOutputs; ++output) {
    const std::string key = std::to_string(output);
    view_.io.sliders[At(output)] = std::min(Stored("IOLO", key), kHighestLevel);
    view_.buttons[At(output)] = Stored("CONSTANTIO", key) != 0;
  }
}

void LightOrgan::ShutDown() {
  io_timer_.Stop();
  dac_timer_.Stop();
  beat_timer_.Stop();
  boards_.ShutDown(view_.size);
}

void LightOrgan::Tick() {
  const support::TimePoint now = ports_.clock.Now();
  if (view_.io_mode == IoMode::Beat) FollowBeats();
  if (beat_timer_.Due(now)) tmrBeat_ThatTime();
  if (io_timer_.Due(now)) {
    if (view_.io_mode == IoMode::Pp) tmrPPio_ThatTime();
    if (FollowsSpectrum(view_.io_mode)) tmrSpectrum_ThatTime(Side::Io);
  }
  if (dac_timer_.Due(now)) {
    if (view_.dac_mode == DacMode::Pp) tmrDACpp_ThatTime();
    if (view_.dac_mode == DacMode::Lo) tmrSpectrum_ThatTime(Side::Dac);
  }
  guard_.Tick();
}

void LightOrgan::cmdK8000(int index) {
  if (index < 0 || index >= kModeButtons) return;
  if (index >= static_cast<int>(DacMode::Lo)) return SetDacMode(static_cast<DacMode>(index));
  SetIoMode(static_cast<IoMode>(index));
}

void LightOrgan::SetIoMode(IoMode mode) {
  view_.io_mode = mode;
  StoreMode("IO", StoredWord(mode));
  io_timer_.Stop();
  beat_timer_.Stop();
  view_.io.bands = {};
  const support::TimePoint now = ports_.clock.Now();
  io_followed_.last = now;
  if (const auto section = SpeedSection(mode); !section.empty()) {
    view_.io.speed = std::min(Stored(section, "Timer"), kFastest);
    io_timer_.Start(now, IntervalOf(view_.io.speed));
  }
  if (mode == IoMode::Pp) ScrollerPatternIO(Stored("Banks", "CurrentBank"));
  if (mode == IoMode::Constant) {
    for (int output = 1; output <= Outputs(); ++output) Light(output, view_.buttons[At(output)]);
  }
  if (mode == IoMode::Beat) {
    beat_.reset();
    beat_flag_ = false;  // so that what is lit goes dark
    tmrBeat_ThatTime();
  }
}

void LightOrgan::SetDacMode(DacMode mode) {
  view_.dac_mode = mode;
  StoreMode("DAC", StoredWord(mode));
  dac_timer_.Stop();
  view_.dac.bands = {};
  const support::TimePoint now = ports_.clock.Now();
  dac_followed_.last = now;
  if (const auto section = SpeedSection(mode); !section.empty()) {
    view_.dac.speed = std::min(Stored(section, "Timer"), kFastest);
    dac_timer_.Start(now, IntervalOf(view_.dac.speed));
  }
  const bool constant = mode == DacMode::Constant;
  for (int output = 1; output <= kMostOutputs; ++output) {
    const int value =
        constant ? Stored("CONSTANTDAC", std::to_string(output)) : Stored("DACLO", std::to_string(output));
    view_.dac.sliders[At(output)] = std::min(value, kHighestValue);
    if (constant && output <= Outputs()) Dim(output, view_.dac.sliders[At(output)]);
  }
  if (mode == DacMode::Pp) ScrollerPatternDAC(Stored("BanksDAC", "CurrentBank"));
}

void LightOrgan::IOScroller(int output, int level) {
  if (output < 1 || output > kMostOutputs) return;
  view_.io.sliders[At(output)] = std::clamp(level, 0, kHighestLevel);
  Store("IOLO", std::to_string(output), view_.io.sliders[At(output)]);
}

void LightOrgan::DacScroller(int output, int value) {
  if (output < 1 || output > kMostOutputs) return;
  view_.dac.sliders[At(output)] = std::clamp(value, 0, kHighestValue);
  const bool constant = view_.dac_mode == DacMode::Constant;
  Store(constant ? "CONSTANTDAC" : "DACLO", std::to_string(output), view_.dac.sliders[At(output)]);
  if (constant && output <= Outputs()) Dim(output, view_.dac.sliders[At(output)]);
}

void LightOrgan::btnOn(int output) {
  if (output < 1 || output > Outputs()) return;
  bool& on = view_.buttons[At(output)];
  on = !on;
  Store("CONSTANTIO", std::to_string(output), on ? 1 : 0);
  if (view_.io_mode == IoMode::Constant) Light(output, on);
}

void LightOrgan::ScrollerIO(int speed) {
  view_.io.speed = std::clamp(speed, kSlowest, kFastest);
  io_timer_.SetInterval(ports_.clock.Now(), IntervalOf(view_.io.speed));
  const auto section = SpeedSection(view_.io_mode);
  if (!section.empty()) Store(section, "Timer", view_.io.speed);
}

void LightOrgan::ScrollerDAC(int speed) {
  view_.dac.speed = std::clamp(speed, kSlowest, kFastest);
  dac_timer_.SetInterval(ports_.clock.Now(), IntervalOf(view_.dac.speed));
  const auto section = SpeedSection(view_.dac_mode);
  if (!section.empty()) Store(section, "Timer", view_.dac.speed);
}

void LightOrgan::ScrollerPatternIO(int bank) {
  LoadBankOf(Side::Io, bank);
}

void LightOrgan::ScrollerPatternDAC(int bank) {
  LoadBankOf(Side::Dac, bank);
}

void LightOrgan::LoadBankOf(Side side, int number) {
  Pattern& pattern = side == Side::Io ? io_pattern_ : dac_pattern_;
  (side == Side::Io ? view_.io : view_.dac).bank = number;
  Store(BankSection(side), "CurrentBank", number);
  Store(BankSection(side), "CurrentProgram", number);
  const int wish = ++pattern.wish;
  std::weak_ptr<int> alive = alive_;
  ports_.banks.Load(side, view_.size, number, [alive, &pattern, wish](StepTable table) {
    if (alive.expired() || pattern.wish != wish) return;
    pattern.table = std::make_shared<const StepTable>(std::move(table));
    pattern.row = 0;
  });
}

void LightOrgan::ReloadBanks() {
  if (view_.io_mode == IoMode::Pp) LoadBankOf(Side::Io, view_.io.bank);
  if (view_.dac_mode == DacMode::Pp) LoadBankOf(Side::Dac, view_.dac.bank);
}

void LightOrgan::TryBank(Side side, std::shared_ptr<const StepTable> table) {
  Pattern& pattern = side == Side::Io ? io_pattern_ : dac_pattern_;
  ++pattern.wish;
  pattern.table = std::move(table);
  if (pattern.row > pattern.Rows()) pattern.row = 0;
}

void LightOrgan::SetIoBoardSize(IoBoardSize size) {
  if (size == view_.size) return;
  ports_.settings.SetText("Setup", "IoBoardSize", size == IoBoardSize::Two ? "32" : "16");
  for (int output = OutputsOf(size) + 1; output <= Outputs(); ++output) {
    Light(output, false);
    Dim(output, 0);
  }
  view_.size = size;
  guard_.SetSize(size);
  SetIoMode(view_.io_mode);
  SetDacMode(view_.dac_mode);
}

void LightOrgan::SwitchBoards(bool on) {
  if (!on) return boards_.SwitchOff();
  OpenBoards();
  // What was moved without them.
  for (int output = 1; output <= Outputs(); ++output) {
    boards_.Switch(output, view_.leds[At(output)]);
    boards_.Dim(output, view_.values[At(output)]);
  }
}

void LightOrgan::OpenBoards() {
  boards_.SwitchOn([this] {
    if (no_board_) no_board_();
  });
}

void LightOrgan::LiftGuard(bool lifted) {
  guard_.Lift(lifted);
}

void LightOrgan::Light(int output, bool on) {
  view_.leds[At(output)] = on;
  boards_.Switch(output, on);
}

void LightOrgan::Dim(int output, int value) {
  view_.values[At(output)] = value;
  boards_.Dim(output, value);
}

void LightOrgan::LightAll(bool on) {
  std::fill_n(view_.leds.begin(), Outputs(), on);
  if (view_.size == IoBoardSize::One) return boards_.SwitchBoard(0, on ? 0xFF : 0);
  for (int output = 1; output <= Outputs(); ++output) boards_.Switch(output, on);
}

void LightOrgan::tmrPPio_ThatTime() {
  if (io_pattern_.Rows() == 0) {
    view_.leds = {};
    for (int board = 0; board < BoardsOf(view_.size); ++board) boards_.ClearBoard(board);
    return;
  }
  const StepTable& table = *io_pattern_.table;
  io_pattern_.row = NextRow(Side::Io, io_pattern_.row, table.Rows());
  for (int board = 0; board < BoardsOf(view_.size); ++board) {
    boards_.SwitchBoard(board, PatternByte(table, io_pattern_.row, board));
  }
  for (int output = 1; output <= Outputs(); ++output) {
    view_.leds[At(output)] = table.At(io_pattern_.row, output) == 1;
  }
}

void LightOrgan::tmrDACpp_ThatTime() {
  if (dac_pattern_.Rows() == 0) {
    for (int output = 1; output <= Outputs(); ++output) {
      if (view_.values[At(output)] != 0) Dim(output, 0);
    }
    return;
  }
  const StepTable& table = *dac_pattern_.table;
  dac_pattern_.row = NextRow(Side::Dac, dac_pattern_.row, table.Rows());
  for (int output = 1; output <= Outputs(); ++output) Dim(output, table.At(dac_pattern_.row, output));
}

std::chrono::microseconds LightOrgan::SinceLast(support::TimePoint& last) const {
  const support::TimePoint now = ports_.clock.Now();
  const auto elapsed = std::chrono::duration_cast<std::chrono::microseconds>(now - last);
  last = now;
  return elapsed;
}

void LightOrgan::tmrSpectrum_ThatTime(Side side) {
  Followed& followed = side == Side::Io ? io_followed_ : dac_followed_;
  const std::chrono::microseconds elapsed = SinceLast(followed.last);
  if (side == Side::Io) return FollowIoBands(elapsed);
  view_.dac.bands = Levels(followed, false, elapsed);
  for (int output = 1; output <= Outputs(); ++output) {
    Dim(output, DimmerValue(view_.dac.bands[At(output)], view_.dac.sliders[At(output)]));
  }
}

void LightOrgan::FollowIoBands(std::chrono::microseconds elapsed) {
  view_.io.bands = Levels(io_followed_, view_.io_mode == IoMode::Stereo, elapsed);
  for (int output = 1; output <= Outputs(); ++output) {
    const float threshold = static_cast<float>(view_.io.sliders[At(output)]) / kHighestLevel;
    Light(output, switches_[At(output)].Update(view_.io.bands[At(output)], threshold, elapsed));
  }
}

std::array<float, kMostOutputs> LightOrgan::Levels(Followed& followed, bool stereo,
                                                   std::chrono::microseconds elapsed) {
  const auto follow = [&](BandFollower& follower, Channels channels) {
    if (follower.Bands() != Outputs()) follower = BandFollower(Outputs());
    const auto bins = ports_.spectrum.Spectrum(channels);
    return bins ? follower.Follow(*bins, elapsed) : follower.Fall(elapsed);
  };
  std::array<float, kMostOutputs> levels{};
  if (!stereo) {
    const auto mixed = follow(followed.mixed, Channels::Mixed);
    std::copy(mixed.begin(), mixed.end(), levels.begin());
    return levels;
  }
  const auto left = follow(followed.left, Channels::Left);
  const auto right = follow(followed.right, Channels::Right);
  for (int output = 1; output <= Outputs(); ++output) {
    levels[At(output)] = (output % 2 == 1 ? left : right)[At(output)];
  }
  return levels;
}

bool LightOrgan::BeatHeard() {
  const auto heard = ports_.beats.LastBeat(kAhead);
  view_.beat_from = heard ? BeatFrom::Grid : BeatFrom::Nothing;
  if (!heard) {
    beat_.reset();
    const std::chrono::microseconds elapsed = SinceLast(last_onset_);
    const auto bins = ports_.spectrum.Spectrum(Channels::Mixed);
    if (bins) view_.beat_from = BeatFrom::Sound;
    return bins && onsets_.Onset(*bins, elapsed);
  }
  // A place that was moved, or another source, comes to another number without a beat.
  const bool next = beat_ && heard->source == beat_->source && heard->number == beat_->number + 1;
  beat_ = heard;
  return next;
}

void LightOrgan::FollowBeats() {
  if (!BeatHeard() || !ports_.beats.AnyPlaying()) return;
  beat_flag_ = true;
  tmrBeat_ThatTime();
}

void LightOrgan::tmrBeat_ThatTime() {
  if (beat_flag_) {
    LightAll(true);
    beat_flag_ = false;
    beat_timer_.Start(ports_.clock.Now(), kFlash);
    return;
  }
  LightAll(false);
  beat_flag_ = true;
  beat_timer_.Stop();
}

Snapshot LightOrgan::Remember() const {
  Snapshot snapshot{view_.io_mode,  view_.io.speed,  view_.io.sliders,
                    view_.dac_mode, view_.dac.speed, view_.dac.sliders};
  if (view_.io_mode == IoMode::Constant) {
    std::copy(view_.buttons.begin(), view_.buttons.end(), snapshot.io_levels.begin());
  }
  return snapshot;
}

void LightOrgan::Recall(const Snapshot& snapshot) {
  cmdK8000(static_cast<int>(snapshot.io));
  if (snapshot.io_speed) ScrollerIO(*snapshot.io_speed);
  for (int output = 1; output <= std::min(Outputs(), snapshot.io_held); ++output) {
    const int level = snapshot.io_levels[At(output)];
    if (snapshot.io != IoMode::Constant) {
      IOScroller(output, level);
    } else if (view_.buttons[At(output)] != (level != 0)) {
      btnOn(output);
    }
  }
  if (snapshot.dac) cmdK8000(static_cast<int>(*snapshot.dac));
  if (snapshot.dac_speed) ScrollerDAC(*snapshot.dac_speed);
  for (int output = 1; output <= std::min(Outputs(), snapshot.dac_held); ++output)
    DacScroller(output, snapshot.dac_levels[At(output)]);
}

const LightOrganView& LightOrgan::View() {
  view_.io.table = io_pattern_.table;
  view_.io.row = io_pattern_.row;
  view_.dac.table = dac_pattern_.table;
  view_.dac.row = dac_pattern_.row;
  view_.guard_lifted = guard_.Lifted();
  view_.guard_holds = guard_.Holding();
  support::Error trouble = boards_.Trouble();
  view_.boards_in_use = boards_.InUse();
  view_.trouble = std::move(trouble.text);
  view_.saying = std::move(trouble.saying);
  return view_;
}

}  // namespace lightorgan
