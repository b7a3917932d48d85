// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/MidiFile.h"

#include <algorithm>

namespace karaoke {
namespace {

bool IsChunkName(std::string_view name) {
  return name.size() == 4 && std::all_of(name.begin(), name.end(), [](char c) {
           return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == ' ';
         });
}

/// The MIDI file itself when it is wrapped in a RIFF file.
std::string_view Unwrapped(std::string_view bytes) {
  constexpr std::size_t kFarthest = 4096;
  if (bytes.substr(0, 4) != "RIFF") return bytes;
  const std::size_t header = bytes.substr(0, kFarthest).find("MThd");
  return header == std::string_view::npos ? bytes : bytes.substr(header);
}

constexpr std::string_view kTrack = "MTrk";

/// Whether a track's header stands there and not four bytes of an event: an event follows it.
bool BeginsTrack(std::string_view bytes, std::size_t at) {
  if (bytes.substr(at, kTrack.size()) != kTrack) return false;
  std::size_t status = at + kChunkHeader;
  while (status < bytes.size() && status < at + kChunkHeader + 3 && (bytes[status] & 0x80) != 0) ++status;
  return ++status >= bytes.size() || (bytes[status] & 0x80) != 0;
}

/// Where the next track's header stands at or behind a place; the end when there is none.
std::size_t NextTrack(std::string_view bytes, std::size_t at) {
  at = bytes.find(kTrack, at);
  while (at != std::string_view::npos && !BeginsTrack(bytes, at)) at = bytes.find(kTrack, at + 1);
  return std::min(at, bytes.size());
}

/// Whether a chunk's header stands there, or the file is through. Letters of a text are none: what follows
/// them is no length.
bool ChunkOrEnd(std::string_view bytes, std::size_t at) {
  if (at >= bytes.size()) return true;
  const std::string_view name = bytes.substr(at, 4);
  const auto size = BigEndianAt(bytes, at + 4, 4);
  return IsChunkName(name) && size && (name == kTrack || *size <= bytes.size() - at - kChunkHeader);
}

/// A track's events: as many bytes as its header says where that can be, else up to the next track.
std::string_view TrackContent(std::string_view bytes, std::size_t at, std::size_t length) {
  const std::size_t told = at + std::min(length, bytes.size() - at);
  const std::string_view whole = bytes.substr(0, told);
  const bool fits = ChunkOrEnd(bytes, told);
  if (fits && NextTrack(whole, at) >= told) return whole.substr(at);
  // The events themselves tell how far it goes, so that four letters of a text are not taken for a header.
  TrackReader reader((fits ? whole : bytes).substr(at));
  std::size_t through = at;
  while (!BeginsTrack(bytes, through)) {
    const auto event = reader.Next();
    if (event) through = at + reader.At();
    if (!event || event->IsMeta(0x2F)) break;
  }
  if (!fits && through > told) return bytes.substr(at, through - at);
  // The next header may lie across the end that was told.
  const std::size_t next = NextTrack(bytes.substr(0, told + 2 * kChunkHeader), std::min(through, told));
  return bytes.substr(at, std::min(next, told) - at);
}

/// Data bytes of system messages, which have no place in a file.
int SystemDataBytes(std::uint8_t status) {
  return status == 0xF2 ? 2 : status == 0xF1 || status == 0xF3 ? 1 : 0;
}

}  // namespace

std::optional<std::uint32_t> BigEndianAt(std::string_view bytes, std::size_t at, std::size_t count) {
  if (at > bytes.size() || bytes.size() - at < count) return std::nullopt;
  std::uint32_t value = 0;
  for (const char byte : bytes.substr(at, count)) value = value << 8 | static_cast<std::uint8_t>(byte);
  return value;
}

std::optional<MidiFile> ReadMidiFile(std::string_view bytes) {
  constexpr std::size_t kShortestHeader = 6;
  bytes = Unwrapped(bytes);
  const auto length = BigEndianAt(bytes, 4, 4);
  const auto format = BigEndianAt(bytes, kChunkHeader, 2);
  const auto division = BigEndianAt(bytes, kChunkHeader + 4, 2);
  if (bytes.substr(0, 4) != "MThd" || !division) return std::nullopt;
  MidiFile file;
  file.format = static_cast<int>(*format);
  file.division = static_cast<int>(*division);
  std::size_t at = kChunkHeader + std::max<std::size_t>(*length, kShortestHeader);
  if (at >= bytes.size() || !ChunkOrEnd(bytes, at)) at = NextTrack(bytes, kChunkHeader + kShortestHeader);
  while (at < bytes.size()) {
    const std::string_view name = bytes.substr(at, 4);
    const auto size = BigEndianAt(bytes, at + 4, 4);
    if (!IsChunkName(name) || !size) {
      at = bytes.find(kTrack, at + 1);  // a length was wrong: the next track shows where things go on
      continue;
    }
    std::string_view content = bytes.substr(at + kChunkHeader, *size);
    if (name == kTrack) {
      content = TrackContent(bytes, at + kChunkHeader, *size);
      file.tracks.push_back(content);
    } else if (name == "XFKM") {
      file.xf_words.push_back(content);
    } else if (content.size() < *size) {
      at = NextTrack(bytes, at);  // it cannot be so long
      continue;
    }
    at += kChunkHeader + content.size();
  }
  return file;
}

std::uint32_t TrackReader::VariableLength() {
  std::uint32_t value = 0;
  for (int i = 0; i < 4 && !AtEnd(); ++i) {
    const std::uint8_t byte = Byte();
    value = value << 7 | (byte & 0x7FU);
    if (byte < 0x80) break;
  }
  return value;
}

std::string_view TrackReader::Text() {
  const std::uint32_t length = VariableLength();
  const std::string_view text = track_.substr(at_, length);
  at_ += text.size();
  return text;
}

bool TrackReader::ReadChannelEvent(TrackEvent& event) {
  const std::uint8_t kind = event.status & 0xF0;
  const std::size_t count = kind == 0xC0 || kind == 0xD0 ? 1 : 2;
  if (track_.size() - at_ < count) return false;
  event.data1 = Byte();
  event.data2 = count == 2 ? Byte() : 0;
  return event.data1 < 0x80 && event.data2 < 0x80;
}

std::optional<TrackEvent> TrackReader::Next() {
  while (!AtEnd()) {
    tick_ = std::min(tick_ + VariableLength(), kLastTick);
    if (AtEnd()) break;
    TrackEvent event;
    event.tick = tick_;
    event.at = at_;
    event.status = static_cast<std::uint8_t>(track_[at_]) < 0x80 ? running_ : Byte();
    if (event.status >= 0x80 && event.status < 0xF0) {
      running_ = event.status;
      if (ReadChannelEvent(event)) return event;
      break;
    }
    if (event.status == 0) break;
    if (event.status == 0xFF && !AtEnd()) {
      event.data1 = Byte();
      event.text = Text();
      ended_ = event.data1 == 0x2F;
      return event;
    }
    if (event.status == 0xF0 || event.status == 0xF7) {
      event.text = Text();
      return event;
    }
    at_ = std::min(at_ + static_cast<std::size_t>(SystemDataBytes(event.status)), track_.size());
  }
  at_ = track_.size();
  return std::nullopt;
}

}  // namespace karaoke
