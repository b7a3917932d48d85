// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/ports/InputDevice.h"

namespace platform::audio {

class PulseConnection;

/// The sources of a PulseAudio or PipeWire server, monitors of its sinks among them.
///
/// Nothing is connected before the first List. Threads: as the port says; OnChange calls back on a thread of
/// its own, on which inputs record too.
class PulseInputs final : public engine::InputDevices {
 public:
  /// An empty address is the server of the user's desktop. thread_started runs first on the thread that
  /// records.
  explicit PulseInputs(std::string server = {}, std::function<void()> thread_started = {});
  ~PulseInputs() override;

  [[nodiscard]] std::vector<engine::InputDeviceInfo> List() override;
  support::Result<std::unique_ptr<engine::InputDevice>> Open(const engine::InputRequest& request,
                                                             engine::CaptureSink& sink) override;
  void OnChange(std::function<void()> changed) override;

 private:
  /// Shared with the open inputs, which may be closed after this object.
  std::shared_ptr<PulseConnection> connection_;
};

}  // namespace platform::audio
