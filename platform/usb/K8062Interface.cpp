// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/K8062Interface.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace platform::usb {
namespace {

using State = dmx::DmxInterfaceStatus::State;
using support::MutexLock;

constexpr auto kBetweenSearches = std::chrono::milliseconds(250);
/// Before a box that refuses everything is opened again.
constexpr auto kAfterFailure = std::chrono::milliseconds(50);

const support::Error kNoTrouble{};

}  // namespace

K8062Interface::~K8062Interface() {
  {
    MutexLock lock(mutex_);
    wanted_ = false;
    ending_ = true;
  }
  wake_.notify_all();
  if (sender_.joinable()) sender_.join();
}

void K8062Interface::StartDevice() {
  {
    MutexLock lock(mutex_);
    wanted_ = true;
  }
  if (!sender_.joinable()) sender_ = std::thread([this] { Work(); });
  wake_.notify_all();
}

void K8062Interface::SetChannelCount(int count) {
  MutexLock lock(mutex_);
  count_ = std::clamp(count, 0, dmx::kUniverseChannels);
}

void K8062Interface::SetData(int channel, dmx::DmxLevel level) {
  if (channel < 1 || channel > dmx::kUniverseChannels) return;
  MutexLock lock(mutex_);
  if (!wanted_) return;
  levels_[static_cast<std::size_t>(channel - 1)] = level;
  if (level != 0) highest_lit_ = std::max(highest_lit_, channel);
}

void K8062Interface::StopDevice() {
  {
    MutexLock lock(mutex_);
    wanted_ = false;
    levels_ = {};
  }
  wake_.notify_all();
}

void K8062Interface::Darken(support::Duration patience) {
  StopDevice();
  const support::TimePoint until = clock_.Now() + patience;
  MutexLock lock(mutex_);
  while (serving_ && clock_.Now() < until) lock.WaitUntil(wake_, until);
}

dmx::DmxInterfaceStatus K8062Interface::Status() const {
  MutexLock lock(mutex_);
  return status_;
}

bool K8062Interface::Sending() const {
  MutexLock lock(mutex_);
  return wanted_;
}

void K8062Interface::Say(State state, const support::Error& trouble) {
  MutexLock lock(mutex_);
  status_.state = state;
  status_.text = trouble.text;
  status_.saying = trouble.saying;
  if (state != State::Sending) {
    status_.packets_per_frame = 0;
    status_.frame_interval = {};
    last_frame_ = {};
  }
}

bool K8062Interface::WaitForWork() {
  MutexLock lock(mutex_);
  serving_ = false;
  wake_.notify_all();
  while (!wanted_ && !ending_) lock.Wait(wake_);
  serving_ = wanted_;
  return wanted_;
}

void K8062Interface::Work() {
  while (WaitForWork()) {
    auto usb = UsbContext::Open();
    if (usb) {
      Serve(*usb.Value());
      Say(State::Stopped, kNoTrouble);
    } else {
      Say(State::Searching, usb.Failure());
      Rest(kBetweenSearches);
    }
  }
}

void K8062Interface::Rest(support::Duration time) {
  MutexLock lock(mutex_);
  if (wanted_) lock.WaitUntil(wake_, clock_.Now() + time);
}

std::unique_ptr<K8062Box> K8062Interface::Search(const UsbContext& usb) {
  while (Sending()) {
    auto box = K8062Box::Find(usb);
    if (box) return std::move(box).Value();
    Say(State::Searching, box.Failure());
    Rest(kBetweenSearches);
  }
  return nullptr;
}

void K8062Interface::Serve(const UsbContext& usb) {
  while (auto box = Search(usb)) {
    Say(State::Sending, kNoTrouble);
    bool there = true;
    // The first frame tells every lamp where it stands, whatever it was shown before.
    for (bool first = true; there && Sending(); first = false)
      there = SendFrame(*box, NextFrame(first, box->Size()));
    if (there) {
      SendDarkness(*box);
    } else {
      Rest(kAfterFailure);
    }
  }
}

K8062Interface::Frame K8062Interface::NextFrame(bool whole, K8062Size size) const {
  MutexLock lock(mutex_);
  Frame frame{levels_, CarriedChannels(whole ? count_ : std::min(count_, highest_lit_), size)};
  std::fill(frame.levels.begin() + count_, frame.levels.end(), dmx::DmxLevel{0});
  return frame;
}

bool K8062Interface::SendFrame(K8062Box& box, const Frame& frame) {
  const auto packets = EncodeK8062Frame(frame.levels, frame.count, box.Size());
  for (const K8062Packet& packet : packets) {
    if (!Sending()) return true;  // the dark frame takes its place
    const auto sent = box.Send(packet);
    if (!sent) return false;
    if (&packet == &packets.front()) NoteFrame(packets.size(), clock_.Now());
  }
  return true;
}

void K8062Interface::SendDarkness(K8062Box& box) {
  const Levels dark{};
  auto packets = EncodeK8062Frame(dark, dmx::kUniverseChannels, box.Size());
  packets.push_back(packets.front());  // it makes the box show the frame before it
  for (const K8062Packet& packet : packets) {
    if (!box.Send(packet)) return;
  }
}

void K8062Interface::NoteFrame(std::size_t packets, support::TimePoint began) {
  MutexLock lock(mutex_);
  ++status_.frames;
  status_.packets_per_frame = static_cast<int>(packets);
  if (last_frame_ != support::TimePoint())
    status_.frame_interval = std::chrono::duration_cast<std::chrono::microseconds>(began - last_frame_);
  last_frame_ = began;
}

}  // namespace platform::usb
