// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dmx/ports/DmxInterface.h"
#include "dmx/show.h"

namespace dmx {

/// Fixtures that are steered together, in whichever show they are patched.
struct LightGroup {
  struct Member {
    std::string file;  ///< name of the fixture file, without its folder
    int start = 0;     ///< its first channel
    bool operator==(const Member&) const = default;
  };
  std::string name;
  std::vector<Member> members;
  bool operator==(const LightGroup&) const = default;
};

[[nodiscard]] LightGroup MakeGroup(std::string name, const DMXname& fixtures, std::span<const int> positions);

/// Where the members are patched now, in the group's order; missing: how many are not.
struct FoundGroup {
  std::vector<int> positions;
  int missing = 0;
};
[[nodiscard]] FoundGroup Find(const LightGroup& group, const DMXname& fixtures);

inline constexpr std::string_view kLightGroupsFile = "\\tlv.lightgroups";
inline constexpr std::size_t kMostGroups = 100;
inline constexpr std::size_t kMostGroupBytes = 4'000'000;

[[nodiscard]] std::string LightGroupsText(const std::vector<LightGroup>& groups);
/// Nothing where the text is not whole, or a newer program's. Groups without a name or a member are left out.
[[nodiscard]] std::optional<std::vector<LightGroup>> ParseLightGroups(std::string_view text);
/// The same of what stands above the check sum.
[[nodiscard]] std::vector<LightGroup> ParseLightGroupLines(std::string_view lines);

}  // namespace dmx
