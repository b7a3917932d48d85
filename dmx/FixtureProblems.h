// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "dmx/fixture.h"

namespace dmx {

/// What stands in the way of a correct show, a line each, in channel order. Nothing: the fixture is sound.
[[nodiscard]] std::vector<std::string> FixtureProblems(const Fixture& fixture);

/// The yes/no question about them; yes goes back to mend the fixture. Empty when there is no problem.
[[nodiscard]] std::string FixtureQuestion(const std::vector<std::string>& problems);

/// What a save without a name is refused with.
inline constexpr const char* kFixtureNeedsName = "You must give a name for this Fixture!";

}  // namespace dmx
