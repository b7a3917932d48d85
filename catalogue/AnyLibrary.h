// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "catalogue/ports/LibraryReader.h"

namespace catalogue {

/// A library of another program, by what it holds: what the reader knows, or a list of paths, or a folder
/// with such lists in it and below. The paths of a list are its tracks; where they lead to no root, they lead
/// on from the list's folder. Unsupported: it is nothing of these. Threads: a worker; blocks on the disk.
[[nodiscard]] support::Result<ForeignLibrary> ReadAnyLibrary(LibraryReader& reader, const std::string& path,
                                                             LibraryWatch& watch);

}  // namespace catalogue
