// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/show.h"

#include <algorithm>

namespace dmx {

std::string_view NameWithoutFolder(std::string_view filename) {
  return filename.substr(filename.rfind('\\') + 1);  // npos + 1 is 0
}

int ChannelCount(const DMXfilename& fixture) {
  const int described = fixture.Channels.count();
  return described > 0 ? described : std::max<int>(fixture.NumberOf, 0);
}

bool DiffersFromItsFile(const DMXfilename& fixture) {
  return fixture.Channels.count() > 0 && fixture.Channels.count() != fixture.NumberOf;
}

}  // namespace dmx
