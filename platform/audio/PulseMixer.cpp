// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/PulseMixer.h"

#include <algorithm>
#include <utility>

namespace platform::audio {
namespace {

constexpr const char* kDefaultSink = "@DEFAULT_SINK@";

int Percent(const pa_cvolume& volume) {
  const std::uint64_t loudest = pa_cvolume_max(&volume);
  return static_cast<int>(
      std::min<std::uint64_t>(100, (loudest * 100 + PA_VOLUME_NORM / 2) / PA_VOLUME_NORM));
}

}  // namespace

PulseMixer::PulseMixer(std::string server) : connection_(std::move(server)) {}

PulseMixer::~PulseMixer() {
  constexpr std::chrono::hours kUntilItIsOver{1};
  static_cast<void>(setter_.Finish(kUntilItIsOver));
  if (!connection_.Loop().Runs()) return;
  PulseLock lock(connection_.Loop());
  connection_.OnChange(nullptr);
  connection_.OnVolume(nullptr);
  ForgetQuestion();
}

void PulseMixer::Open(Changed changed) {
  if (!connection_.Loop().Runs()) return;
  PulseLock lock(connection_.Loop());
  changed_ = std::move(changed);
  connection_.OnChange([this] { Ask(); });
  connection_.OnVolume([this] { Ask(); });
  TakeWish();
  if (connection_.Ready() != nullptr) Ask();
}

void PulseMixer::Choose(const std::string& output) {
  {
    const support::MutexLock lock(mutex_);
    wish_ = output;
  }
  if (!connection_.Loop().Runs()) return;
  setter_.Post([this] {
    PulseLock lock(connection_.Loop());
    TakeWish();
    if (changed_ && connection_.Current() != nullptr) Ask();
  });
}

void PulseMixer::TakeWish() {
  const support::MutexLock lock(mutex_);
  if (!wish_) return;
  switches_ = switches_ || *wish_ != chosen_;
  chosen_ = std::move(*std::exchange(wish_, std::nullopt));
}

void PulseMixer::SetVolume(int percent) {
  if (!connection_.Loop().Runs()) return;
  wanted_ = std::clamp(percent, 0, 100);
  setter_.Post([this] { Apply(); });
}

void PulseMixer::Apply() {
  PulseLock lock(connection_.Loop());
  if (!switches_ || question_ == nullptr) SetNow();  // else as soon as the chosen one is known
}

void PulseMixer::SetNow() {
  const int wanted = wanted_.exchange(kNone);
  if (wanted == kNone) return;
  pa_context* context = connection_.Current();
  if (context == nullptr || volume_.channels == 0) return;
  ForgetQuestion();
  const auto level = static_cast<std::uint64_t>(wanted);
  pa_cvolume_scale(&volume_, static_cast<pa_volume_t>(level * PA_VOLUME_NORM / 100));
  pa_operation* setting =
      pa_context_set_sink_volume_by_name(context, sink_.c_str(), &volume_, nullptr, nullptr);
  if (setting != nullptr) pa_operation_unref(setting);
}

void PulseMixer::Ask() {
  ForgetQuestion();
  pa_context* context = connection_.Current();
  if (context == nullptr) return;
  if (chosen_.empty()) return AskDefault();
  found_ = false;
  question_ = pa_context_get_sink_info_list(
      context,
      [](pa_context*, const pa_sink_info* sink, int end, void* self) {
        auto& mixer = *static_cast<PulseMixer*>(self);
        if (end != 0 || sink == nullptr) {
          pa_operation_unref(std::exchange(mixer.question_, nullptr));
          if (!mixer.found_) mixer.AskDefault();
        } else if (!mixer.found_ && sink->description != nullptr && mixer.chosen_ == sink->description) {
          mixer.found_ = true;
          mixer.Take(*sink);
        }
      },
      this);
}

void PulseMixer::AskDefault() {
  pa_context* context = connection_.Current();
  if (context == nullptr) return;
  question_ = pa_context_get_sink_info_by_name(
      context, kDefaultSink,
      [](pa_context*, const pa_sink_info* sink, int end, void* self) {
        if (end == 0 && sink != nullptr) static_cast<PulseMixer*>(self)->Take(*sink);
      },
      this);
}

void PulseMixer::ForgetQuestion() {
  if (question_ == nullptr) return;
  pa_operation_cancel(question_);
  pa_operation_unref(std::exchange(question_, nullptr));
}

void PulseMixer::Take(const pa_sink_info& sink) {
  sink_ = sink.name;
  const bool waited = std::exchange(switches_, false);
  if (wanted_ != kNone && !waited) return;  // it is older than what was set
  volume_ = sink.volume;
  if (wanted_ != kNone) return SetNow();
  if (changed_) changed_(Percent(volume_));
}

}  // namespace platform::audio
