// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/Settings.h"

namespace app {

class Settings final : public support::Settings {
 public:
  using support::Settings::Settings;
};

}  // namespace app
