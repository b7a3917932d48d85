// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace karaoke::testing {

/// Bytes of a MIDI file from numbers; a test writes down what a file may hold.
[[nodiscard]] inline std::string Bytes(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values) bytes += static_cast<char>(value);
  return bytes;
}

[[nodiscard]] inline std::string Word32(std::uint32_t value) {
  return Bytes({static_cast<int>(value >> 24), static_cast<int>(value >> 16 & 0xFF),
                static_cast<int>(value >> 8 & 0xFF), static_cast<int>(value & 0xFF)});
}

[[nodiscard]] inline std::string Variable(std::uint32_t value) {
  std::string bytes = Bytes({static_cast<int>(value & 0x7F)});
  while ((value >>= 7) != 0) bytes.insert(0, Bytes({static_cast<int>(value & 0x7F) | 0x80}));
  return bytes;
}

/// The events of one track; deltas in ticks.
class TrackBytes {
 public:
  TrackBytes& Meta(std::uint32_t delta, int type, std::string_view text) {
    content_ += Variable(delta) + Bytes({0xFF, type}) + Variable(static_cast<std::uint32_t>(text.size()));
    content_ += text;
    return *this;
  }
  TrackBytes& Text(std::uint32_t delta, std::string_view text) { return Meta(delta, 1, text); }
  TrackBytes& Name(std::string_view text) { return Meta(0, 3, text); }
  TrackBytes& Tempo(std::uint32_t delta, std::uint32_t tempo) {
    return Meta(delta, 0x51, Word32(tempo).substr(1));
  }
  TrackBytes& Signature(int numerator, int code) { return Meta(0, 0x58, Bytes({numerator, code, 24, 8})); }
  TrackBytes& Event(std::uint32_t delta, std::initializer_list<int> bytes) {
    content_ += Variable(delta) + Bytes(bytes);
    return *this;
  }
  TrackBytes& Raw(std::string_view bytes) {
    content_ += bytes;
    return *this;
  }
  TrackBytes& End(std::uint32_t delta = 0) { return Meta(delta, 0x2F, ""); }
  [[nodiscard]] const std::string& Content() const { return content_; }
  [[nodiscard]] std::string Chunk() const {
    return "MTrk" + Word32(static_cast<std::uint32_t>(content_.size())) + content_;
  }

 private:
  std::string content_;
};

[[nodiscard]] inline std::string FileBytes(const std::vector<TrackBytes>& tracks, int division = 480,
                                           int format = 1) {
  std::string bytes = "MThd" + Word32(6) + Bytes({0, format, 0, static_cast<int>(tracks.size())});
  bytes += Bytes({division >> 8, division & 0xFF});
  for (const TrackBytes& track : tracks) bytes += track.Chunk();
  return bytes;
}

/// Tempo and signature as most songs have them: 4/4 at 120.
[[nodiscard]] inline TrackBytes UsualHead() {
  return TrackBytes().Signature(4, 2).Tempo(0, 500'000);
}

}  // namespace karaoke::testing
