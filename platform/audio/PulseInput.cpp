// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/PulseInput.h"

#include <algorithm>
#include <utility>

#include "support/Sentences.h"

namespace platform::audio {
namespace {

constexpr std::size_t kSilentFrames = 512;
constexpr pa_usec_t kLookForInputEvery = 250'000;

}  // namespace

support::Result<std::unique_ptr<engine::InputDevice>> PulseInput::Open(
    std::shared_ptr<PulseConnection> connection, const PulseSource& source,
    const engine::InputRequest& request, engine::CaptureSink& sink) {
  std::unique_ptr<PulseInput> input(new PulseInput(std::move(connection), source, sink));
  if (request.block_ms <= 0 || !input->Connect(source.map, request.block_ms)) {
    return support::Failed(support::ErrorCode::Unavailable, support::Sentence::InputBusy, {source.info.name});
  }
  return std::unique_ptr<engine::InputDevice>(std::move(input));
}

PulseInput::PulseInput(std::shared_ptr<PulseConnection> connection, const PulseSource& source,
                       engine::CaptureSink& sink)
    : connection_(std::move(connection)),
      info_(source.info),
      sink_(sink),
      silence_(kSilentFrames * static_cast<std::size_t>(std::max(1, source.info.channels))) {}

PulseInput::~PulseInput() {
  PulseLock lock(connection_->Loop());
  EndRecording();
}

bool PulseInput::Connect(const pa_channel_map& map, int block_ms) {
  pa_context* context = connection_->Ready();
  if (context == nullptr) return false;
  const pa_sample_spec format{PA_SAMPLE_FLOAT32NE, static_cast<std::uint32_t>(info_.sample_rate),
                              map.channels};
  if (pa_sample_spec_valid(&format) == 0) return false;
  pa_proplist* about = pa_proplist_new();
  // Echo cancelling and the like are for telephones.
  pa_proplist_sets(about, PA_PROP_MEDIA_ROLE, "production");
  stream_ = pa_stream_new_with_proplist(context, "microphone", &format, &map, about);
  pa_proplist_free(about);
  if (stream_ == nullptr) return false;
  SetCallbacks();
  pa_buffer_attr buffer{};
  buffer.maxlength = static_cast<std::uint32_t>(-1);
  buffer.fragsize =
      static_cast<std::uint32_t>(pa_usec_to_bytes(static_cast<pa_usec_t>(block_ms) * 1000, &format));
  constexpr unsigned kFlags = PA_STREAM_ADJUST_LATENCY | PA_STREAM_AUTO_TIMING_UPDATE |
                              PA_STREAM_INTERPOLATE_TIMING | PA_STREAM_NO_REMAP_CHANNELS |
                              PA_STREAM_NO_REMIX_CHANNELS | PA_STREAM_DONT_MOVE;
  if (pa_stream_connect_record(stream_, info_.id.c_str(), &buffer, static_cast<pa_stream_flags_t>(kFlags)) <
      0) {
    return false;
  }
  // A refused stream is taken apart by its own callback.
  connection_->WaitUntil(
      [this] { return stream_ == nullptr || pa_stream_get_state(stream_) != PA_STREAM_CREATING; });
  if (stream_ == nullptr || pa_stream_get_state(stream_) != PA_STREAM_READY) return false;
  WatchForStall();
  return true;
}

void PulseInput::SetCallbacks() {
  pa_stream_set_state_callback(
      stream_,
      [](pa_stream* stream, void* self) {
        auto* input = static_cast<PulseInput*>(self);
        if (!PA_STREAM_IS_GOOD(pa_stream_get_state(stream))) input->Lose();
        input->connection_->Loop().Signal();
      },
      this);
  pa_stream_set_read_callback(
      stream_, [](pa_stream*, std::size_t, void* self) { static_cast<PulseInput*>(self)->Read(); }, this);
}

void PulseInput::WatchForStall() {
  last_came_ = support::SteadyClock().Now();
  const auto look = [](pa_mainloop_api*, pa_time_event* event, const timeval*, void* self) {
    static_cast<PulseInput*>(self)->LookForStall(event);
  };
  watch_ = pa_context_rttime_new(pa_stream_get_context(stream_), pa_rtclock_now() + kLookForInputEvery, look,
                                 this);
}

void PulseInput::LookForStall(pa_time_event* watch) {
  if (support::SteadyClock().Now() - last_came_ > kStall) return Lose();
  pa_context_rttime_restart(pa_stream_get_context(stream_), watch, pa_rtclock_now() + kLookForInputEvery);
}

void PulseInput::Read() {
  last_came_ = support::SteadyClock().Now();
  // What comes is often less than a block, and often several at once.
  while (pa_stream_readable_size(stream_) > 0) {
    const void* data = nullptr;
    std::size_t bytes = 0;
    if (pa_stream_peek(stream_, &data, &bytes) < 0 || bytes == 0) return;
    const std::size_t samples = bytes / sizeof(float);
    if (data == nullptr) {
      Silence(samples);
    } else {
      sink_.Capture({static_cast<const float*>(data), samples});
    }
    if (pa_stream_drop(stream_) < 0) return;
  }
  MarkBehind();
}

void PulseInput::Silence(std::size_t samples) {
  while (samples > 0) {
    const std::size_t part = std::min(samples, silence_.size());
    sink_.Capture({silence_.data(), part});
    samples -= part;
  }
}

void PulseInput::MarkBehind() {
  pa_usec_t latency = 0;
  int negative = 0;
  if (pa_stream_get_latency(stream_, &latency, &negative) != 0) return;
  behind_.store(negative != 0 ? 0 : static_cast<std::int64_t>(latency), std::memory_order_relaxed);
}

void PulseInput::Lose() {
  if (lost_.exchange(true, std::memory_order_acq_rel)) return;
  EndRecording();
  connection_->SourcesChanged();
}

void PulseInput::EndRecording() {
  if (watch_ != nullptr) connection_->Loop().Api()->time_free(std::exchange(watch_, nullptr));
  if (stream_ == nullptr) return;
  pa_stream* stream = std::exchange(stream_, nullptr);
  pa_stream_set_state_callback(stream, nullptr, nullptr);
  pa_stream_set_read_callback(stream, nullptr, nullptr);
  if (PA_STREAM_IS_GOOD(pa_stream_get_state(stream))) pa_stream_disconnect(stream);
  pa_stream_unref(stream);
}

}  // namespace platform::audio
