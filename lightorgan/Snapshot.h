// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "lightorgan/Modes.h"
#include "lightorgan/Outputs.h"

namespace lightorgan {

/// A state of the light organ that can be called up again, kept in "\K8000.tlv".
///
/// The file: the mode's word of the switched side, its speed, a line for each output with its level (in
/// constant mode 1 or 0); then the same for the analogue side.
///
/// Law: what it does not hold is left as it is when it is called up.
struct Snapshot {
  IoMode io = IoMode::Constant;
  std::optional<int> io_speed;
  std::array<int, kMostOutputs> io_levels{};
  std::optional<DacMode> dac;
  std::optional<int> dac_speed;
  std::array<int, kMostOutputs> dac_levels{};
  int io_held = kMostOutputs;  ///< how many outputs it has levels for, from the first on
  int dac_held = kMostOutputs;
  bool operator==(const Snapshot&) const = default;
};

[[nodiscard]] std::string SnapshotText(const Snapshot& snapshot, IoBoardSize size);
/// Of one board or two, as the lines tell; nothing where the text is empty.
[[nodiscard]] std::optional<Snapshot> ParseSnapshot(std::string_view text);

}  // namespace lightorgan
