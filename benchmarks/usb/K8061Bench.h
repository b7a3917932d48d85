// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "benchmarks/Report.h"

namespace bench {

/// The IO boards: exchanges a refresh, and how long one takes.
void MeasureK8061(std::vector<Figure>& figures);

}  // namespace bench
