// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace catalogue {

/// Made of a file's name; two names may have the same one.
[[nodiscard]] std::uint32_t FileNumber(std::string_view name);

/// Names that are looked for, by their numbers.
class WantedFiles {
 public:
  explicit WantedFiles(std::span<const std::string> names);
  /// Quick, and seldom wrong.
  [[nodiscard]] bool MayBe(std::uint32_t number) const {
    return (noted_[(number & mask_) / 64] >> number % 64 & 1) != 0;
  }
  /// A number, and which of the names has it.
  using Name = std::pair<std::uint32_t, std::size_t>;
  [[nodiscard]] std::span<const Name> With(std::uint32_t number) const;

 private:
  std::vector<Name> names_;
  std::size_t mask_;
  std::vector<std::uint64_t> noted_;  ///< a bit for each number, or several, below the mask
};

}  // namespace catalogue
