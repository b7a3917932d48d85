// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "singers/Rotation.h"
#include "singers/SingerBook.h"
#include "singers/WaitTimes.h"

namespace singers {

/// An evening of singers, as it lies on the disk.
struct Evening {
  std::string date;  ///< "2026-11-22", of its beginning
  Rotation rotation;
  Pace pace;
  bool operator==(const Evening&) const = default;
};

/// Data files.
inline constexpr std::string_view kRotationFile = "\\tlv.singers";
inline constexpr std::string_view kSingerBookFile = "\\tlv.singerbook";

/// More is no file of ours.
inline constexpr std::size_t kMostRotationBytes = std::size_t{16} << 20;
inline constexpr std::size_t kMostBookBytes = std::size_t{64} << 20;

// Lines of support/PartLines.h, below a head. Nothing where head or check sum is wrong; what a line says
// wrongly is left out, and every value is within its bounds.
[[nodiscard]] std::string RotationText(const Evening& evening);
[[nodiscard]] std::optional<Evening> ParseRotation(std::string_view text);
[[nodiscard]] std::string SingerBookText(const SingerBook& book);
[[nodiscard]] std::optional<SingerBook> ParseSingerBook(std::string_view text);

// The same of what stands above the check sum.
[[nodiscard]] Evening ParseRotationLines(std::string_view lines);
[[nodiscard]] SingerBook ParseSingerBookLines(std::string_view lines);

}  // namespace singers
