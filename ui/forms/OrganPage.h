// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/Workstation.h"
#include "ui/forms/PlainPage.h"
#include "ui/widgets/Look.h"

namespace ui {

/// The page of the light organ.
class OrganPage final : public PlainPage {
  Q_OBJECT

 public:
  OrganPage(app::Workstation& workstation, const Look& look, QWidget* parent = nullptr);

  void Show(support::TimePoint now);

 private:
  app::Workstation& workstation_;
};

}  // namespace ui
