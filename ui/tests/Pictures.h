// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace ui::testing {

/// From now on there are cases that write a picture of every page, editor and dialog into the folder, in both
/// skins and three sizes, each beside a list of its widgets; language: its number. Two runs of one program
/// write the same.
void RegisterPictures(const std::string& folder, int language);

}  // namespace ui::testing
