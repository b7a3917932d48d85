// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/ShowRecords.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace dmx {
namespace {

int MostRecords(const Scenes& scenes) {
  int records = 0;
  for (const Scene& scene : scenes) {
    for (const SceneStep& step : scene.Steps) records = std::max(records, step.SceneChannel.count());
  }
  return records;
}

int SpanOf(const DMXfilename& fixture) {
  return std::max<int>(fixture.NumberOf, 0);
}

/// The records of one fixture, which stand side by side.
struct Span {
  int fixture;
  int start;
  int count;
};

/// In the order of the records: by start channel, and else as the file has them.
std::vector<Span> SpansOf(const Show& show, RecordOrder order) {
  std::vector<Span> spans;
  auto aside = show.aside.begin();
  const auto add_aside = [&](int before) {
    for (; aside != show.aside.end() && aside->behind <= before; ++aside) {
      const int number = static_cast<int>(aside - show.aside.begin()) + 1;
      if (order == RecordOrder::Spans)
        spans.push_back({-number, aside->fixture.StartChannel, SpanOf(aside->fixture)});
    }
  };
  int position = 0;
  for (const DMXfilename& fixture : show.fixtures) {
    add_aside(position);
    spans.push_back({++position, fixture.StartChannel, SpanOf(fixture)});
  }
  add_aside(position);
  std::stable_sort(spans.begin(), spans.end(),
                   [](const Span& a, const Span& b) { return a.start < b.start; });
  return spans;
}

std::vector<RecordPlace> PlacesOfSpans(const Show& show, const Patch& patch, RecordOrder order) {
  std::vector<RecordPlace> places;
  for (const Span& span : SpansOf(show, order)) {
    for (int channel = 1; channel <= span.count; ++channel) {
      const int place = span.start + channel - 1;
      const bool there = place >= 1 && place <= kUniverseChannels;
      // What its file has no longer, or another fixture holds now, is sent nowhere.
      const bool held =
          there && patch.At(place).fixture == span.fixture && patch.At(place).channel == channel;
      places.push_back({span.fixture, channel, held ? place : 0});
    }
  }
  return places;
}

RecordPlace PlaceAt(const Patch& patch, int channel) {
  const PatchedChannel& held = patch.At(channel);
  return {held.fixture, held.channel, channel};
}

}  // namespace

RecordOrder OrderOf(const Show& show, const Patch& patch) {
  const int records = MostRecords(show.scenes);
  std::int64_t shown = 0;
  for (const DMXfilename& fixture : show.fixtures) shown += SpanOf(fixture);
  std::int64_t all = shown;
  for (const SetAside& aside : show.aside) all += SpanOf(aside.fixture);
  if (records > 0 && all == records) return RecordOrder::Spans;
  if (records > 0 && shown == records) return RecordOrder::ShownSpans;
  const bool enough = records <= static_cast<int>(patch.Channels().size());
  return enough ? RecordOrder::Patched : RecordOrder::FromOne;
}

std::vector<RecordPlace> RecordPlaces(const Show& show, const Patch& patch, RecordOrder order, int last) {
  if (SpansTell(order)) return PlacesOfSpans(show, patch, order);
  std::vector<RecordPlace> places;
  if (order == RecordOrder::Patched) {
    for (const int channel : patch.Channels()) places.push_back(PlaceAt(patch, channel));
    return places;
  }
  last = std::min(std::max(last, MostRecords(show.scenes)), kUniverseChannels);
  for (int channel = 1; channel <= last; ++channel) places.push_back(PlaceAt(patch, channel));
  return places;
}

std::vector<int> RecordChannels(const Show& show, const Patch& patch) {
  return RecordChannels(RecordPlaces(show, patch, OrderOf(show, patch)));
}

std::vector<int> RecordChannels(const std::vector<RecordPlace>& places) {
  std::vector<int> channels;
  channels.reserve(places.size());
  for (const RecordPlace& place : places) channels.push_back(place.on_the_wire);
  return channels;
}

void ArrangeRecords(Scenes& scenes, std::span<const int> sources) {
  for (Scene& scene : scenes) {
    for (SceneStep& step : scene.Steps) {
      SceneChannel arranged;
      arranged.Reserve(sources.size());
      for (const int source : sources) {
        const Sliders* record = step.SceneChannel.Item(source);
        arranged.Add(record != nullptr ? *record : Sliders{});
      }
      step.SceneChannel = std::move(arranged);
    }
  }
}

}  // namespace dmx
