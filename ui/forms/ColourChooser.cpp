// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/ColourChooser.h"

#include <QGridLayout>
#include <QPushButton>

#include "ui/widgets/ColourButton.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

constexpr int kHues = 12;
constexpr struct {
  int saturation;
  int value;
} kShades[] = {{70, 255}, {150, 255}, {255, 255}, {255, 180}, {255, 110}};
constexpr int kShadeCount = static_cast<int>(std::size(kShades));

/// Column kHues holds the greys.
QColor ColourAt(int column, int row) {
  if (column == kHues) return QColor::fromHsv(0, 0, 255 - 255 * row / (kShadeCount - 1));
  return QColor::fromHsv(360 * column / kHues, kShades[row].saturation, kShades[row].value);
}

}  // namespace

ColourChooser::ColourChooser(const QColor& present, const Look& look, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("ColourDialog"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* grid = new QGridLayout(this);
  SetSpacingEm(*grid, 0.8, 0.3);
  for (int column = 0; column <= kHues; ++column) {
    for (int row = 0; row < kShadeCount; ++row) {
      auto* field = new ColourButton({}, look.skin);
      field->SetColour(ColourAt(column, row));
      const QString code = field->Colour().name();
      Name(*field, QStringLiteral("Colour") + code.mid(1), code, code);
      connect(field, &QAbstractButton::clicked, this, [this, field] {
        Q_EMIT Chosen(field->Colour());
        close();
      });
      grid->addWidget(field, row, column);
      if (field->Colour() == present) field->setFocus();
    }
  }
  grid->addWidget(
      PlainButton("ColourCancel",
                  {look.say(Say::DialogCancel), look.say(Say::DialogCancel), look.say(Say::DialogCancel)},
                  [this] { close(); }),
      kShadeCount, 0, 1, kHues + 1, Qt::AlignRight);
}

}  // namespace ui
