// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/PulseDevice.h"

#include <algorithm>
#include <span>
#include <string>
#include <utility>

#include "support/Sentences.h"

namespace platform::audio {

using support::Error;
using support::ErrorCode;

namespace {

constexpr std::size_t kChunkFrames = 882;
constexpr pa_usec_t kLookEvery = 250'000;

std::uint32_t BytesFor(std::int64_t rate, int milliseconds, std::size_t frame_bytes) {
  return static_cast<std::uint32_t>(static_cast<std::size_t>(rate * milliseconds / 1000) * frame_bytes);
}

pa_stream* NewStream(pa_context* context, const std::string& name, std::int64_t rate,
                     const pa_channel_map& map) {
  const pa_sample_spec format{PA_SAMPLE_FLOAT32NE, static_cast<std::uint32_t>(rate), map.channels};
  pa_proplist* about = pa_proplist_new();
  // Desktops silence "music" while a telephone program rings; this role they leave alone.
  pa_proplist_sets(about, PA_PROP_MEDIA_ROLE, "production");
  pa_stream* stream = pa_stream_new_with_proplist(context, name.c_str(), &format, &map, about);
  pa_proplist_free(about);
  return stream;
}

}  // namespace

support::Result<std::unique_ptr<engine::OutputDevice>> PulseDevice::Open(
    std::shared_ptr<PulseConnection> connection, const Place& place, const engine::OutputRequest& request,
    engine::RenderSource& source) {
  const Error refused =
      support::Failed(ErrorCode::Unavailable, support::Sentence::OutputRefused, {place.sink.info.name});
  if (request.sample_rate <= 0 || request.buffer_ms <= 0 || request.period_ms <= 0) return refused;
  std::unique_ptr<PulseDevice> device(new PulseDevice(std::move(connection), place, request, source));
  if (!device->Connect(place.sink.map, request)) return refused;
  return std::unique_ptr<engine::OutputDevice>(std::move(device));
}

PulseDevice::PulseDevice(std::shared_ptr<PulseConnection> connection, const Place& place,
                         const engine::OutputRequest& request, engine::RenderSource& source)
    : connection_(std::move(connection)),
      info_(place.sink.info),
      source_(source),
      rate_(request.sample_rate),
      frame_bytes_(place.sink.info.speakers.size() * sizeof(float)),
      default_id_(place.default_id) {
  played_.Write({0, support::SteadyClock().Now()});
}

PulseDevice::~PulseDevice() {
  // The loop's lock is recursive.
  PulseLock lock(connection_->Loop());
  EndPulling();
}

engine::PlayedMark PulseDevice::Played() const noexcept {
  // A mark is missed only when eight newer ones came while it was read.
  while (true) {
    if (const auto mark = played_.Newest()) return *mark;
  }
}

bool PulseDevice::Connect(const pa_channel_map& map, const engine::OutputRequest& request) {
  pa_context* context = connection_->Ready();
  if (context == nullptr) return false;
  stream_ = NewStream(context, info_.name, rate_, map);
  if (stream_ == nullptr) return false;
  SetCallbacks();
  const pa_buffer_attr buffer = BufferOf(request.buffer_ms, request.period_ms);
  unsigned flags = PA_STREAM_ADJUST_LATENCY | PA_STREAM_AUTO_TIMING_UPDATE | PA_STREAM_INTERPOLATE_TIMING |
                   PA_STREAM_NO_REMAP_CHANNELS | PA_STREAM_NO_REMIX_CHANNELS;
  if (request.stays) flags |= PA_STREAM_DONT_MOVE;
  if (pa_stream_connect_playback(stream_, info_.id.c_str(), &buffer, static_cast<pa_stream_flags_t>(flags),
                                 nullptr, nullptr) < 0) {
    return false;
  }
  // A refused stream is taken apart by its own callback.
  connection_->WaitUntil(
      [this] { return stream_ == nullptr || pa_stream_get_state(stream_) != PA_STREAM_CREATING; });
  if (stream_ == nullptr || pa_stream_get_state(stream_) != PA_STREAM_READY) return false;
  // One that only slept for want of sound has been woken by the stream.
  if (pa_stream_is_suspended(stream_) > 0) return false;
  WatchForStall();
  return true;
}

pa_buffer_attr PulseDevice::BufferOf(int buffer_ms, int period_ms) const {
  pa_buffer_attr buffer{};
  buffer.maxlength = static_cast<std::uint32_t>(-1);
  buffer.tlength = BytesFor(rate_, buffer_ms, frame_bytes_);
  buffer.prebuf = static_cast<std::uint32_t>(-1);
  buffer.minreq = BytesFor(rate_, period_ms, frame_bytes_);
  buffer.fragsize = static_cast<std::uint32_t>(-1);
  return buffer;
}

void PulseDevice::SetBuffer(int buffer_ms, int period_ms) noexcept {
  constexpr int kLongest = 1000;
  const auto length = static_cast<std::uint32_t>(std::clamp(buffer_ms, 1, kLongest));
  const auto period = static_cast<std::uint32_t>(std::clamp(period_ms, 1, kLongest));
  wanted_buffer_.store(length << 16 | period, std::memory_order_relaxed);
}

void PulseDevice::FitBuffer() {
  constexpr std::uint32_t kPeriod = 0xFFFF;
  const std::uint32_t wanted = wanted_buffer_.load(std::memory_order_relaxed);
  if (wanted == 0 || std::exchange(buffer_, wanted) == wanted) return;
  const pa_buffer_attr buffer = BufferOf(static_cast<int>(wanted >> 16), static_cast<int>(wanted & kPeriod));
  pa_operation* setting = pa_stream_set_buffer_attr(stream_, &buffer, nullptr, nullptr);
  if (setting != nullptr) pa_operation_unref(setting);
}

void PulseDevice::SetCallbacks() {
  pa_stream_set_state_callback(
      stream_, [](pa_stream*, void* device) { static_cast<PulseDevice*>(device)->StateChanged(); }, this);
  pa_stream_set_write_callback(
      stream_,
      [](pa_stream*, std::size_t bytes, void* device) { static_cast<PulseDevice*>(device)->Write(bytes); },
      this);
  pa_stream_set_latency_update_callback(
      stream_, [](pa_stream*, void* device) { static_cast<PulseDevice*>(device)->MarkPlayed(); }, this);
  pa_stream_set_underflow_callback(
      stream_, [](pa_stream*, void* device) { ++static_cast<PulseDevice*>(device)->gaps_; }, this);
  pa_stream_set_moved_callback(
      stream_, [](pa_stream*, void* device) { static_cast<PulseDevice*>(device)->Moved(); }, this);
}

std::string PulseDevice::MovedTo() const {
  support::MutexLock lock(moved_mutex_);
  return moved_to_;
}

void PulseDevice::Moved() {
  const char* name = pa_stream_get_device_name(stream_);
  const std::string now = name == nullptr ? "" : name;
  if (now == info_.id || now == MovedTo()) return Stay(now);
  // Silence until it is known why: nothing of the head-phones' in the hall, nor the other way round.
  const auto answer = [](pa_context*, const pa_sink_info* sink, int end, void* self) {
    if (sink != nullptr || end != 0) static_cast<PulseDevice*>(self)->OwnSinkIsThere(sink != nullptr);
  };
  Ask(pa_context_get_sink_info_by_name(pa_stream_get_context(stream_), info_.id.c_str(), answer, this));
}

void PulseDevice::OwnSinkIsThere(bool there) {
  if (question_ == nullptr) return;  // the list's end, after its one entry
  if (!there) return Lose();
  const auto answer = [](pa_context*, const pa_server_info* server, void* self) {
    const char* id = server == nullptr ? nullptr : server->default_sink_name;
    static_cast<PulseDevice*>(self)->DefaultIs(id == nullptr ? "" : id);
  };
  Ask(pa_context_get_server_info(pa_stream_get_context(stream_), answer, this));
}

void PulseDevice::DefaultIs(const std::string& id) {
  const std::string before = std::exchange(default_id_, id);
  const char* now = pa_stream_get_device_name(stream_);
  if (now == nullptr) return Lose();
  if (id != now || id == before) return Stay(now);
  // It went along with a default that was changed; the move back is told as a move, too.
  DropQuestion();
  const auto done = [](pa_context*, int success, void* self) {
    if (success == 0) static_cast<PulseDevice*>(self)->Lose();
  };
  Ask(pa_context_move_sink_input_by_name(pa_stream_get_context(stream_), pa_stream_get_index(stream_),
                                         info_.id.c_str(), done, this));
}

void PulseDevice::Stay(const std::string& id) {
  DropQuestion();
  {
    support::MutexLock lock(moved_mutex_);
    moved_to_ = id == info_.id ? "" : id;
  }
  Write(pa_stream_writable_size(stream_));
}

void PulseDevice::Ask(pa_operation* question) {
  DropQuestion();
  question_ = question;
  if (question == nullptr) Lose();
}

void PulseDevice::DropQuestion() {
  if (question_ == nullptr) return;
  pa_operation_cancel(question_);
  pa_operation_unref(std::exchange(question_, nullptr));
}

void PulseDevice::WatchForStall() {
  last_asked_ = suspended_since_ = support::SteadyClock().Now();
  const auto look = [](pa_mainloop_api*, pa_time_event* event, const timeval*, void* self) {
    static_cast<PulseDevice*>(self)->LookForStall(event);
  };
  watch_ = pa_context_rttime_new(pa_stream_get_context(stream_), pa_rtclock_now() + kLookEvery, look, this);
}

void PulseDevice::LookForStall(pa_time_event* watch) {
  const support::TimePoint now = support::SteadyClock().Now();
  if (pa_stream_is_suspended(stream_) <= 0) suspended_since_ = now;
  if (now - last_asked_ > kStall || now - suspended_since_ > kSuspended) return Lose();
  pa_context_rttime_restart(pa_stream_get_context(stream_), watch, pa_rtclock_now() + kLookEvery);
}

void PulseDevice::StateChanged() {
  if (!PA_STREAM_IS_GOOD(pa_stream_get_state(stream_))) Lose();
  connection_->Loop().Signal();
}

void PulseDevice::Write(std::size_t bytes) {
  last_asked_ = support::SteadyClock().Now();
  MarkPlayed();
  FitBuffer();
  if (question_ != nullptr) return;
  // Everything that is asked for, not whole periods: less makes regular gaps.
  while (bytes >= frame_bytes_ && WriteChunk(bytes)) {
  }
}

bool PulseDevice::WriteChunk(std::size_t& bytes) {
  const std::size_t wanted = std::min(bytes, kChunkFrames * frame_bytes_);
  std::size_t room = wanted;
  void* data = nullptr;
  if (pa_stream_begin_write(stream_, &data, &room) < 0 || data == nullptr) return false;
  const std::size_t frames = std::min(room, wanted) / frame_bytes_;
  if (frames == 0) {
    pa_stream_cancel_write(stream_);
    return false;
  }
  source_.Render({static_cast<float*>(data), frames * info_.speakers.size()});
  rendered_ += static_cast<std::int64_t>(frames);
  bytes -= frames * frame_bytes_;
  return pa_stream_write(stream_, data, frames * frame_bytes_, nullptr, 0, PA_SEEK_RELATIVE) == 0;
}

void PulseDevice::MarkPlayed() {
  pa_usec_t time = 0;
  if (pa_stream_get_time(stream_, &time) == 0) {
    const std::int64_t frames = static_cast<std::int64_t>(time) * rate_ / 1'000'000;
    heard_ = std::clamp(frames, heard_, rendered_);
  }
  played_.Write({heard_, support::SteadyClock().Now()});
}

void PulseDevice::Lose() {
  if (lost_.exchange(true, std::memory_order_acq_rel)) return;
  EndPulling();
  connection_->Changed();
}

void PulseDevice::EndPulling() {
  if (watch_ != nullptr) connection_->Loop().Api()->time_free(std::exchange(watch_, nullptr));
  DropQuestion();
  if (stream_ == nullptr) return;
  pa_stream* stream = std::exchange(stream_, nullptr);
  pa_stream_set_state_callback(stream, nullptr, nullptr);
  pa_stream_set_write_callback(stream, nullptr, nullptr);
  pa_stream_set_latency_update_callback(stream, nullptr, nullptr);
  pa_stream_set_underflow_callback(stream, nullptr, nullptr);
  pa_stream_set_moved_callback(stream, nullptr, nullptr);
  if (PA_STREAM_IS_GOOD(pa_stream_get_state(stream))) pa_stream_disconnect(stream);
  pa_stream_unref(stream);
}

}  // namespace platform::audio
