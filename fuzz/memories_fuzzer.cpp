// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "lightorgan/Memories.h"
#include "lightorgan/Snapshot.h"

/// Any bytes are a file of memories: each of them can be recalled, and what is written of them is read back.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace lightorgan;
  const auto memories = ParseMemories({reinterpret_cast<const char*>(data), size});
  if (ParseMemories(MemoryText(memories)) != memories) abort();
  for (const Memory& memory : memories) {
    for (const auto boards : {IoBoardSize::One, IoBoardSize::Two}) {
      const auto recalled = ParseSnapshot(memory.text, boards);
      if (recalled && ParseSnapshot(SnapshotText(*recalled, boards), boards) != recalled) abort();
    }
  }
  return 0;
}
