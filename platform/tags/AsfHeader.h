// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <taglib/tiostream.h>

namespace platform::tags {

/// Whether the lists in an ASF header can be as long as they claim. The library believes a list's count and
/// goes on reading nothing behind the end of the file, 65535 times for every such list.
[[nodiscard]] bool AsfListsFit(TagLib::IOStream& stream);

}  // namespace platform::tags
