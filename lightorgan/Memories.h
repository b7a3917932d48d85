// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lightorgan {

/// A state of the light organ that can be called up again: an entry of the list "Memories".
struct Memory {
  std::string name;  ///< begins with kMemoryPrefix
  std::string text;  ///< of its Snapshot
  bool operator==(const Memory&) const = default;
};
inline constexpr std::string_view kMemoryPrefix = "K80";

/// The file of the memories: behind a line "[name]" the lines of its snapshot.
[[nodiscard]] std::string MemoryText(const std::vector<Memory>& memories);
/// Names without the prefix, and lines before the first name, are left out.
[[nodiscard]] std::vector<Memory> ParseMemories(std::string_view text);

}  // namespace lightorgan
