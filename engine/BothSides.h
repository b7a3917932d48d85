// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace engine {

/// Left and right in one register, so that a filter costs little more for both than for one. (A vector type
/// of GCC and Clang, which reckons element by element on every processor.)
using BothSides = double __attribute__((vector_size(16)));

[[nodiscard]] inline BothSides BothOf(float left, float right) noexcept {
  return BothSides{static_cast<double>(left), static_cast<double>(right)};
}

}  // namespace engine
