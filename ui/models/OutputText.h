// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <string>
#include <vector>

#include "app/OutputView.h"
#include "ui/strings/Strings.h"

namespace ui {

/// Name of loudspeaker pair 1 to 4; any other number is all of them.
[[nodiscard]] QString PairText(int speaker, const Strings& say);
/// "USB card, Front"; the pair only where one is chosen.
[[nodiscard]] QString OutputText(const app::OutputView& output, const std::vector<std::string>& devices,
                                 const Strings& say);
[[nodiscard]] QString DeviceText(int device, const std::vector<std::string>& devices, const Strings& say);

}  // namespace ui
