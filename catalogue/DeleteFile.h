// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace catalogue {

enum class Deletion {
  Done,
  WasNotThere,  ///< its disk may be unplugged
  Failed,       ///< it is still there
};
/// Never touches a folder. Threads: a worker; blocks on the disk.
[[nodiscard]] Deletion DeleteFile(const std::string& path);

}  // namespace catalogue
