// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

class QMimeData;

namespace ui {

/// Paths of the local files among what is dropped, byte for byte.
[[nodiscard]] std::vector<std::string> DroppedFiles(const QMimeData& data);

}  // namespace ui
