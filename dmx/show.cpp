// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/show.h"

namespace dmx {

std::string_view NameWithoutFolder(std::string_view filename) {
  return filename.substr(filename.rfind('\\') + 1);  // npos + 1 is 0
}

}  // namespace dmx
