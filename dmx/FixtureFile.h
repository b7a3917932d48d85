// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "dmx/fixture.h"
#include "support/Result.h"
#include "support/Sentences.h"
#include "support/ports/FileSaver.h"

namespace dmx {

/// A fixture as a file gave it.
struct FixtureReading {
  Fixture fixture;
  bool ended_early = false;        ///< what was not reached has its cleared value
  std::vector<std::string> notes;  ///< what was out of bounds and brought into them, a sentence each
};

/// Reads the lines of a fixture file in their order; markers are passed over whatever they say. Fails with
/// ErrorCode::Empty when there is nothing, and with ErrorCode::Malformed when a channel count, a function or
/// a preset count is no number. say: what notes and failures are told in.
[[nodiscard]] support::Result<FixtureReading> ReadFixture(std::string_view text,
                                                          const support::Sentences& say = support::English());
[[nodiscard]] std::string FixtureText(const Fixture& fixture);

[[nodiscard]] support::Result<FixtureReading> OpenFixture(const std::filesystem::path& path,
                                                          const support::Sentences& say = support::English());
/// Refuses a fixture without a name.
support::Result<void> SaveFixture(support::FileSaver& files, const std::filesystem::path& path,
                                  const Fixture& fixture);

}  // namespace dmx
