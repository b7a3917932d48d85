// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <nlohmann/json.hpp>
#include <ostream>

#include "karaoke/MidiFile.h"
#include "karaoke/SongReader.h"
#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {
namespace {

void AddText(nlohmann::ordered_json& told, const char* key, const std::optional<std::string>& text) {
  if (text) told[key] = ReadableText(*text);
}

nlohmann::ordered_json Told(const karaoke::Song& song) {
  nlohmann::ordered_json told{{"isLyric", song.is_lyric}};
  AddText(told, "titles", song.titles);
  AddText(told, "genre", song.genre);
  AddText(told, "timeSignature", song.time_signature);
  if (song.tempo) told["tempo"] = *song.tempo;
  if (song.bpm) told["midiBPM"] = std::round(static_cast<double>(*song.bpm) * 100) / 100;
  if (song.quarter_note) told["quarterNote"] = *song.quarter_note;
  if (!song.text_lyric) return told;
  AddText(told, "textLyric", song.text_lyric);
  told["lines"] = nlohmann::json::array();
  for (const std::string& line : song.lines) told["lines"].push_back(ReadableText(line));
  told["syllables"] = nlohmann::json::array();
  for (const karaoke::Syllable& syllable : song.syllables) {
    told["syllables"].push_back({{"ms", static_cast<double>(syllable.at.count()) / 1000},
                                 {"line", syllable.line},
                                 {"text", ReadableText(syllable.text)}});
  }
  return told;
}

}  // namespace

/// What is read of a MIDI song: its tags, its first tempo and signature, its words and when they are sung.
ExitCode InspectKaraoke(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  const auto bytes = karaoke::ReadSongBytes(arguments.words[0]);
  if (!bytes) {
    err << bytes.Failure().text << '\n';
    return ExitCode::NothingRead;
  }
  if (!karaoke::ReadMidiFile(bytes.Value())) {
    err << support::English()(support::Sentence::NotMidi) << '\n';
    return ExitCode::NothingRead;
  }
  const karaoke::Song song = karaoke::ReadSong(bytes.Value());
  if (song.note) err << support::English()(*song.note) << '\n';
  out << Told(song).dump(1) << '\n';
  return ExitCode::Read;
}

}  // namespace tools::djinspect
