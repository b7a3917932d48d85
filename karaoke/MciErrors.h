// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string_view>

namespace karaoke {

/// The numbers that are given here, by their public names.
namespace mci_error {
inline constexpr std::uint32_t kInvalidDeviceId = 257;
inline constexpr std::uint32_t kUnrecognizedCommand = 261;
inline constexpr std::uint32_t kInvalidDeviceName = 263;
inline constexpr std::uint32_t kDeviceOpen = 265;
inline constexpr std::uint32_t kMissingParameter = 273;
inline constexpr std::uint32_t kUnsupportedFunction = 274;
inline constexpr std::uint32_t kFileNotFound = 275;
inline constexpr std::uint32_t kDeviceNotReady = 276;
inline constexpr std::uint32_t kOutOfRange = 282;
inline constexpr std::uint32_t kBadTimeFormat = 293;
}  // namespace mci_error

/// What an error number of the multimedia command interface means, in the words this program has always used;
/// "Unknown Error." for a number that has none.
[[nodiscard]] std::string_view MciErrorText(std::uint32_t number);

}  // namespace karaoke
