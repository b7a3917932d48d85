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
  std::size_t at = std::min(kChunkHeader + std::max<std::size_t>(*length, kShortestHeader), bytes.size());
  while (at < bytes.size()) {
    const std::string_view name = bytes.substr(at, 4);
    const auto size = BigEndianAt(bytes, at + 4, 4);
    if (!IsChunkName(name) || !size) {
      at = bytes.find("MTrk", at + 1);  // a length was wrong: the next track shows where things go on
      continue;
    }
    const std::string_view content = bytes.substr(at + kChunkHeader, *size);
    if (name == "MTrk") file.tracks.push_back(content);
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
      if (event.data1 == 0x2F) at_ = track_.size();
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
