// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/PulseLoop.h"

#include <utility>

namespace platform::audio {

PulseLoop::PulseLoop(std::function<void()> started)
    : started_(std::move(started)), loop_(pa_threaded_mainloop_new()) {
  if (loop_ == nullptr) return;
  pa_threaded_mainloop_set_name(loop_, "sound");
  if (started_) {
    pa_mainloop_api_once(
        Api(), [](pa_mainloop_api*, void* self) { static_cast<PulseLoop*>(self)->started_(); }, this);
  }
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
