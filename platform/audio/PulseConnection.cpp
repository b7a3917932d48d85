// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/PulseConnection.h"

#include <cassert>
#include <utility>

namespace platform::audio {
namespace {

constexpr pa_usec_t kRetryEvery = 1'000'000;
constexpr pa_usec_t kBegEvery = 30'000'000;

/// Wakes the loop's waiter once, when a time has passed.
class TimeLimit {
 public:
  TimeLimit(PulseLoop& loop, pa_context* context, std::chrono::microseconds limit) : loop_(loop) {
    event_ = pa_context_rttime_new(context, pa_rtclock_now() + static_cast<pa_usec_t>(limit.count()), &Passes,
                                   this);
  }
  ~TimeLimit() {
    if (event_ != nullptr) loop_.Api()->time_free(event_);
  }
  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;

  [[nodiscard]] bool Passed() const { return passed_ || event_ == nullptr; }

 private:
  static void Passes(pa_mainloop_api*, pa_time_event*, const timeval*, void* self) {
    auto* limit = static_cast<TimeLimit*>(self);
    limit->passed_ = true;
    limit->loop_.Signal();
  }

  PulseLoop& loop_;
  pa_time_event* event_;
  bool passed_ = false;
};

}  // namespace

PulseConnection::PulseConnection(std::string server, std::function<void()> started)
    : server_(std::move(server)), loop_(std::move(started)) {}

PulseConnection::~PulseConnection() {
  if (!loop_.Runs()) return;
  PulseLock lock(loop_);
  changed_ = nullptr;
  volume_moved_ = nullptr;
  sources_changed_ = nullptr;
  StopRetrying();
  Drop();
}

pa_context* PulseConnection::Ready() {
  if (!loop_.Runs()) return nullptr;
  if (context_ == nullptr || !PA_CONTEXT_IS_GOOD(pa_context_get_state(context_))) {
    // Starting a server takes a while, under the lock; one that does not come up is not begged each second.
    const bool lately = begged_ != 0 && pa_rtclock_now() < begged_ + kBegEvery;
    if (!lately) begged_ = pa_rtclock_now();
    Begin(lately ? Starting::Never : Starting::AsTheDesktopIsSetUp);
  }
  const auto connected = [this] { return pa_context_get_state(context_) == PA_CONTEXT_READY; };
  return context_ != nullptr && WaitUntil(connected) ? context_ : nullptr;
}

pa_context* PulseConnection::Current() const {
  const bool ready = context_ != nullptr && pa_context_get_state(context_) == PA_CONTEXT_READY;
  return ready ? context_ : nullptr;
}

bool PulseConnection::WaitUntil(const std::function<bool()>& done) {
  assert(context_ != nullptr && "somebody asked for the server before waiting for it");
  const TimeLimit limit(loop_, context_, kPatience);
  while (!done() && PA_CONTEXT_IS_GOOD(pa_context_get_state(context_)) && !limit.Passed()) loop_.Wait();
  return done();
}

bool PulseConnection::Finish(pa_operation* operation) {
  if (operation == nullptr) return false;
  pa_operation_set_state_callback(
      operation, [](pa_operation*, void* self) { static_cast<PulseConnection*>(self)->loop_.Signal(); },
      this);
  WaitUntil([operation] { return pa_operation_get_state(operation) != PA_OPERATION_RUNNING; });
  const bool done = pa_operation_get_state(operation) == PA_OPERATION_DONE;
  // The caller's results may be gone when a late answer comes.
  if (!done) pa_operation_cancel(operation);
  pa_operation_unref(operation);
  return done;
}

void PulseConnection::Begin(Starting starting) {
  StopRetrying();
  Drop();
  in_background_ = starting == Starting::Never;
  pa_proplist* about = pa_proplist_new();
  pa_proplist_sets(about, PA_PROP_APPLICATION_NAME, "dj TOLVEN");
  context_ = pa_context_new_with_proplist(loop_.Api(), nullptr, about);
  pa_proplist_free(about);
  if (context_ == nullptr) return;
  pa_context_set_state_callback(
      context_, [](pa_context*, void* self) { static_cast<PulseConnection*>(self)->StateChanged(); }, this);
  const auto flags = starting == Starting::Never ? PA_CONTEXT_NOAUTOSPAWN : PA_CONTEXT_NOFLAGS;
  // A refusal comes through the state callback too.
  pa_context_connect(context_, server_.empty() ? nullptr : server_.c_str(), flags, nullptr);
}

void PulseConnection::Drop() {
  if (context_ == nullptr) return;
  pa_context_set_state_callback(context_, nullptr, nullptr);
  pa_context_set_subscribe_callback(context_, nullptr, nullptr);
  pa_context_disconnect(context_);
  pa_context_unref(context_);
  context_ = nullptr;
}

void PulseConnection::StateChanged() {
  const pa_context_state_t state = pa_context_get_state(context_);
  if (state == PA_CONTEXT_READY) {
    was_ready_ = true;
    Subscribe();
    if (in_background_) Changed();
  } else if (!PA_CONTEXT_IS_GOOD(state)) {
    RetryLater();
    if (std::exchange(was_ready_, false)) Changed();
  }
  loop_.Signal();
}

void PulseConnection::Subscribe() {
  pa_context_set_subscribe_callback(
      context_,
      [](pa_context*, pa_subscription_event_type_t event, std::uint32_t, void* self) {
        const auto facility = event & PA_SUBSCRIPTION_EVENT_FACILITY_MASK;
        const auto kind = event & PA_SUBSCRIPTION_EVENT_TYPE_MASK;
        // A changed sink is one whose volume was moved; a changed server has another default.
        const bool sink_came_or_went =
            facility == PA_SUBSCRIPTION_EVENT_SINK && kind != PA_SUBSCRIPTION_EVENT_CHANGE;
        if (sink_came_or_went || facility == PA_SUBSCRIPTION_EVENT_SERVER) {
          static_cast<PulseConnection*>(self)->Changed();
        } else if (facility == PA_SUBSCRIPTION_EVENT_SINK) {
          static_cast<PulseConnection*>(self)->VolumeMoved();
        } else if (facility == PA_SUBSCRIPTION_EVENT_SOURCE) {
          static_cast<PulseConnection*>(self)->SourcesChanged();
        }
      },
      this);
  const auto mask = static_cast<pa_subscription_mask_t>(
      PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SOURCE | PA_SUBSCRIPTION_MASK_SERVER);
  pa_operation* operation = pa_context_subscribe(context_, mask, nullptr, nullptr);
  if (operation != nullptr) pa_operation_unref(operation);
}

void PulseConnection::RetryLater() {
  StopRetrying();
  retry_ = pa_context_rttime_new(
      context_, pa_rtclock_now() + kRetryEvery,
      [](pa_mainloop_api*, pa_time_event*, const timeval*, void* self) {
        static_cast<PulseConnection*>(self)->Begin(Starting::Never);
      },
      this);
}

void PulseConnection::StopRetrying() {
  if (retry_ != nullptr) loop_.Api()->time_free(retry_);
  retry_ = nullptr;
}

}  // namespace platform::audio
