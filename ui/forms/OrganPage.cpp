// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/OrganPage.h"

namespace ui {

OrganPage::OrganPage(app::Workstation& workstation, const Look& look, QWidget* parent)
    : PlainPage(QStringLiteral("OrganPage"), Say::Organ, Say::OrganLater, look, parent),
      workstation_(workstation) {}

void OrganPage::Show(support::TimePoint /*now*/) {
  static_cast<void>(workstation_);
}

}  // namespace ui
