// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace app {

/// The master volume of the system, in percent of its full volume.
///
/// Law: what it tells is never older than the last SetVolume, so a slider that is being moved is not pulled
/// back. Threads: Open from a worker, it may block; SetVolume from any thread, never blocks.
class SystemMixer {
 public:
  virtual ~SystemMixer() = default;
  /// Called with 0 to 100: as soon as the volume is known, and when somebody else moves it. On any thread, so
  /// it only leaves a note; not any more after the mixer is gone.
  using Changed = std::function<void(int percent)>;
  /// Once. Without a sound system nothing is told until there is one.
  virtual void Open(Changed changed) = 0;
  /// Clamped to 0 to 100; nothing without a sound system, and before Open.
  virtual void SetVolume(int percent) = 0;
};

}  // namespace app
