// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace karaoke {

inline constexpr std::size_t kChunkHeader = 8;  ///< four letters and a length

/// The chunks of a standard MIDI file: views into the file's bytes.
struct MidiFile {
  int format = 1;    ///< 0 one track, 1 tracks side by side, 2 one after the other
  int division = 0;  ///< as it stands: ticks a quarter note, or with bit 15 frames and ticks a frame
  std::vector<std::string_view> tracks;
  std::vector<std::string_view> xf_words;  ///< XFKM chunks: words in a track of their own, behind the others
};

/// Takes what is there: a track that is cut short counts, other chunks are passed over, the number of tracks
/// in the header is not believed, and neither is a length that would swallow the next track or leave some of
/// its own out. Also inside a RIFF file. Nothing when there is no header.
[[nodiscard]] std::optional<MidiFile> ReadMidiFile(std::string_view bytes);

/// Big-endian number of up to four bytes at a place; bytes behind the end are nothing.
[[nodiscard]] std::optional<std::uint32_t> BigEndianAt(std::string_view bytes, std::size_t at,
                                                       std::size_t count);

/// One event of a track.
struct TrackEvent {
  std::int64_t tick = 0;    ///< from the track's start
  std::size_t at = 0;       ///< where its status, or its first data byte, stands in the track
  std::uint8_t status = 0;  ///< with the channel; 0xFF is a meta event, 0xF0 and 0xF7 system exclusive
  std::uint8_t data1 = 0;   ///< of a meta event its type
  std::uint8_t data2 = 0;
  std::string_view text;  ///< of meta and system exclusive events: what follows the length

  [[nodiscard]] bool IsMeta(std::uint8_t type) const { return status == 0xFF && data1 == type; }
};

/// Walks the events of one track and never leaves it.
///
/// Real files are taken as they are: running status goes on across meta and system exclusive events, status
/// bytes that no file may hold are passed over, a text that is longer than the track is cut. The walk ends
/// with the track, with its end event, or where a data byte has no status.
class TrackReader {
 public:
  /// Ticks beyond this are taken for this: 2^38, at 2^24 microseconds a quarter note still below 2^62.
  static constexpr std::int64_t kLastTick = std::int64_t{1} << 38;

  explicit TrackReader(std::string_view track) : track_(track) {}

  [[nodiscard]] std::optional<TrackEvent> Next();
  /// Behind the event that was read last; the whole track once there is none left.
  [[nodiscard]] std::size_t At() const { return at_; }

 private:
  [[nodiscard]] bool AtEnd() const { return ended_ || at_ >= track_.size(); }
  [[nodiscard]] std::uint8_t Byte() { return static_cast<std::uint8_t>(track_[at_++]); }
  /// At most four bytes, as the format has it; less where the track ends.
  [[nodiscard]] std::uint32_t VariableLength();
  [[nodiscard]] std::string_view Text();
  [[nodiscard]] bool ReadChannelEvent(TrackEvent& event);

  std::string_view track_;
  std::size_t at_ = 0;
  std::int64_t tick_ = 0;
  std::uint8_t running_ = 0;
  bool ended_ = false;
};

}  // namespace karaoke
