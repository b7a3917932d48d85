// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/Look.h"

#include <QFontInfo>
#include <QLabel>
#include <QLayout>
#include <QVariant>
#include <cmath>

namespace ui {
namespace {

constexpr const char* kFontProperty = "ems";
constexpr const char* kMarginProperty = "marginEms";
constexpr const char* kGapProperty = "gapEms";

void SizeFont(QWidget& widget, double base_points) {
  const QVariant ems = widget.property(kFontProperty);
  if (!ems.isValid()) return;
  QFont font = widget.font();
  font.setPointSizeF(base_points * ems.toDouble());
  widget.setFont(font);
}

void SizeLayout(QLayout& layout, double em) {
  const QVariant margin = layout.property(kMarginProperty);
  if (!margin.isValid()) return;
  const int pixels = static_cast<int>(std::lround(margin.toDouble() * em));
  layout.setContentsMargins(pixels, pixels, pixels, pixels);
  layout.setSpacing(static_cast<int>(std::lround(layout.property(kGapProperty).toDouble() * em)));
}

}  // namespace

int Em(const QWidget& widget, double ems) {
  return static_cast<int>(std::lround(QFontInfo(widget.font()).pixelSize() * ems));
}

void SetFontEm(QWidget& widget, double ems, Weight weight) {
  widget.setProperty(kFontProperty, ems);
  QFont font = widget.font();
  font.setBold(weight == Weight::Bold);
  widget.setFont(font);
}

void SetSpacingEm(QLayout& layout, double margin, double gap) {
  layout.setProperty(kMarginProperty, margin);
  layout.setProperty(kGapProperty, gap);
}

void ApplyBaseSize(QWidget& window, double points) {
  QFont font = window.font();
  font.setPointSizeF(points);
  window.setFont(font);
  for (QWidget* widget : window.findChildren<QWidget*>()) SizeFont(*widget, points);
  const double em = QFontInfo(font).pixelSize();
  for (QLayout* layout : window.findChildren<QLayout*>()) SizeLayout(*layout, em);
}

QString DeckName(int deck, const char* part) {
  return QStringLiteral("deck%1%2").arg(deck).arg(QLatin1String(part));
}

void Name(QWidget& widget, const QString& object_name, const QString& accessible_name, const QString& tip) {
  widget.setObjectName(object_name);
  widget.setAccessibleName(accessible_name);
  if (!tip.isEmpty()) widget.setToolTip(tip);
}

void SetKind(QWidget& widget, const char* kind) {
  widget.setProperty("kind", QLatin1String(kind));
}

void SetText(QLabel& label, const QString& text) {
  if (label.text() != text) label.setText(text);
}

void SetTextColour(QWidget& label, const QColor& colour) {
  QPalette palette = label.palette();
  if (palette.color(QPalette::WindowText) == colour) return;
  palette.setColor(QPalette::WindowText, colour);
  label.setPalette(palette);
}

}  // namespace ui
