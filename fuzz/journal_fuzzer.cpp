// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "app/resume/Journal.h"

/// Any bytes are lines of a journal, whatever their check sum would say; what is written of them is whole,
/// and says the same when it is read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  static_cast<void>(app::ParseJournal(bytes));
  const std::string written = app::JournalText(app::ParseJournalLines(bytes));
  const auto read = app::ParseJournal(written);
  if (!read || app::JournalText(*read) != written) abort();
  return 0;
}
