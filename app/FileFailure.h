// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "support/Result.h"
#include "support/Sentences.h"

namespace app {

/// Why a file could not be played, in the language chosen. Adapters give their reasons in English; another
/// language has one sentence for each kind of failure.
[[nodiscard]] std::string FileFailure(const support::Error& error, const std::string& path,
                                      const support::Sentences& say);

}  // namespace app
