// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tools::djinspect {

/// What the program ends with.
enum class ExitCode { Read = 0, NothingRead = 1, WrongUse = 2 };

/// One thing that can be looked at. A verb prints JSON to the first stream and a sentence to the second.
struct Verb {
  std::string_view name;
  std::string_view arguments;  ///< for the usage line, one word each
  ExitCode (*run)(std::span<const std::string> arguments, std::ostream& out, std::ostream& err);
};

[[nodiscard]] std::span<const Verb> Verbs();

/// Runs the verb that the first argument names; wrong use prints the usage.
ExitCode Run(std::span<const std::string> arguments, std::ostream& out, std::ostream& err);

// One file a verb.
ExitCode InspectMixPoints(std::span<const std::string> arguments, std::ostream& out, std::ostream& err);
ExitCode InspectMp3Gain(std::span<const std::string> arguments, std::ostream& out, std::ostream& err);
ExitCode InspectPresets(std::span<const std::string> arguments, std::ostream& out, std::ostream& err);
ExitCode InspectTags(std::span<const std::string> arguments, std::ostream& out, std::ostream& err);

/// A whole file of at most 16 MB; nothing, and a sentence, when it cannot be read.
[[nodiscard]] std::optional<std::string> WholeFile(const std::string& path, std::ostream& err);

/// The text itself when it is UTF-8; else every byte as the Latin-1 character of that number, in UTF-8.
[[nodiscard]] std::string ReadableText(std::string_view bytes);

}  // namespace tools::djinspect
