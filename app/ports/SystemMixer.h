// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

namespace app {

/// The volume that the system gives one of its outputs, in percent of the full one.
///
/// Law: what it tells is never older than the last SetVolume, so a slider that is being moved is not pulled
/// back. Threads: Open from a worker, it may block; the rest from any thread, never blocks.
class SystemMixer {
 public:
  virtual ~SystemMixer() = default;
  /// Called with 0 to 100: as soon as the volume is known, and when somebody else moves it. On any thread, so
  /// it only leaves a note; not any more after the mixer is gone.
  using Changed = std::function<void(int percent)>;
  /// Once. Without a sound system nothing is told until there is one.
  virtual void Open(Changed changed) = 0;
  /// From now on that output's, by its name as devices are listed; its volume is told. Where there is none of
  /// that name, and until one was chosen, the system's usual output. Before Open too.
  virtual void Choose(const std::string& output) = 0;
  /// Clamped to 0 to 100; nothing without a sound system, and before Open.
  virtual void SetVolume(int percent) = 0;
};

}  // namespace app
