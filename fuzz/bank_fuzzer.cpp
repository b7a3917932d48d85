// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "lightorgan/PatternBank.h"

/// Any bytes are a bank file: every bank of it can be played, and what the editor writes it reads back.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace lightorgan;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  for (const int number : {0, 1, 7, 5'000}) {
    const StepTable table = LoadBank(text, number == 7 ? Side::Dac : Side::Io, number, IoBoardSize::Two);
    for (int row = 0; row <= table.Rows() + 1; ++row) (void)PatternByte(table, row, 1);
  }
  const std::string written = BankText(ParseBanks(text));
  if (BankText(ParseBanks(written)) != written) abort();
  return 0;
}
