// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/StepButton.h"

namespace ui {
namespace {

constexpr auto kFirstStep = std::chrono::milliseconds(400);
constexpr auto kNextStep = std::chrono::milliseconds(40);

}  // namespace

StepButton::StepButton(const QString& caption, const QString& timer, QWidget* parent)
    : QPushButton(caption, parent), repeat_(new QTimer(this)) {
  SetKind(*this, "tool");
  repeat_->setObjectName(timer);
  connect(this, &QPushButton::pressed, this, [this] {
    repeat_->start(kFirstStep);
    Q_EMIT Stepped();
  });
  connect(repeat_, &QTimer::timeout, this, [this] {
    if (!isDown()) return repeat_->stop();
    repeat_->start(kNextStep);
    Q_EMIT Stepped();
  });
  connect(this, &QPushButton::released, this, [this] {
    repeat_->stop();
    Q_EMIT Released();
  });
}

}  // namespace ui
