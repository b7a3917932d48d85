// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "singers/RotationFile.h"

/// Any bytes are lines of a rotation and of a singer book, whatever their check sum would say; what is
/// written of them is whole, and says the same when it is read. Every turn of the rotation comes to its end.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  static_cast<void>(singers::ParseRotation(bytes));
  singers::Evening evening = singers::ParseRotationLines(bytes);
  const std::string written = singers::RotationText(evening);
  const auto read = singers::ParseRotation(written);
  if (!read || singers::RotationText(*read) != written) abort();
  static_cast<void>(singers::WaitTimes(evening.rotation, {}, evening.pace));
  while (evening.rotation.Begin()) evening.rotation.SetRule(singers::Rule::FirstCome);
  const std::string book = singers::SingerBookText(singers::ParseSingerBookLines(bytes));
  const auto again = singers::ParseSingerBook(book);
  if (!again || singers::SingerBookText(*again) != book) abort();
  return 0;
}
