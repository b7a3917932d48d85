// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace catalogue {

/// Writes whole numbers into few bytes. Fixed numbers and those of WriteSmall may follow each other freely.
class BitWriter {
 public:
  /// The lowest bits of the value, 0 to 64 of them.
  void WriteBits(std::uint64_t value, int bits);
  void WriteReal(double value);
  /// Any number; the closer to 0, the fewer bits.
  void WriteSigned(std::int64_t value);
  /// Numbers that are mostly small, in blocks that each choose the number of plain bits (Rice coding).
  void WriteSmall(const std::vector<int>& values);
  [[nodiscard]] std::string Take();

 private:
  std::string bytes_;
  std::uint64_t held_ = 0;
  int held_bits_ = 0;
};

/// Reads what a BitWriter wrote. Law: past the end everything is 0 and Good is false.
class BitReader {
 public:
  explicit BitReader(std::string_view bytes) : bytes_(bytes) {}
  std::uint64_t ReadBits(int bits);
  double ReadReal();
  std::int64_t ReadSigned();
  /// As many as there were.
  std::vector<int> ReadSmall(std::size_t count);
  /// Nothing was read that is not there.
  [[nodiscard]] bool Good() const { return good_; }
  [[nodiscard]] std::size_t BitsLeft() const { return bytes_.size() * 8 - at_; }

 private:
  std::string_view bytes_;
  std::size_t at_ = 0;  ///< in bits
  bool good_ = true;
};

}  // namespace catalogue
