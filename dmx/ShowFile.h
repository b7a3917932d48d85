// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "dmx/show.h"
#include "support/Result.h"
#include "support/Sentences.h"
#include "support/ports/FileSaver.h"

namespace dmx {

/// A show as a file gave it. Fixtures have the names of their files alone and no channels yet.
struct ShowReading {
  Show show;
  bool ended_early = false;
  std::vector<std::string> notes;  ///< what was out of bounds and brought into them, a sentence each
};

/// Reads the lines of a show file in their order. Fails with ErrorCode::Empty when there is nothing, and with
/// ErrorCode::Malformed when a number that must be one is none. say: what notes and failures are told in.
[[nodiscard]] support::Result<ShowReading> ReadShow(std::string_view text,
                                                    const support::Sentences& say = support::English());
[[nodiscard]] std::string ShowText(const Show& show);

[[nodiscard]] support::Result<ShowReading> OpenShow(const std::filesystem::path& path,
                                                    const support::Sentences& say = support::English());
/// Refuses a show without scenes.
support::Result<void> SaveShow(support::FileSaver& files, const std::filesystem::path& path,
                               const Show& show);

}  // namespace dmx
