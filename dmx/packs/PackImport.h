// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dmx/fixture.h"
#include "dmx/ports/FixtureFormats.h"
#include "support/Result.h"
#include "support/Sentences.h"

namespace dmx {

/// One mode of a library's fixture, as a fixture of this program.
struct ImportedFixture {
  Fixture fixture;
  std::vector<std::string> notes;  ///< what became otherwise than it was described, a sentence each
  bool lossless = true;            ///< every range and every role is there
};

/// Makes a fixture of a mode. Its ranges cover all levels and none twice, so that FixtureProblems finds
/// nothing in it but that it shows no light, where it does not. say: what notes, and the names of ranges that
/// nobody described, are told in. Requires: the mode is there.
[[nodiscard]] support::Result<ImportedFixture> ImportMode(const PackFixture& fixture, std::size_t mode,
                                                          const support::Sentences& say = support::English());

/// The mode of that name; the first one for an empty name.
[[nodiscard]] support::Result<std::size_t> FindMode(const PackFixture& fixture, std::string_view name);

/// "Maker Model (Mode)".
[[nodiscard]] std::string ImportedName(const PackFixture& fixture, const PackMode& mode);
/// The same as the name of a file, with its ending.
[[nodiscard]] std::string ImportedFileName(const std::string& name);

}  // namespace dmx
