// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace catalogue {

/// False when the file is still there; one that was not there before is gone too. Never touches a folder.
/// Threads: a worker; blocks on the disk.
[[nodiscard]] bool DeleteFile(const std::string& path);

/// The file of the same name with the extension ".mp3".
[[nodiscard]] std::string Mp3BesideOf(const std::string& path);

}  // namespace catalogue
