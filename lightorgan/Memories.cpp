// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/Memories.h"

#include "support/Text.h"

namespace lightorgan {

std::string MemoryText(const std::vector<Memory>& memories) {
  std::string text;
  for (const Memory& memory : memories) text.append("[" + memory.name + "]\r\n").append(memory.text);
  return text;
}

std::vector<Memory> ParseMemories(std::string_view text) {
  std::vector<Memory> memories;
  bool named = false;
  for (const std::string_view line : support::SplitLines(text)) {
    if (line.starts_with('[')) {
      const std::string_view name = line.substr(1, line.find(']') - 1);
      named = name.starts_with(kMemoryPrefix);
      if (named) memories.push_back({std::string(name), {}});
    } else if (named && !line.empty()) {
      memories.back().text.append(line).append("\r\n");
    }
  }
  return memories;
}

}  // namespace lightorgan
