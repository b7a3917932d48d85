// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace support::testing {

/// True where memory and locks inside a RealtimeScope end the program; false under a sanitizer, which brings
/// an allocator of its own. Calling it links the guard into the program.
[[nodiscard]] bool RealtimeGuardWorks();

}  // namespace support::testing
