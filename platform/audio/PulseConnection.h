// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/pulseaudio.h>

#include <chrono>
#include <functional>
#include <string>

#include "platform/audio/PulseLoop.h"

namespace platform::audio {

/// One connection to the sound server, made again whenever the server comes back.
///
/// Law: nothing waits for a server longer than kPatience, answering or not.
/// Threads: every member but the constructor and the destructor requires the loop's lock or runs on the loop.
class PulseConnection {
 public:
  static constexpr std::chrono::seconds kPatience{2};

  /// An empty address is the server that the user's desktop uses, started if the desktop is set up so.
  /// started runs first on the loop's thread.
  explicit PulseConnection(std::string server, std::function<void()> started = {});
  ~PulseConnection();
  PulseConnection(const PulseConnection&) = delete;
  PulseConnection& operator=(const PulseConnection&) = delete;

  [[nodiscard]] PulseLoop& Loop() { return loop_; }
  /// Connected; null when there is no server now. May wait.
  [[nodiscard]] pa_context* Ready();
  /// The connection as it is; null when there is none now.
  [[nodiscard]] pa_context* Current() const;
  /// Waits until done() holds, or patience or the server ends; gives done().
  bool WaitUntil(const std::function<bool()>& done);
  /// As WaitUntil, for the operation's end; takes the operation, which may be null.
  bool Finish(pa_operation* operation);

  void OnChange(std::function<void()> changed) { changed_ = std::move(changed); }
  /// Called when the volume of a sink was moved, on the loop.
  void OnVolume(std::function<void()> moved) { volume_moved_ = std::move(moved); }
  /// Called when a source came, went or was changed, muted for one, on the loop.
  void OnSources(std::function<void()> changed) { sources_changed_ = std::move(changed); }
  void Changed() {
    if (changed_) changed_();
  }

  void VolumeMoved() {
    if (volume_moved_) volume_moved_();
  }
  void SourcesChanged() {
    if (sources_changed_) sources_changed_();
  }

 private:
  enum class Starting { Never, AsTheDesktopIsSetUp };

  void Begin(Starting starting);
  void Drop();
  void StateChanged();
  void Subscribe();
  void RetryLater();
  void StopRetrying();

  std::string server_;
  PulseLoop loop_;
  pa_context* context_ = nullptr;
  pa_time_event* retry_ = nullptr;
  pa_usec_t begged_ = 0;  ///< when the system was last asked to start a server; 0 is never
  bool was_ready_ = false;
  bool in_background_ = false;
  std::function<void()> changed_;
  std::function<void()> volume_moved_;
  std::function<void()> sources_changed_;
};

}  // namespace platform::audio
