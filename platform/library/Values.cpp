// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/library/Values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "support/Sentences.h"
#include "support/Text.h"

namespace platform::library {
namespace {

using catalogue::ForeignCue;
using catalogue::ForeignTempo;
using catalogue::ForeignTrack;

constexpr double kDay = 86'400;
constexpr double kSlowest = 20, kFastest = 1000;  // beats a minute
constexpr double kFits = 0.005;                   // seconds
constexpr double kSameTempo = 0.005;              // beats a minute

bool IsPlace(double seconds) {
  return seconds >= 0 && seconds <= kDay;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

/// A "%" that is none of an escape stands for itself.
std::string Unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int high = text[i] == '%' && i + 2 < text.size() ? HexDigit(text[i + 1]) : -1;
    const int low = high >= 0 ? HexDigit(text[i + 2]) : -1;
    plain += low >= 0 ? static_cast<char>(high * 16 + low) : text[i];
    if (low >= 0) i += 2;
  }
  return plain;
}

/// Of the bar, so many beats later.
int BeatAfter(int beat, double beats, int in_bar) {
  const double after = std::fmod(beat - 1 + beats, in_bar);
  return 1 + static_cast<int>(after < 0 ? after + in_bar : after);
}

void AddNote(catalogue::ForeignLibrary& library, support::Sentence sentence, std::size_t count) {
  if (count > 0) library.notes.push_back({sentence, {std::to_string(count)}});
}

}  // namespace

std::optional<double> Number(std::string_view text) {
  const auto number = support::ParseReal(support::Trim(text));
  return number && std::isfinite(*number) ? number : std::nullopt;
}

int Whole(std::string_view text, int otherwise) {
  const auto number = support::ParseInteger(support::Trim(text));
  return number && *number >= -1'000'000'000 && *number <= 1'000'000'000 ? static_cast<int>(*number)
                                                                         : otherwise;
}

std::string Cut(std::string_view text) {
  if (text.size() <= kLongestText) return std::string(text);
  std::size_t end = kLongestText;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  return std::string(text.substr(0, end));
}

std::string Colour(int red, int green, int blue) {
  std::array<char, 8> text{};
  const auto byte = [](int value) { return static_cast<unsigned>(value & 0xFF); };
  std::snprintf(text.data(), text.size(), "#%02x%02x%02x", byte(red), byte(green), byte(blue));
  return text.data();
}

std::string CleanPath(std::string path) {
  if (path.size() > kLongestPath) return {};
  for (char& c : path) {
    if (static_cast<unsigned char>(c) < 0x20) return {};
    if (c == '\\') c = '/';
  }
  const bool far = path.starts_with("//");
  path = std::filesystem::path(path).lexically_normal().generic_string();
  return far && !path.starts_with("//") ? "/" + path : path;
}

std::string PathOfUrl(std::string_view url) {
  constexpr std::string_view kScheme = "file:";
  if (!support::EqualsIgnoringCase(url.substr(0, kScheme.size()), kScheme)) return {};
  url.remove_prefix(kScheme.size());
  std::string_view host;
  if (url.starts_with("//")) {
    url.remove_prefix(2);
    host = url.substr(0, url.find('/'));
    url.remove_prefix(host.size());
  }
  std::string path = Unescaped(url);
  const bool drive = path.size() > 2 && path[0] == '/' && path[2] == ':';
  if (drive) path.erase(0, 1);
  if (!host.empty() && !support::EqualsIgnoringCase(host, "localhost")) path = "//" + Unescaped(host) + path;
  return CleanPath(std::move(path));
}

void Gathered::AddCue(ForeignTrack& track, ForeignCue cue) {
  if (!IsPlace(cue.start) || track.cues.size() >= kMostCues) {
    ++lost_cues_;
    return;
  }
  if (cue.kind == ForeignCue::Kind::Loop && !(cue.end > cue.start && cue.end <= kDay))
    cue.kind = ForeignCue::Kind::Cue;
  if (cue.kind != ForeignCue::Kind::Loop) cue.end = 0;
  if (cue.number < 0 || cue.number > 99) cue.number = -1;
  track.cues.push_back(std::move(cue));
}

void Gathered::AddTempo(ForeignTrack& track, ForeignTempo tempo, int beats_in_bar) {
  if (!(tempo.bpm >= kSlowest && tempo.bpm <= kFastest) || !(std::abs(tempo.start) <= kDay)) return;
  const int in_bar = beats_in_bar >= 1 && beats_in_bar <= 4 ? beats_in_bar : 4;
  if (tempo.beat < 1 || tempo.beat > in_bar) tempo.beat = 1;
  if (tempo.start < 0) {
    const double beats = std::ceil(-tempo.start * tempo.bpm / 60);
    tempo.start = std::max(0.0, tempo.start + beats * 60 / tempo.bpm);
    tempo.beat = BeatAfter(tempo.beat, beats, in_bar);
  }
  if (!track.grid.empty()) {
    const ForeignTempo& last = track.grid.back();
    if (tempo.start <= last.start) return;
    const double beats = std::round((tempo.start - last.start) * last.bpm / 60);
    const double off = last.start + beats * 60 / last.bpm - tempo.start;
    const bool same = std::abs(tempo.bpm - last.bpm) < kSameTempo && std::abs(off) <= kFits;
    if (same && BeatAfter(last.beat, beats, in_bar) == tempo.beat) return;
  }
  if (track.grid.size() < kMostTempos) track.grid.push_back(tempo);
}

std::optional<std::uint32_t> Gathered::AddTrack(ForeignTrack track) {
  if (track.path.empty() || library_.tracks.size() >= kMostTracks) {
    ++lost_tracks_;
    return std::nullopt;
  }
  track.cues.shrink_to_fit();
  track.grid.shrink_to_fit();
  library_.tracks.push_back(std::move(track));
  watch_.tracks = static_cast<int>(library_.tracks.size());
  return static_cast<std::uint32_t>(library_.tracks.size() - 1);
}

std::size_t Gathered::AddList(const std::string& name) {
  if (library_.lists.size() >= kMostLists) return ++lost_lists_, 0;
  library_.lists.push_back({Cut(name), {}});
  return library_.lists.size();
}

void Gathered::AddEntry(std::size_t list, std::optional<std::uint32_t> track) {
  if (list == 0 || !track || entries_ >= kMostEntries) {
    ++lost_entries_;
    return;
  }
  ++entries_;
  library_.lists[list - 1].tracks.push_back(*track);
}

catalogue::ForeignLibrary Gathered::Take() {
  AddNote(library_, support::Sentence::LibraryTracksLeftOut, lost_tracks_);
  AddNote(library_, support::Sentence::LibraryCuesLeftOut, lost_cues_);
  AddNote(library_, support::Sentence::LibraryListsLeftOut, lost_lists_);
  AddNote(library_, support::Sentence::LibraryEntriesLeftOut, lost_entries_);
  return std::move(library_);
}

}  // namespace platform::library
