// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "tools/djinspect/verbs/Arguments.h"

namespace tools::djinspect {

/// What the program ends with.
enum class ExitCode {
  Read = 0,         ///< also for a file that ends early
  NothingRead = 1,  ///< also when a copy that was asked for could not be written
  WrongUse = 2,
};

/// One thing that can be looked at. A verb prints JSON to the first stream and a sentence to the second.
struct Verb {
  std::string_view name;
  std::string_view arguments;  ///< the usage line, as ParseArguments understands it
  ExitCode (*run)(const Arguments& arguments, std::ostream& out, std::ostream& err);
};

[[nodiscard]] std::span<const Verb> Verbs();

/// Runs the verb that the first argument names; wrong use prints the usage.
ExitCode Run(std::span<const std::string> arguments, std::ostream& out, std::ostream& err);

// One file a verb.
ExitCode InspectAdding(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectBank(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectDisc(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectFixture(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectIndex(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectAnalysis(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectJournal(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectKaraoke(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectLibrary(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectMemories(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectMixPoints(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectMixTags(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectMp3Gain(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectPlaylist(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectPresets(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectRotation(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectLightGroups(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectScan(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectShow(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectTags(const Arguments& arguments, std::ostream& out, std::ostream& err);
ExitCode InspectZip(const Arguments& arguments, std::ostream& out, std::ostream& err);

/// A whole file of at most 16 MB; nothing, and a sentence, when it cannot be read.
[[nodiscard]] std::optional<std::string> WholeFile(const std::string& path, std::ostream& err);

/// The text itself when it is UTF-8; else every byte as the Latin-1 character of that number, in UTF-8.
[[nodiscard]] std::string ReadableText(std::string_view bytes);

}  // namespace tools::djinspect
