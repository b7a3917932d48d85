// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

namespace platform::files {

/// The folder of the running executable; the working folder where the system does not tell.
[[nodiscard]] std::filesystem::path ExecutableFolder();

/// For files that are gone with the program; the executable's folder where the system names none that is
/// there.
[[nodiscard]] std::filesystem::path ScratchFolder();

/// Lets all other threads run before the calling one, on processor and disk, for work that may wait.
void LowerThreadPriority() noexcept;

/// From now on memory that the program lets go of goes back to the system, but for a few megabytes: what the
/// search index of a large collection needs while it is made is not kept for good. Called before there are
/// other threads.
void ReturnFreedMemory() noexcept;

}  // namespace platform::files
