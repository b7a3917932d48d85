// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/SongEvents.h"

#include <algorithm>
#include <array>

#include "support/Sentences.h"

namespace karaoke {
namespace {

/// An event on its way into the song's order.
struct TickEvent {
  std::int64_t tick = 0;
  SongEvent event;
};

void CollectTrack(std::string_view track, std::int64_t start, SongEvents& song,
                  std::vector<TickEvent>& collected) {
  TrackReader reader(track);
  while (const auto event = reader.Next()) {
    TickEvent taken;
    taken.tick = start + event->tick;
    if (event->status == 0xF0) {
      taken.event.message.status = 0xF0;
      taken.event.exclusive = static_cast<std::uint32_t>(song.exclusives.size());
      song.exclusives.emplace_back(event->text);
    } else if (event->status < 0xF0) {
      taken.event.message = {event->status, event->data1, event->data2};
    } else {
      continue;
    }
    collected.push_back(taken);
  }
}

}  // namespace

support::Result<SongEvents> ReadSongEvents(std::string_view bytes) {
  constexpr std::size_t kLongest = 16 << 20;  // some million notes: more than any synthesiser plays
  const auto file = ReadMidiFile(bytes);
  if (!file) return support::Failed(support::ErrorCode::Malformed, support::Sentence::NotMidi);
  if (bytes.size() > kLongest) {
    return support::Failed(support::ErrorCode::Unsupported, support::Sentence::MidiTooLong);
  }
  auto times = ReadSongTimes(*file);
  if (!times) {
    return support::Failed(support::ErrorCode::Malformed, support::Sentence::MidiWithoutTicks);
  }
  SongEvents song;
  std::vector<TickEvent> collected;
  for (std::size_t i = 0; i < file->tracks.size(); ++i) {
    CollectTrack(file->tracks[i], times->track_starts[i], song, collected);
  }
  std::stable_sort(collected.begin(), collected.end(),
                   [](const TickEvent& a, const TickEvent& b) { return a.tick < b.tick; });
  song.events.reserve(collected.size());
  for (TickEvent& event : collected) {
    event.event.at = times->tempo.TimeOf(event.tick);
    song.events.push_back(event.event);
  }
  song.length = times->tempo.TimeOf(times->end);
  song.tempo = std::move(times->tempo);
  return song;
}

std::optional<std::size_t> FindMelodyChannel(const SongEvents& song, const std::vector<Syllable>& syllables) {
  constexpr Microseconds kNear{60'000};
  std::array<int, 16> hits{};
  std::array<int, 16> notes{};
  std::size_t next = 0;
  for (const SongEvent& event : song.events) {
    if (!event.message.IsNoteOn()) continue;
    const std::size_t channel = event.message.Channel();
    while (next < syllables.size() && syllables[next].at < event.at - kNear) ++next;
    ++notes[channel];
    if (next < syllables.size() && syllables[next].at <= event.at + kNear) ++hits[channel];
  }
  std::optional<std::size_t> best;
  const auto score = [&](std::size_t channel) { return 2 * hits[channel] - notes[channel]; };
  for (std::size_t channel = 0; channel < hits.size(); ++channel) {
    if (channel == 9 || 2 * hits[channel] < static_cast<int>(syllables.size()) || hits[channel] == 0)
      continue;
    if (!best || score(channel) > score(*best)) best = channel;
  }
  return best;
}

void DrumChannels::Follow(const ChannelMessage& message) {
  constexpr std::uint8_t kXgDrums = 127;
  constexpr std::uint8_t kGm2Drums = 120;
  if (message.Kind() != 0xB0 || message.data1 != 0 || message.Channel() == 9) return;
  drums_[message.Channel()] = message.data2 == kXgDrums || message.data2 == kGm2Drums;
}

void DrumChannels::FollowExclusive(std::string_view message) {
  if (IsSystemReset(message)) *this = DrumChannels();
  // Roland: data set, address 40 1n 15 is the use of part n for rhythm; part 0 is channel 10.
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(message[i]); };
  if (message.size() < 8 || byte(0) != 0x41 || byte(2) != 0x42 || byte(3) != 0x12) return;
  if (byte(4) != 0x40 || (byte(5) & 0xF0) != 0x10 || byte(6) != 0x15) return;
  const std::size_t part = byte(5) & 0x0F;
  drums_[part == 0 ? 9 : part <= 9 ? part - 1 : part] = byte(7) != 0;
}

bool IsSystemReset(std::string_view message) {
  const auto begins = [&](std::string_view start) { return message.substr(0, start.size()) == start; };
  using namespace std::string_view_literals;
  if (begins("\x7E"sv)) return message.size() >= 4 && message[2] == 9 && (message[3] == 1 || message[3] == 3);
  if (begins("\x43"sv)) return message.size() >= 7 && message.substr(2, 5) == "\x4C\x00\x00\x7E\x00"sv;
  return begins("\x41"sv) && message.size() >= 8 && message.substr(2, 6) == "\x42\x12\x40\x00\x7F\x00"sv;
}

}  // namespace karaoke
