// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/ports/OutputDevice.h"

namespace platform::audio {

class PulseConnection;

/// The sinks of a PulseAudio or PipeWire server.
///
/// A server that went away is looked for once a second, and found again tells OnChange; List looks at once.
/// Threads: as the port says; OnChange calls back on the sound thread.
class PulseDevices final : public engine::OutputDevices {
 public:
  /// An empty address is the server of the user's desktop.
  /// sound_thread_started runs first on the thread that renders.
  explicit PulseDevices(std::string server = {}, std::function<void()> sound_thread_started = {});
  ~PulseDevices() override;

  [[nodiscard]] std::vector<engine::OutputDeviceInfo> List() override;
  support::Result<std::unique_ptr<engine::OutputDevice>> Open(const engine::OutputRequest& request,
                                                              engine::RenderSource& source) override;
  void OnChange(std::function<void()> changed) override;

 private:
  /// Shared with the open devices, which may be closed after this object.
  std::shared_ptr<PulseConnection> connection_;
};

}  // namespace platform::audio
