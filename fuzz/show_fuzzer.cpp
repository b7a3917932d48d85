// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "dmx/ShowFile.h"
#include "dmx/ShowPlan.h"
#include "dmx/ShowRecords.h"
#include "dmx/ShowTime.h"

/// What can be read of any bytes is the same after it was written and read again, and can be played.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto reading = dmx::ReadShow({reinterpret_cast<const char*>(data), size});
  if (!reading) return 0;
  const dmx::Show& show = reading.Value().show;
  const std::string text = dmx::ShowText(show);
  const auto again = dmx::ReadShow(text);
  if (!again || again.Value().ended_early) abort();
  // A name behind which a folder stood is written without it.
  if (dmx::ShowText(again.Value().show) != text || !(again.Value().show.scenes == show.scenes)) abort();
  dmx::Patch patch;
  for (const dmx::DMXfilename& fixture : show.fixtures) patch.Hold(1, fixture.StartChannel, fixture.NumberOf);
  const auto plan = dmx::ShowPlan::Make(show.scenes, dmx::RecordChannels(show, patch));
  if (!plan) return 0;
  if (plan.Value().Length() != dmx::PlayingTime(show.scenes)) abort();
  std::array<dmx::DmxLevel, dmx::kUniverseChannels> levels{};
  for (int i = 0; i <= 8; ++i) {
    const dmx::ShowTime at = plan.Value().Length() / 8 * i;
    (void)plan.Value().LevelsAt(at, levels, levels);
    if (plan.Value().At(at).scene > show.scenes.count()) abort();
  }
  return 0;
}
