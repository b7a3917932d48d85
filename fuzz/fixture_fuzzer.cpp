// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "dmx/FixtureFile.h"
#include "dmx/FixtureProblems.h"
#include "dmx/OutputStage.h"
#include "dmx/Patch.h"

/// What can be read of any bytes is the same after it was written and read again, and can be patched or
/// refused.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto reading = dmx::ReadFixture({reinterpret_cast<const char*>(data), size});
  if (!reading) return 0;
  const dmx::Fixture& fixture = reading.Value().fixture;
  const auto again = dmx::ReadFixture(dmx::FixtureText(fixture));
  if (!again || !(again.Value().fixture == fixture)) abort();
  if (again.Value().ended_early || !again.Value().notes.empty()) abort();
  const auto problems = dmx::FixtureProblems(fixture);
  if (dmx::FixtureQuestion(problems).empty() != problems.empty()) abort();
  dmx::Patch patch;
  const int start = patch.SuggestStart(fixture.channels.count());
  if (!patch.Add(1, start, fixture.channels)) abort();
  dmx::DMXname fixtures;
  fixtures.Add({"", static_cast<std::int16_t>(start), 0, fixture.channels});
  (void)dmx::RulesFor(fixtures);
  return 0;
}
