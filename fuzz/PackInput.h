// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>
#include <string_view>

#include "dmx/FixtureFile.h"
#include "dmx/FixtureProblems.h"
#include "dmx/packs/PackImport.h"
#include "platform/fixtures/FixtureReaders.h"

namespace fuzz {

/// Every mode of what can be read becomes a fixture whose file is read back as it was written, and which
/// raises no question about any of its channels.
inline void ImportAnything(std::string_view text) {
  const auto read = platform::fixtures::FixtureReaders().Read(text);
  if (!read) return;
  for (std::size_t mode = 0; mode < read.Value().modes.size(); ++mode) {
    const auto made = dmx::ImportMode(read.Value(), mode);
    if (!made) continue;
    const dmx::Fixture& fixture = made.Value().fixture;
    const auto again = dmx::ReadFixture(dmx::FixtureText(fixture));
    if (!again || again.Value().ended_early || !again.Value().notes.empty()) abort();
    if (!(again.Value().fixture == fixture)) abort();
    for (const auto& problem : dmx::FixtureProblems(fixture)) {
      if (problem.starts_with("Channel")) abort();
    }
    if (dmx::ImportedFileName(fixture.name).find('/') != std::string::npos) abort();
  }
}

}  // namespace fuzz
