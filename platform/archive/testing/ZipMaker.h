// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform::archive::testing {

enum class Packing { Deflated, Stored, Locked };

struct ToPack {
  std::string name;  ///< UTF-8, or bytes of the old code page
  std::string bytes;
  Packing packing = Packing::Deflated;
};

/// A whole zip archive.
[[nodiscard]] std::string ZipBytes(const std::vector<ToPack>& members);

enum class SizeField { Unpacked, Packed };
/// Has the directory, and what stands before the member itself, tell a size that is not so.
[[nodiscard]] std::string WithSize(std::string archive, std::string_view member, SizeField field,
                                   std::uint32_t bytes);
/// One bit of a member's packed bytes is another.
[[nodiscard]] std::string WithDamage(std::string archive, std::string_view member, std::size_t at);

}  // namespace platform::archive::testing
