// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/pulseaudio.h>

#include <string>

#include "app/ports/SystemMixer.h"
#include "platform/audio/PulseConnection.h"

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
  void Ask();
  /// What was asked before a volume was set would be told after it.
  void ForgetQuestion();
  void Take(const pa_sink_info& sink);

  PulseConnection connection_;
  Changed changed_;
  pa_operation* question_ = nullptr;
  pa_cvolume volume_{};  ///< as told last; no channels before that
};

}  // namespace platform::audio
