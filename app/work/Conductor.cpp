// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/work/Conductor.h"

#include <cassert>
#include <utility>

namespace app {

Conductor::Conductor(std::function<void()> tick, std::function<void()> started)
    : tick_(std::move(tick)), started_(std::move(started)) {}

Conductor::~Conductor() {
  Stop();
  box_->Close();
}

void Conductor::Start() {
  assert(!thread_.joinable() && "a conductor is started once");
  stopping_ = false;
  thread_ = std::thread([this] { Run(); });
}

void Conductor::Stop() {
  if (!thread_.joinable()) return;
  stopping_ = true;
  Post([] {});
  thread_.join();
}

void Conductor::ConductOnce() {
  assert(!thread_.joinable() && "the conductor's own thread does this");
  RunCommands();
  tick_();
}

void Conductor::Run() {
  if (started_) started_();
  auto next = std::chrono::steady_clock::now();
  while (!stopping_) {
    box_->WaitUntil(next);
    RunCommands();
    const auto now = std::chrono::steady_clock::now();
    if (now < next) continue;
    tick_();
    next += kPeriod;
    if (next < now) next = now + kPeriod;  // after a stall the missed ticks are not made up
  }
}

void Conductor::RunCommands() {
  for (const Mailbox::Job& command : box_->Take()) command();
}

}  // namespace app
