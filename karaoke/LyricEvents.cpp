// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/LyricEvents.h"

#include <algorithm>
#include <array>

#include "karaoke/LyricText.h"
#include "support/Text.h"

namespace karaoke {
namespace {

constexpr std::uint8_t kText = 0x01, kTrackName = 0x03, kLyric = 0x05, kCue = 0x07;

/// What one track holds of one kind.
struct Candidate {
  std::vector<LyricEvent> events;
  std::size_t sung = 0;     ///< events with letters
  std::size_t moments = 0;  ///< different ticks of them
  std::int64_t last_tick = -1;
  bool named = false;  ///< the track says that it holds the words
  bool has_marks = false;

  void Add(std::int64_t tick, std::string_view text) {
    if (events.size() == kMostPieces) return;
    events.push_back({tick, text});
    has_marks = has_marks || BeginsLine(text);
    if (IsBlank(text.substr(BeginsLine(text) ? 1 : 0))) return;
    ++sung;
    moments += tick != last_tick ? 1 : 0;
    last_tick = tick;
  }
};

/// Some writers begin each text as if it were a file of UTF-8.
std::string_view WithoutByteOrderMark(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return text.substr(text.starts_with(kMark) ? kMark.size() : 0);
}

bool IsTag(std::string_view text) {
  return text.size() >= 2 && text[0] == '@' && text[1] >= 'A' && text[1] <= 'Z';
}

/// What sequencers write down for themselves, and texts that are too long to be sung.
bool IsNoise(std::string_view text) {
  constexpr std::size_t kLongest = 1000;
  constexpr std::array<std::string_view, 4> kNoise{" SYX", "Track-", "%-", "%+"};
  return text.size() > kLongest || std::any_of(kNoise.begin(), kNoise.end(), [&](std::string_view noise) {
           return text.find(noise) != std::string_view::npos;
         });
}

bool NamesWords(std::string_view name) {
  const std::string upper = support::ToUpper(support::Trim(name));
  return upper.starts_with("WORDS") || upper.starts_with("LYRIC");
}

/// The best of one kind over all tracks.
void KeepBetter(Candidate& best, Candidate candidate) {
  const bool better = candidate.named != best.named ? candidate.named : candidate.sung > best.sung;
  if (candidate.sung > 0 && (best.sung == 0 || better)) best = std::move(candidate);
}

class Search {
 public:
  void Track(std::string_view track, std::int64_t start) {
    Candidate text, lyric;
    TrackReader reader(track);
    while (const auto event = reader.Next()) {
      if (event->status != 0xFF) continue;
      const std::int64_t tick = start + event->tick;
      const std::string_view words = WithoutByteOrderMark(event->text);
      if (event->data1 == kTrackName && NamesWords(words)) text.named = lyric.named = true;
      if (event->data1 == kTrackName || event->data1 == kText) Tag(words);
      if (event->data1 == kCue) Cue(words);
      if (event->data1 == kLyric && !IsNoise(words)) lyric.Add(tick, words);
      if (event->data1 == kText && !IsTag(words) && !IsNoise(words)) text.Add(tick, words);
    }
    KeepBetter(text_, std::move(text));
    KeepBetter(lyric_, std::move(lyric));
  }

  [[nodiscard]] LyricEvents Found() && {
    const bool text = TextIsSung() && text_.sung >= lyric_.sung;
    found_.kind = text ? LyricEvents::Kind::Text : LyricEvents::Kind::Lyric;
    found_.events = std::move(text ? text_.events : lyric_.events);
    return std::move(found_);
  }

 private:
  void Tag(std::string_view text) {
    if (!IsTag(text)) return;
    tagged_ = true;
    if (text[1] == 'T') found_.titles.push_back(text.substr(2));
    if (text[1] == 'L') found_.language = support::Trim(text.substr(2));
  }

  /// "$Lyrc:1:312:JP" before the words of an XF chunk.
  void Cue(std::string_view text) {
    constexpr std::string_view kXfWords = "$Lyrc:";
    if (text.starts_with(kXfWords)) found_.language = text.substr(text.rfind(':') + 1);
  }

  /// Remarks are text events too: without a sign of karaoke it takes several, one after the other.
  [[nodiscard]] bool TextIsSung() const {
    constexpr std::size_t kEnough = 8;
    return text_.sung > 0 && (tagged_ || text_.named || text_.has_marks || text_.moments >= kEnough);
  }

  Candidate text_, lyric_;
  LyricEvents found_;
  bool tagged_ = false;
};

}  // namespace

LyricEvents FindLyricEvents(const MidiFile& file, const SongTimes& times) {
  Search search;
  for (std::size_t i = 0; i < file.tracks.size(); ++i) search.Track(file.tracks[i], times.track_starts[i]);
  for (const std::string_view chunk : file.xf_words) search.Track(chunk, 0);
  return std::move(search).Found();
}

}  // namespace karaoke
