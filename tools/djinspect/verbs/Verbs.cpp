// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/djinspect/verbs/Verbs.h"

#include <algorithm>
#include <array>
#include <ostream>

namespace tools::djinspect {
namespace {

// clang-format off: a verb a line
constexpr auto kVerbs = std::to_array<Verb>({
    {"adding", "FILE", &InspectAdding},
    {"analyse", "FILE", &InspectAnalysis},
    {"bank", "FILE --number N --outputs 8|16 [--side io|dac] [--play TICKS]", &InspectBank},
    {"cdg", "FILE", &InspectDisc},
    {"fixture", "FILE [--import] [--mode NAME]", &InspectFixture},
    {"index", "FILE [--karaoke] [--rewrite OUT]", &InspectIndex},
    {"journal", "FILE", &InspectJournal},
    {"karaoke", "FILE", &InspectKaraoke},
    {"memories", "FILE --outputs 8|16", &InspectMemories},
    {"mixpoints", "FILE [--gain-percent V]", &InspectMixPoints},
    {"mixtags", "FILE", &InspectMixTags},
    {"mp3gain", "FILE", &InspectMp3Gain},
    {"playlist", "FILE", &InspectPlaylist},
    {"presets", "FILE", &InspectPresets},
    {"rotation", "FILE", &InspectRotation},
    {"library", "FILE", &InspectLibrary},
    {"lightgroups", "FILE", &InspectLightGroups},
    {"scan", "FOLDER --mode music|karaoke", &InspectScan},
    {"show", "FILE [--rewrite OUT]", &InspectShow},
    {"tags", "FILE [--all]", &InspectTags},
    {"zip", "FILE", &InspectZip},
});
// clang-format on

ExitCode WrongUse(std::ostream& err) {
  err << "Usage:\n";
  for (const Verb& verb : kVerbs) err << "  djinspect " << verb.name << ' ' << verb.arguments << '\n';
  return ExitCode::WrongUse;
}

/// Bytes of the UTF-8 character at the front of the text; 0 when there is none.
std::size_t CharacterLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned first = byte(0);
  const std::size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (length == 0 || first > 0xF4 || length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  if (length < 3) return length;
  const unsigned second = byte(1);
  const bool overlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
  const bool beyond = (first == 0xED && second > 0x9F) || (first == 0xF4 && second > 0x8F);
  return overlong || beyond ? 0 : length;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace

std::span<const Verb> Verbs() {
  return kVerbs;
}

ExitCode Run(std::span<const std::string> arguments, std::ostream& out, std::ostream& err) {
  if (arguments.empty()) return WrongUse(err);
  const auto verb = std::find_if(kVerbs.begin(), kVerbs.end(),
                                 [&](const Verb& candidate) { return candidate.name == arguments.front(); });
  if (verb == kVerbs.end()) return WrongUse(err);
  const auto parsed = ParseArguments(verb->arguments, arguments.subspan(1));
  const ExitCode code = parsed ? verb->run(*parsed, out, err) : ExitCode::WrongUse;
  return code == ExitCode::WrongUse ? WrongUse(err) : code;
}

std::string ReadableText(std::string_view bytes) {
  if (IsUtf8(bytes)) return std::string(bytes);
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      text += c;
    } else {
      text += static_cast<char>(0xC0 | (byte >> 6));
      text += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  return text;
}

}  // namespace tools::djinspect
