// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "app/ports/SoundPriority.h"

namespace platform::rights {

/// The threads that carry sound, and their right to run before all others.
///
/// A thread takes what its user may take by himself. Where that is not real time, RealtimeKit is asked for it
/// over the system's bus, as desktop programs do: by a thread of this object's, now and again, so that nobody
/// waits for a bus or a daemon that is not there. Law: a thread that computes without a pause beyond the
/// limit that the kit sets loses its rights (and gets them again later); the system does not end the program
/// for it.
class SoundThreads final : public app::SoundPriority {
 public:
  enum class Duty {
    Callback,  ///< what a device waits for
    Feeding,   ///< keeps tens of milliseconds ready for callbacks, which come first
    Timing,    ///< carries no sound, but is not to be late either: raised, never real time
  };
  struct Options {
    std::string bus{};                       ///< its address; empty: the system's
    bool by_ourselves = true;                ///< false: the kit is asked for all
    std::chrono::milliseconds look{15'000};  ///< between two looks at what the threads have
  };

  SoundThreads() : SoundThreads(Options()) {}
  explicit SoundThreads(Options options);
  /// Waits for a question to the kit that is on its way, some seconds at most.
  ~SoundThreads() override;
  SoundThreads(const SoundThreads&) = delete;
  SoundThreads& operator=(const SoundThreads&) = delete;

  /// The calling thread is one of them until it ends. Threads: any, once each; never waits for the kit.
  void Join(Duty duty);
  [[nodiscard]] Level Now() const override;

 private:
  struct State;
  std::shared_ptr<State> state_;  // shared with threads that end after it
};

}  // namespace platform::rights
