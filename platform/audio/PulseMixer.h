// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/pulseaudio.h>

#include <atomic>
#include <string>

#include "app/ports/SystemMixer.h"
#include "platform/audio/PulseConnection.h"
#include "support/Executor.h"

namespace platform::audio {

/// The volume of the server's default sink; its balance stays as it is.
///
/// A server that comes later, or another default, is followed. Threads: as the port says.
class PulseMixer final : public app::SystemMixer {
 public:
  /// An empty address is the server of the user's desktop.
  explicit PulseMixer(std::string server = {});
  ~PulseMixer() override;

  void Open(Changed changed) override;
  void SetVolume(int percent) override;

 private:
  static constexpr int kNone = -1;

  void Ask();
  /// What was asked before a volume was set would be told after it.
  void ForgetQuestion();
  void Take(const pa_sink_info& sink);

  void Apply();

  PulseConnection connection_;
  Changed changed_;
  pa_operation* question_ = nullptr;
  pa_cvolume volume_{};  ///< as told last; no channels before that
  std::atomic<int> wanted_{kNone};
  // The loop's lock may be held for seconds while a server is started; whoever moves the slider does not
  // wait.
  support::ThreadPool setter_{1};  // last: it uses all of the above
};

}  // namespace platform::audio
