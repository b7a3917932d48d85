// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/library/SeratoBlocks.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

namespace platform::library {
namespace {

using catalogue::ForeignCue;

constexpr int kPads = 8;

/// Big-endian values one after the other; whatever lies behind the end is 0, and told of.
class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : bytes_(bytes) {}

  [[nodiscard]] bool Short() const { return short_; }
  [[nodiscard]] bool AtEnd() const { return bytes_.empty(); }
  std::string_view Take(std::size_t count) {
    if (count > bytes_.size()) short_ = true;
    const std::string_view taken = bytes_.substr(0, count);
    bytes_.remove_prefix(taken.size());
    return taken;
  }
  unsigned Byte() {
    const std::string_view one = Take(1);
    return one.empty() ? 0 : static_cast<unsigned char>(one[0]);
  }
  std::uint32_t Number() {
    std::uint32_t number = 0;
    for (int i = 0; i < 4; ++i) number = number << 8 | Byte();
    return number;
  }
  /// Of four bytes with seven bits each.
  std::uint32_t Sevens() {
    std::uint32_t number = 0;
    for (int i = 0; i < 4; ++i) number = number << 7 | (Byte() & 0x7F);
    return number;
  }
  double Real() { return std::bit_cast<float>(Number()); }
  /// Up to its NUL, which must be there.
  std::string_view Text() {
    const std::size_t end = bytes_.find('\0');
    if (end == std::string_view::npos) short_ = true;
    const std::string_view text = Take(std::min(end, bytes_.size()));
    if (!bytes_.empty()) bytes_.remove_prefix(1);
    return text;
  }

 private:
  std::string_view bytes_;
  bool short_ = false;
};

int BitsOf(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  return c == '+' ? 62 : c == '/' ? 63 : -1;
}

std::string ColourOf(Bytes& bytes) {
  const int red = static_cast<int>(bytes.Byte());
  const int green = static_cast<int>(bytes.Byte());
  return Colour(red, green, static_cast<int>(bytes.Byte()));
}

double Milliseconds(std::uint32_t number) {
  return number / 1000.0;
}

/// Kept by their pads, so that one block can win over the other.
using Pads = std::vector<std::pair<int, ForeignCue>>;

void Put(Pads& pads, ForeignCue cue, bool wins) {
  const int pad = cue.number;
  const auto same = std::find_if(pads.begin(), pads.end(), [&](const auto& one) { return one.first == pad; });
  if (same == pads.end()) {
    if (pads.size() < kMostCues) pads.emplace_back(pad, std::move(cue));
  } else if (wins) {
    // The older block knows no names.
    cue.name = same->second.name;
    same->second = std::move(cue);
  }
}

void TakeEntry(std::string_view kind, Bytes data, Pads& pads, bool& damaged) {
  ForeignCue cue;
  (void)data.Byte();
  const int index = static_cast<int>(data.Byte());
  cue.start = Milliseconds(data.Number());
  if (kind == "CUE") {
    cue.number = index;
    (void)data.Byte();
    cue.colour = ColourOf(data);
    (void)data.Take(2);
  } else {
    cue.kind = ForeignCue::Kind::Loop;
    cue.number = kPads + index;
    cue.end = Milliseconds(data.Number());
    (void)data.Take(4);  // no place
    (void)data.Byte();   // alpha
    cue.colour = ColourOf(data);
    (void)data.Take(2);  // locked
  }
  if (data.Short()) damaged = true;
  if (data.Short()) return;
  cue.name = Cut(data.Text());
  Put(pads, std::move(cue), false);
}

bool TakeMarkers2(std::string_view block, Pads& pads) {
  Bytes head(block);
  if (head.Take(2) != "\x01\x01") return false;
  const std::string plain = Base64(head.Text());
  Bytes bytes(plain);
  if (bytes.Take(2) != "\x01\x01") return false;
  bool damaged = false;
  while (!bytes.AtEnd()) {
    const std::string_view kind = bytes.Text();
    if (kind.empty() || bytes.Short()) break;
    const std::uint32_t size = bytes.Number();
    const std::string_view data = bytes.Take(size);
    if (bytes.Short()) damaged = true;
    if (bytes.Short()) break;
    if (kind == "CUE" || kind == "LOOP") TakeEntry(kind, Bytes(data), pads, damaged);
  }
  return !damaged;
}

bool TakeMarkers(std::string_view block, Pads& pads) {
  constexpr std::uint32_t kCues = 5;
  Bytes bytes(block);
  if (bytes.Take(2) != "\x02\x05") return false;
  const std::uint32_t count = bytes.Number();
  for (std::uint32_t i = 0; i < count && !bytes.AtEnd(); ++i) {
    const bool start_set = bytes.Byte() != 0x7F;
    ForeignCue cue;
    cue.start = Milliseconds(bytes.Sevens());
    const bool end_set = bytes.Byte() != 0x7F;
    cue.end = Milliseconds(bytes.Sevens());
    (void)bytes.Take(6);
    const std::uint32_t colour = bytes.Sevens();
    const unsigned type = bytes.Byte();
    (void)bytes.Byte();
    if (bytes.Short()) return false;
    if (!start_set || (type != 1 && type != 3)) continue;
    const bool loop = type == 3;
    if (loop && !end_set) continue;
    cue.kind = loop ? ForeignCue::Kind::Loop : ForeignCue::Kind::Cue;
    cue.number = static_cast<int>(loop && i >= kCues ? kPads + i - kCues : std::min<std::uint32_t>(i, 99));
    cue.colour =
        Colour(static_cast<int>(colour >> 16), static_cast<int>(colour >> 8), static_cast<int>(colour));
    Put(pads, std::move(cue), true);
  }
  return !bytes.Short();
}

bool TakeBeatgrid(std::string_view block, catalogue::ForeignTrack& track) {
  Bytes bytes(block);
  if (bytes.Take(2) != std::string_view("\x01\0", 2)) return false;
  const std::uint32_t count = bytes.Number();
  int beat = 1;
  double from = 0;
  std::uint32_t beats = 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    const double place = bytes.Real();
    const bool last = i + 1 == count;
    const double bpm = last ? bytes.Real() : 0;
    const std::uint32_t until_next = last ? 0 : bytes.Number();
    if (bytes.Short() || !std::isfinite(place) || !std::isfinite(bpm)) return false;
    if (i > 0) {
      if (beats == 0 || !(place > from)) return false;
      Gathered::AddTempo(track, {from, 60.0 * beats / (place - from), beat});
      beat = 1 + static_cast<int>((static_cast<std::uint32_t>(beat - 1) + beats) % 4);
    }
    if (last) Gathered::AddTempo(track, {place, bpm, beat});
    from = place;
    beats = until_next;
  }
  return true;
}

}  // namespace

std::string Base64(std::string_view text) {
  std::string plain;
  std::uint32_t bits = 0;
  int held = 0;
  for (const char c : text) {
    if (c == '\n' || c == '\r') continue;
    const int six = BitsOf(c);
    if (six < 0) break;
    bits = bits << 6 | static_cast<std::uint32_t>(six);
    held += 6;
    if (held < 8) continue;
    held -= 8;
    plain += static_cast<char>(bits >> held & 0xFF);
  }
  // A single letter over is the first six bits of a byte that was cut.
  if (held == 6) plain += static_cast<char>(bits << 2 & 0xFF);
  return plain;
}

std::string Unwrapped(std::string_view text) {
  const std::string plain = Base64(text);
  Bytes bytes(plain);
  if (bytes.Text() != "application/octet-stream") return {};
  (void)bytes.Text();  // the name of a file: none
  const std::string_view name = bytes.Text();
  if (bytes.Short() || !name.starts_with("Serato ")) return {};
  return plain.substr(static_cast<std::size_t>(name.data() - plain.data()) + name.size() + 1);
}

std::vector<std::string> TakeBlocks(const SeratoBlocks& blocks, Gathered& gathered,
                                    catalogue::ForeignTrack& track) {
  std::vector<std::string> damaged;
  Pads pads;
  if (!blocks.markers2.empty() && !TakeMarkers2(blocks.markers2, pads))
    damaged.emplace_back("Serato Markers2");
  if (!blocks.markers.empty() && !TakeMarkers(blocks.markers, pads)) damaged.emplace_back("Serato Markers_");
  if (!blocks.beatgrid.empty() && !TakeBeatgrid(blocks.beatgrid, track))
    damaged.emplace_back("Serato BeatGrid");
  std::stable_sort(pads.begin(), pads.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (auto& [pad, cue] : pads) gathered.AddCue(track, std::move(cue));
  if (!track.grid.empty()) track.bpm = track.grid.front().bpm;
  return damaged;
}

}  // namespace platform::library
