// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "support/Result.h"

namespace support {

/// Text values of one user, addressed by application, section and key.
///
/// A set acts in memory at once and reaches the disk soon after without anybody waiting; reading a missing
/// key gives the caller's default and writes nothing. Names and values are bytes without NUL; names hold no
/// line end, no "]" (application, section) and no "=" (key). Threads: any.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  [[nodiscard]] virtual std::string Get(std::string_view application, std::string_view section,
                                        std::string_view key, std::string_view fallback) const = 0;
  virtual void Set(std::string_view application, std::string_view section, std::string_view key,
                   std::string_view value) = 0;
  /// Returns when everything set so far is on the disk, or cannot be put there. Called at shutdown.
  virtual void Flush() = 0;
  /// What the user should know of the store, oldest first, without those that the caller knows already; each
  /// once until it happened otherwise.
  [[nodiscard]] virtual std::vector<Error> Notices(std::size_t known) const = 0;
};

/// The application name of every key but the equaliser's preset choice.
inline constexpr std::string_view kApplication = "TLVG";
inline constexpr std::string_view kPresetApplication = "QRV";

}  // namespace support
