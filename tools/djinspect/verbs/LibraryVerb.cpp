// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <nlohmann/json.hpp>
#include <ostream>

#include "catalogue/AnyLibrary.h"
#include "platform/library/LibraryFiles.h"
#include "support/Sentences.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

using nlohmann::json;

const char* NameOf(catalogue::LibraryKind kind) {
  switch (kind) {
    case catalogue::LibraryKind::Rekordbox:
      return "rekordbox";
    case catalogue::LibraryKind::Traktor:
      return "traktor";
    case catalogue::LibraryKind::Serato:
      return "serato";
    case catalogue::LibraryKind::Itunes:
      return "itunes";
    case catalogue::LibraryKind::M3u:
      return "m3u";
  }
  return "";
}

const char* NameOf(catalogue::ForeignCue::Kind kind) {
  using Kind = catalogue::ForeignCue::Kind;
  switch (kind) {
    case Kind::Cue:
      return "cue";
    case Kind::Loop:
      return "loop";
    case Kind::FadeIn:
      return "fadeIn";
    case Kind::FadeOut:
      return "fadeOut";
    case Kind::Load:
      return "load";
  }
  return "";
}

json Of(const catalogue::ForeignTrack& track) {
  json cues = json::array(), grid = json::array();
  for (const catalogue::ForeignCue& cue : track.cues) {
    const bool loop = cue.kind == catalogue::ForeignCue::Kind::Loop;
    cues.push_back({{"kind", NameOf(cue.kind)},
                    {"start", cue.start},
                    {"end", loop ? json(cue.end) : json()},
                    {"number", cue.number},
                    {"name", ReadableText(cue.name)},
                    {"colour", cue.colour}});
  }
  for (const catalogue::ForeignTempo& tempo : track.grid) {
    grid.push_back({{"start", tempo.start}, {"bpm", tempo.bpm}, {"beat", tempo.beat}});
  }
  return {{"path", ReadableText(track.path)},
          {"artist", ReadableText(track.artist)},
          {"title", ReadableText(track.title)},
          {"bpm", track.bpm},
          {"key", ReadableText(track.key)},
          {"rating", track.rating},
          {"cues", cues},
          {"grid", grid}};
}

json Of(const catalogue::ForeignList& list, const catalogue::ForeignLibrary& library) {
  json tracks = json::array();
  for (const std::uint32_t track : list.tracks) tracks.push_back(ReadableText(library.tracks[track].path));
  return {{"name", ReadableText(list.name)}, {"tracks", tracks}};
}

/// One a line, so that no copy of the whole is made.
template <typename Items, typename Print>
void PrintAll(const char* name, const Items& items, std::ostream& out, const Print& print) {
  out << ", \"" << name << "\": [";
  const char* between = "\n  ";
  for (const auto& item : items) {
    out << between << print(item).dump();
    between = ",\n  ";
  }
  out << "]";
}

}  // namespace

/// What an import would bring. Positions are the file's own: where it counts the first frame of an mp3 as
/// sound, the import takes that off, which only the music file can tell.
ExitCode InspectLibrary(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  platform::library::LibraryFiles reader;
  catalogue::LibraryWatch watch;
  const support::Sentences say;
  const auto read = catalogue::ReadAnyLibrary(reader, arguments.words[0], watch);
  if (!read) {
    err << say(read.Failure()) << '\n';
    return ExitCode::NothingRead;
  }
  const catalogue::ForeignLibrary& library = read.Value();
  out << "{\"kind\": " << json(NameOf(library.kind)).dump();
  PrintAll("tracks", library.tracks, out, [](const auto& track) { return Of(track); });
  PrintAll("lists", library.lists, out, [&](const auto& list) { return Of(list, library); });
  PrintAll("notes", library.notes, out, [&](const auto& note) { return json(ReadableText(say(note))); });
  out << "}\n";
  return ExitCode::Read;
}

}  // namespace tools::djinspect
