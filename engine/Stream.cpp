// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Stream.h"

#include <algorithm>
#include <bit>

namespace engine {
namespace {

constexpr std::size_t kTimedTempos = 64;

}  // namespace

void Stream::Seek(std::int64_t frame, Where where) {
  support::MutexLock lock(mutex_);
  ++orders_.place;
  orders_.frame = frame;
  orders_.moved_before = orders_.turns.moved;
  orders_.with_leader = where == Where::WithLeader;
  if (where == Where::Here && orders_.turns.loop && !orders_.turns.loop->Holds(frame)) {
    orders_.turns.loop.reset();
  }
  place_wanted_.store(orders_.place, std::memory_order_release);
}

void Stream::SetTempo(const Tempo& tempo) {
  support::MutexLock lock(mutex_);
  orders_.tempo = tempo;
}

void Stream::SetLoop(const std::optional<music::Loop>& loop) {
  support::MutexLock lock(mutex_);
  ++orders_.turns.number;
  orders_.turns.loop = loop;
}

void Stream::Move(std::int64_t frames, const std::optional<music::Loop>& loop) {
  support::MutexLock lock(mutex_);
  ++orders_.turns.number;
  orders_.turns.moved += frames;
  orders_.turns.loop = loop;
}

void Stream::SetSlip(bool slip) {
  support::MutexLock lock(mutex_);
  orders_.turns.slip = slip;
}

void Stream::SlipBack() {
  support::MutexLock lock(mutex_);
  ++orders_.turns.number;
  ++orders_.turns.returned;
  orders_.turns.loop.reset();
}

Tempo Stream::GetTempo() const {
  support::MutexLock lock(mutex_);
  return orders_.tempo;
}

bool Stream::AddTimedTempo(const TimedTempo& timed) {
  support::MutexLock lock(mutex_);
  if (orders_.timed.size() >= kTimedTempos) return false;
  const auto later = std::find_if(orders_.timed.begin(), orders_.timed.end(),
                                  [&](const TimedTempo& other) { return other.at > timed.at; });
  orders_.timed.insert(later, timed);
  return true;
}

void Stream::CancelScheduled() {
  cancelled.fetch_add(1, std::memory_order_release);
  support::MutexLock lock(mutex_);
  orders_.timed.clear();
}

void Stream::ApplyTimedTempo() {
  support::MutexLock lock(mutex_);
  if (orders_.timed.empty()) return;
  orders_.tempo.speed = orders_.timed.front().speed;
  orders_.timed.erase(orders_.timed.begin());
}

Stream::OrderView Stream::View() const {
  support::MutexLock lock(mutex_);
  OrderView view{orders_.place, orders_.frame, orders_.moved_before, orders_.with_leader,
                 orders_.tempo, orders_.turns, std::nullopt};
  if (!orders_.timed.empty()) view.next = orders_.timed.front();
  return view;
}

void Stream::SetVolume(float volume) noexcept {
  Number(volume_, std::bit_cast<std::uint32_t>(volume));
}

float Stream::VolumeOf(std::uint64_t asked) noexcept {
  return std::bit_cast<float>(static_cast<std::uint32_t>(asked));
}

}  // namespace engine
