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
struct Snapshot {
  IoMode io = IoMode::Constant;
  int io_speed = 0;
  std::array<int, kMostOutputs> io_levels{};
  DacMode dac = DacMode::Constant;
  int dac_speed = 0;
  std::array<int, kMostOutputs> dac_levels{};
  bool operator==(const Snapshot&) const = default;
};

[[nodiscard]] std::string SnapshotText(const Snapshot& snapshot, IoBoardSize size);
/// Missing lines are 0; nothing where the text is empty.
[[nodiscard]] std::optional<Snapshot> ParseSnapshot(std::string_view text, IoBoardSize size);

}  // namespace lightorgan
