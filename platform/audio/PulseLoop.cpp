// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/PulseLoop.h"

#include "platform/files/System.h"

namespace platform::audio {

PulseLoop::PulseLoop() : loop_(pa_threaded_mainloop_new()) {
  if (loop_ == nullptr) return;
  pa_threaded_mainloop_set_name(loop_, "sound");
  pa_mainloop_api_once(
      Api(), [](pa_mainloop_api*, void*) { files::RaiseThreadPriority(); }, nullptr);
  if (pa_threaded_mainloop_start(loop_) == 0) return;
  pa_threaded_mainloop_free(loop_);
  loop_ = nullptr;
}

PulseLoop::~PulseLoop() {
  if (loop_ == nullptr) return;
  pa_threaded_mainloop_stop(loop_);
  pa_threaded_mainloop_free(loop_);
}

}  // namespace platform::audio
