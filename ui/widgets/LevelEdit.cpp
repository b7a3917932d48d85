// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/LevelEdit.h"

#include <QRegularExpressionValidator>
#include <algorithm>

#include "dmx/fixture.h"
#include "support/Text.h"
#include "ui/widgets/Look.h"

namespace ui {
namespace {

constexpr int kLongest = 12;

}  // namespace

LevelEdit::LevelEdit(QWidget* parent) : QLineEdit(parent) {
  setMaxLength(kLongest);
  // It also keeps what is pasted to the same characters.
  setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9,.]*")), this));
}

int LevelEdit::Level() const {
  const auto level = support::LeadingInteger(text().toStdString());
  return static_cast<int>(std::clamp<std::int64_t>(level, 0, dmx::kHighestLevel));
}

QSize LevelEdit::sizeHint() const {
  return {Em(*this, 4.2), QLineEdit::sizeHint().height()};
}

}  // namespace ui
