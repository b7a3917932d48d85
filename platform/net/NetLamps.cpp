// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/net/NetLamps.h"

#include <algorithm>
#include <utility>

#include "support/Sentences.h"

namespace platform::net {
namespace {

using State = dmx::DmxInterfaceStatus::State;
using support::MutexLock;
using namespace std::chrono_literals;

constexpr support::Duration kFrame = std::chrono::microseconds(22'728);  // 44 a second
constexpr support::Duration kSayAgain = 800ms;
constexpr support::Duration kAfterFailure = 1s;
constexpr int kDarkFrames = 3;

const support::Error kNoTrouble{};

}  // namespace

NetLamps::~NetLamps() {
  {
    MutexLock lock(mutex_);
    wanted_ = false;
    ending_ = true;
  }
  wake_.notify_all();
  if (sender_.joinable()) sender_.join();
}

void NetLamps::Choose(const dmx::NetWish& wish) {
  {
    MutexLock lock(mutex_);
    wish_ = wish;
  }
  wake_.notify_all();
}

void NetLamps::StartDevice() {
  {
    MutexLock lock(mutex_);
    wanted_ = true;
  }
  if (!sender_.joinable()) sender_ = std::thread([this] { Work(); });
  wake_.notify_all();
}

void NetLamps::SetChannelCount(int count) {
  {
    MutexLock lock(mutex_);
    count_ = std::clamp(count, 0, dmx::kUniverseChannels);
    changed_ = true;
  }
  wake_.notify_all();
}

void NetLamps::SetData(int channel, dmx::DmxLevel level) {
  if (channel < 1 || channel > dmx::kUniverseChannels) return;
  {
    MutexLock lock(mutex_);
    if (!wanted_) return;
    levels_[static_cast<std::size_t>(channel - 1)] = level;
    // A fade of many channels wakes the sender once.
    if (std::exchange(changed_, true)) return;
  }
  wake_.notify_all();
}

void NetLamps::StopDevice() {
  {
    MutexLock lock(mutex_);
    wanted_ = false;
    levels_ = {};
  }
  wake_.notify_all();
}

void NetLamps::Darken(support::Duration patience) {
  StopDevice();
  const support::TimePoint until = clock_.Now() + patience;
  MutexLock lock(mutex_);
  while (serving_ && clock_.Now() < until) lock.WaitUntil(wake_, until);
}

dmx::DmxInterfaceStatus NetLamps::Status() const {
  MutexLock lock(mutex_);
  return status_;
}

void NetLamps::Say(State state, const support::Error& trouble) {
  MutexLock lock(mutex_);
  status_.state = state;
  status_.text = trouble.text;
  status_.saying = trouble.saying;
  if (state == State::Sending) return;
  status_.packets_per_frame = 0;
  status_.frame_interval = {};
  last_frame_ = {};
}

std::optional<dmx::NetWish> NetLamps::WaitForWork() {
  MutexLock lock(mutex_);
  serving_ = false;
  wake_.notify_all();
  while (!ending_ && (!wanted_ || wish_.protocol == Protocol::Off)) lock.Wait(wake_);
  if (ending_) return std::nullopt;
  serving_ = true;
  return wish_;
}

void NetLamps::Work() {
  while (const auto wish = WaitForWork()) {
    Serve(*wish);
    Say(State::Stopped, kNoTrouble);
  }
}

bool NetLamps::Rest(const dmx::NetWish& wish, support::Duration time) {
  const support::TimePoint until = clock_.Now() + time;
  MutexLock lock(mutex_);
  while (Wants(wish) && clock_.Now() < until) lock.WaitUntil(wake_, until);
  return Wants(wish);
}

bool NetLamps::WaitForFrame(const dmx::NetWish& wish, Levels& levels) {
  MutexLock lock(mutex_);
  const support::TimePoint again = last_frame_ + kSayAgain;
  while (Wants(wish) && !changed_ && clock_.Now() < again) lock.WaitUntil(wake_, again);
  changed_ = false;
  levels = levels_;
  std::fill(levels.begin() + count_, levels.end(), dmx::DmxLevel{0});
  return Wants(wish);
}

void NetLamps::Serve(const dmx::NetWish& wish) {
  if (!wish.address.empty() && !ParseIp4(wish.address)) {
    Say(State::Searching,
        support::Failed(support::ErrorCode::Malformed, support::Sentence::NetNoAddress, {wish.address}));
    while (Rest(wish, kAfterFailure)) {
    }
    return;
  }
  Levels levels{};
  do {
    auto sender = UdpSender::Open();
    support::Result<void> sent;
    if (!sender) sent = sender.Failure();
    while (sent && WaitForFrame(wish, levels)) {
      sent = SendFrame(sender.Value(), wish, levels);
      if (!sent) break;
      Say(State::Sending, kNoTrouble);
      NoteFrame();
      static_cast<void>(Rest(wish, kFrame));
    }
    if (sent) return SendDarkness(sender.Value(), wish);
    Say(State::Searching, sent.Failure());
  } while (Rest(wish, kAfterFailure));
  // The fault may be over: nobody is to stay lit.
  if (auto last = UdpSender::Open()) SendDarkness(last.Value(), wish);
}

void NetLamps::SendDarkness(UdpSender& sender, const dmx::NetWish& wish) {
  const Levels dark{};
  for (int i = 0; i < kDarkFrames; ++i) static_cast<void>(SendFrame(sender, wish, dark));
  if (wish.protocol != Protocol::Sacn) return;
  for (int i = 0; i < kDarkFrames; ++i) static_cast<void>(SendFrame(sender, wish, dark, SacnEnd::Terminated));
}

support::Result<void> NetLamps::SendFrame(UdpSender& sender, const dmx::NetWish& wish, const Levels& levels,
                                          SacnEnd end) {
  ++sequence_;
  const auto chosen = ParseIp4(wish.address);
  if (wish.protocol == Protocol::Sacn) {
    const int universe = std::clamp(wish.universe, 1, dmx::NetWish::kLastSacn);
    return sender.Send(chosen.value_or(SacnGroup(universe)), ports_.sacn,
                       SacnData(universe, sequence_, end, wish.source, levels));
  }
  if (sequence_ == 0) sequence_ = 1;
  const int universe = std::clamp(wish.universe, 0, dmx::NetWish::kLastArtNet);
  return sender.Send(chosen.value_or(kEverybody), ports_.art_net, ArtDmx(universe, sequence_, levels));
}

void NetLamps::NoteFrame() {
  const support::TimePoint now = clock_.Now();
  MutexLock lock(mutex_);
  if (last_frame_ != support::TimePoint())
    status_.frame_interval = std::chrono::duration_cast<std::chrono::microseconds>(now - last_frame_);
  last_frame_ = now;
  status_.packets_per_frame = 1;
  ++status_.frames;
}

}  // namespace platform::net
