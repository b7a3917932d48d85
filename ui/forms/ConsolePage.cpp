// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/ConsolePage.h"

namespace ui {

ConsolePage::ConsolePage(app::Workstation& workstation, const Look& look, QWidget* parent)
    : PlainPage(QStringLiteral("ConsolePage"), Say::Console, Say::ConsoleLater, look, parent),
      workstation_(workstation) {}

void ConsolePage::Show(support::TimePoint /*now*/) {
  static_cast<void>(workstation_);
}

}  // namespace ui
