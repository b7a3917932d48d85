// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "lightorgan/Memories.h"
#include "lightorgan/Snapshot.h"

/// Any bytes are a file of memories: each of them can be recalled, and what is written of them is read back.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace lightorgan;
  const auto memories = ParseMemories({reinterpret_cast<const char*>(data), size});
  if (ParseMemories(MemoryText(memories)) != memories) abort();
  for (const Memory& memory : memories) {
    const auto recalled = ParseSnapshot(memory.text);
    for (const auto boards : {IoBoardSize::One, IoBoardSize::Two}) {
      if (!recalled) continue;
      const std::string text = SnapshotText(*recalled, boards);
      if (SnapshotText(*ParseSnapshot(text), boards) != text) abort();
    }
  }
  return 0;
}
