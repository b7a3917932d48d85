// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/PulseSinks.h"

#include <algorithm>
#include <optional>
#include <string>

namespace platform::audio {
namespace {

using engine::Speaker;

/// Nothing when the server does not answer; empty when it has no default.
std::optional<std::string> DefaultSink(PulseConnection& connection, pa_context* context) {
  std::string name;
  const auto take = [](pa_context*, const pa_server_info* server, void* to) {
    if (server != nullptr && server->default_sink_name != nullptr) {
      *static_cast<std::string*>(to) = server->default_sink_name;
    }
  };
  if (!connection.Finish(pa_context_get_server_info(context, take, &name))) return std::nullopt;
  return name;
}

void TakeSink(pa_context*, const pa_sink_info* sink, int end, void* to) {
  if (end != 0 || sink == nullptr) return;
  PulseSink taken{};
  taken.info.id = sink->name;
  taken.info.name = sink->description != nullptr ? sink->description : sink->name;
  taken.map = sink->channel_map;
  taken.info.suspended = sink->state == PA_SINK_SUSPENDED;
  for (int i = 0; i < sink->channel_map.channels; ++i) {
    taken.info.speakers.push_back(SpeakerOf(sink->channel_map.map[i]));
  }
  static_cast<std::vector<PulseSink>*>(to)->push_back(std::move(taken));
}

}  // namespace

std::vector<PulseSink> AskForSinks(PulseConnection& connection) {
  pa_context* context = connection.Ready();
  if (context == nullptr) return {};
  const std::optional<std::string> default_sink = DefaultSink(connection, context);
  if (!default_sink) return {};
  std::vector<PulseSink> sinks;
  if (!connection.Finish(pa_context_get_sink_info_list(context, &TakeSink, &sinks))) return {};
  for (PulseSink& sink : sinks) sink.info.is_default = sink.info.id == default_sink;
  std::stable_partition(sinks.begin(), sinks.end(), [](const PulseSink& s) { return s.info.is_default; });
  return sinks;
}

Speaker SpeakerOf(pa_channel_position_t position) {
  switch (position) {
    case PA_CHANNEL_POSITION_MONO:
      return Speaker::Mono;
    case PA_CHANNEL_POSITION_FRONT_LEFT:
      return Speaker::FrontLeft;
    case PA_CHANNEL_POSITION_FRONT_RIGHT:
      return Speaker::FrontRight;
    case PA_CHANNEL_POSITION_FRONT_CENTER:
      return Speaker::FrontCentre;
    case PA_CHANNEL_POSITION_LFE:
      return Speaker::Lfe;
    case PA_CHANNEL_POSITION_REAR_LEFT:
      return Speaker::RearLeft;
    case PA_CHANNEL_POSITION_REAR_RIGHT:
      return Speaker::RearRight;
    case PA_CHANNEL_POSITION_SIDE_LEFT:
      return Speaker::SideLeft;
    case PA_CHANNEL_POSITION_SIDE_RIGHT:
      return Speaker::SideRight;
    default:
      return Speaker::Other;
  }
}

}  // namespace platform::audio
