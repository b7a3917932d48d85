// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/testing/MonitorRecorder.h"

#include <pulse/pulseaudio.h>

#include <algorithm>

#include "platform/audio/PulseConnection.h"

namespace platform::audio::testing {

struct MonitorRecorder::Stream {
  explicit Stream(const std::string& server) : connection(server) {}

  void Open(const std::string& source, int channels);
  void Read();
  void Keep(std::span<const std::int16_t> samples);

  PulseConnection connection;
  pa_stream* stream = nullptr;
  std::size_t channels = 1;
  std::size_t sounding_frames = 0;
  std::vector<std::int16_t> samples;
};

void MonitorRecorder::Stream::Open(const std::string& source, int channel_count) {
  PulseLock lock(connection.Loop());
  pa_context* context = connection.Ready();
  if (context == nullptr) return;
  channels = static_cast<std::size_t>(channel_count);
  const pa_sample_spec format{PA_SAMPLE_S16LE, 44100, static_cast<std::uint8_t>(channel_count)};
  pa_channel_map map;
  pa_channel_map_init_extend(&map, format.channels, PA_CHANNEL_MAP_AUX);
  stream = pa_stream_new(context, "monitor", &format, &map);
  pa_stream_set_read_callback(
      stream, [](pa_stream*, std::size_t, void* self) { static_cast<Stream*>(self)->Read(); }, this);
  pa_stream_set_state_callback(
      stream, [](pa_stream*, void* self) { static_cast<Stream*>(self)->connection.Loop().Signal(); }, this);
  pa_buffer_attr buffer{};
  buffer.maxlength = static_cast<std::uint32_t>(-1);
  buffer.fragsize = static_cast<std::uint32_t>(441 * pa_frame_size(&format));
  // Channel for channel, whatever the sink calls them.
  const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_NO_REMAP_CHANNELS |
                                                    PA_STREAM_NO_REMIX_CHANNELS | PA_STREAM_ADJUST_LATENCY);
  if (pa_stream_connect_record(stream, source.c_str(), &buffer, flags) < 0) return;
  connection.WaitUntil([this] { return pa_stream_get_state(stream) != PA_STREAM_CREATING; });
}

void MonitorRecorder::Stream::Read() {
  const void* data = nullptr;
  std::size_t bytes = 0;
  while (pa_stream_readable_size(stream) > 0 && pa_stream_peek(stream, &data, &bytes) == 0 && bytes > 0) {
    const std::size_t count = bytes / sizeof(std::int16_t);
    // No data is a hole in the recording: silence of that length.
    if (data == nullptr) {
      samples.resize(samples.size() + count);
    } else {
      Keep({static_cast<const std::int16_t*>(data), count});
    }
    pa_stream_drop(stream);
  }
  connection.Loop().Signal();
}

void MonitorRecorder::Stream::Keep(std::span<const std::int16_t> fresh) {
  for (std::size_t frame = 0; frame + channels <= fresh.size(); frame += channels) {
    const auto one = fresh.subspan(frame, channels);
    if (std::any_of(one.begin(), one.end(), [](std::int16_t s) { return s != 0; })) ++sounding_frames;
  }
  samples.insert(samples.end(), fresh.begin(), fresh.end());
}

MonitorRecorder::MonitorRecorder(const std::string& server, const std::string& sink, int channels)
    : channels_(channels), stream_(std::make_unique<Stream>(server)) {
  stream_->Open(sink + ".monitor", channels);
}

MonitorRecorder::~MonitorRecorder() {
  PulseLock lock(stream_->connection.Loop());
  if (stream_->stream == nullptr) return;
  pa_stream_set_read_callback(stream_->stream, nullptr, nullptr);
  pa_stream_set_state_callback(stream_->stream, nullptr, nullptr);
  pa_stream_disconnect(stream_->stream);
  pa_stream_unref(stream_->stream);
}

bool MonitorRecorder::Recording() const {
  PulseLock lock(stream_->connection.Loop());
  return stream_->stream != nullptr && pa_stream_get_state(stream_->stream) == PA_STREAM_READY;
}

bool MonitorRecorder::AwaitSound(std::size_t frames, std::chrono::milliseconds limit) {
  if (!Recording()) return false;
  PulseLock lock(stream_->connection.Loop());
  const auto enough = [&] { return stream_->sounding_frames >= frames; };
  const auto until = std::chrono::steady_clock::now() + limit;
  while (!enough() && std::chrono::steady_clock::now() < until) stream_->connection.WaitUntil(enough);
  return enough();
}

std::vector<std::int16_t> MonitorRecorder::Samples() const {
  PulseLock lock(stream_->connection.Loop());
  return stream_->samples;
}

std::vector<std::int16_t> MonitorRecorder::Channel(int channel) const {
  const std::vector<std::int16_t> all = Samples();
  std::vector<std::int16_t> one;
  for (std::size_t i = static_cast<std::size_t>(channel); i < all.size();
       i += static_cast<std::size_t>(channels_)) {
    one.push_back(all[i]);
  }
  return one;
}

}  // namespace platform::audio::testing
