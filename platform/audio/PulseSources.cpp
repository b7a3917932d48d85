// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/PulseSources.h"

#include <algorithm>
#include <string>
#include <utility>

namespace platform::audio {
namespace {

struct ListedSource {
  PulseSource source;
  std::string master;  ///< the source that it is made of
};

void TakeSource(pa_context*, const pa_source_info* source, int end, void* to) {
  if (end != 0 || source == nullptr) return;
  ListedSource taken{};
  engine::InputDeviceInfo& info = taken.source.info;
  info.id = source->name;
  info.name = source->description != nullptr ? source->description : source->name;
  info.channels = source->sample_spec.channels;
  info.sample_rate = static_cast<int>(source->sample_spec.rate);
  info.muted = source->mute != 0;
  if (source->monitor_of_sink_name != nullptr) info.monitor_of = source->monitor_of_sink_name;
  taken.source.map = source->channel_map;
  if (const char* master = pa_proplist_gets(source->proplist, "device.master_device")) taken.master = master;
  static_cast<std::vector<ListedSource>*>(to)->push_back(std::move(taken));
}

/// As far as sources are made of each other; a circle ends somewhere.
void FollowMasters(std::vector<ListedSource>& listed) {
  for (std::size_t pass = 0; pass < listed.size(); ++pass) {
    for (ListedSource& one : listed) {
      if (one.master.empty() || !one.source.info.monitor_of.empty()) continue;
      const auto master = std::find_if(listed.begin(), listed.end(), [&](const ListedSource& other) {
        return other.source.info.id == one.master;
      });
      if (master != listed.end()) one.source.info.monitor_of = master->source.info.monitor_of;
    }
  }
}

}  // namespace

std::vector<PulseSource> AskForSources(PulseConnection& connection) {
  pa_context* context = connection.Ready();
  if (context == nullptr) return {};
  std::string default_source;
  const auto take = [](pa_context*, const pa_server_info* server, void* to) {
    if (server != nullptr && server->default_source_name != nullptr) {
      *static_cast<std::string*>(to) = server->default_source_name;
    }
  };
  if (!connection.Finish(pa_context_get_server_info(context, take, &default_source))) return {};
  std::vector<ListedSource> listed;
  if (!connection.Finish(pa_context_get_source_info_list(context, &TakeSource, &listed))) return {};
  FollowMasters(listed);
  std::vector<PulseSource> sources;
  for (ListedSource& one : listed) {
    one.source.info.is_default = one.source.info.id == default_source;
    sources.push_back(std::move(one.source));
  }
  return sources;
}

}  // namespace platform::audio
