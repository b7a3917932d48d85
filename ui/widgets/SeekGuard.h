// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <Qt>
#include <functional>
#include <utility>

namespace ui {

/// Keeps a stray click from seeking in what is heard: while it is on, a double click or Shift is needed.
class SeekGuard {
 public:
  SeekGuard() = default;
  /// on: asked at each click.
  explicit SeekGuard(std::function<bool()> on) : on_(std::move(on)) {}

  [[nodiscard]] bool Holds(Qt::KeyboardModifiers modifiers) const {
    return on_ && (modifiers & Qt::ShiftModifier) == 0 && on_();
  }

 private:
  std::function<bool()> on_;
};

}  // namespace ui
