// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

namespace ui {

/// A page whose place is kept: it says in a sentence what is not there yet.
class PlainPage : public Surface {
  Q_OBJECT

 public:
  PlainPage(const QString& name, Say head, Say sentence, const Look& look, QWidget* parent = nullptr);
};

}  // namespace ui
