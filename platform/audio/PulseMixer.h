// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/pulseaudio.h>
#include <atomic>
#include <optional>
#include <string>

#include "app/ports/SystemMixer.h"
#include "platform/audio/PulseConnection.h"
#include "support/Executor.h"
#include "support/Mutex.h"

namespace platform::audio {

/// The volume of one of the server's sinks; its balance stays as it is.
///
/// A server that comes later, another default, and a chosen sink that comes or goes are followed. Threads: as
/// the port says.
class PulseMixer final : public app::SystemMixer {
 public:
  /// An empty address is the server of the user's desktop.
  explicit PulseMixer(std::string server = {});
  ~PulseMixer() override;

  void Open(Changed changed) override;
  void Choose(const std::string& output) override;
  void SetVolume(int percent) override;

 private:
  static constexpr int kNone = -1;

  void Ask();
  void AskDefault();
  /// What was asked before a volume was set would be told after it.
  void ForgetQuestion();
  void Take(const pa_sink_info& sink);

  void Apply();
  void SetNow();
  /// Runs what another thread wished for, where the loop's lock may be waited for.
  void TakeWish();

  PulseConnection connection_;
  Changed changed_;
  pa_operation* question_ = nullptr;
  bool switches_ = false;  ///< another sink was chosen, and is not known yet
  bool found_ = false;     ///< the chosen one is among the sinks listed so far
  std::string chosen_;     ///< its description; empty: the default sink
  std::string sink_;       ///< whose volume was told last
  pa_cvolume volume_{};    ///< as told last; no channels before that
  support::Mutex mutex_;
  std::optional<std::string> wish_ DJ_GUARDED_BY(mutex_);
  std::atomic<int> wanted_{kNone};
  // The loop's lock may be held for seconds while a server is started; whoever moves the slider does not
  // wait.
  support::ThreadPool setter_{1};  // last: it uses all of the above
};

}  // namespace platform::audio
