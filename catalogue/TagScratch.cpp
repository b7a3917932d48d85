// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/TagScratch.h"

#include <fstream>
#include <iterator>
#include <system_error>

#include "support/ProgramFolder.h"

namespace catalogue {

MixingTags TagScratch::Read(std::string_view block) {
  MixingTags found;
  if (ScanTextBlock(block) == found) return found;
  support::MutexLock lock(mutex_);
  if (!Write(block)) return found;
  found.gain = Find("PEA");
  found.start_mix_point = Find("SMP");
  found.end_mix_point = Find("EMP");
  found.bpm = Find("BPM");
  return found;
}

bool TagScratch::Write(std::string_view block) {
  std::error_code ignored;
  // Asked for by this name on purpose: with a backslash behind it, a file is not found, and stays to be
  // overwritten.
  if (std::filesystem::exists(support::AddBackslash(file_.string()), ignored)) {
    std::filesystem::remove(file_, ignored);
  }
  std::ofstream file(file_, std::ios::binary | std::ios::trunc);
  file.write(block.data(), static_cast<std::streamsize>(block.size()));
  file.close();
  return !file.fail();
}

std::optional<std::string> TagScratch::Find(std::string_view key) {
  std::ifstream file(file_, std::ios::binary);
  const std::string text(std::istreambuf_iterator<char>(file), {});
  return ValueAfterKey(text, key);
}

}  // namespace catalogue
