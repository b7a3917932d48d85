// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/Look.h"

#include <QFontInfo>
#include <QLabel>
#include <QLayout>
#include <QVariant>
#include <algorithm>
#include <cmath>

namespace ui {
namespace {

constexpr const char* kFontProperty = "ems";
constexpr const char* kWidestProperty = "widest";
constexpr const char* kHeightProperty = "heightEms";
constexpr const char* kMarginProperty = "marginEms";
constexpr const char* kGapProperty = "gapEms";

// Every widget by itself: under a style sheet not all of them take over their parent's font.
void SizeFont(QWidget& widget, double base_points, double base_em) {
  widget.ensurePolished();  // or the style sheet takes the font back when the widget is first shown
  const QVariant ems = widget.property(kFontProperty);
  QFont font = widget.font();
  font.setPointSizeF(base_points * (ems.isValid() ? ems.toDouble() : 1.0));
  widget.setFont(font);
  const QVariant widest = widget.property(kWidestProperty);
  if (widest.isValid()) widget.setMinimumWidth(widget.fontMetrics().horizontalAdvance(widest.toString()));
  const QVariant height = widget.property(kHeightProperty);
  if (height.isValid()) widget.setFixedHeight(static_cast<int>(std::lround(height.toDouble() * base_em)));
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

int Line(const QWidget& widget) {
  constexpr int kPixelsOfTypeForOne = 14;
  return std::max(1, QFontInfo(widget.font()).pixelSize() / kPixelsOfTypeForOne);
}

void SetFontEm(QWidget& widget, double ems, Weight weight) {
  widget.setProperty(kFontProperty, ems);
  QFont font = widget.font();
  font.setBold(weight == Weight::Bold);
  widget.setFont(font);
}

void SetWidest(QLabel& label, QAnyStringView text) {
  label.setProperty(kWidestProperty, text.toString());
}

void SetHeightEm(QWidget& widget, double ems) {
  widget.setProperty(kHeightProperty, ems);
}

void SetSpacingEm(QLayout& layout, double margin, double gap) {
  layout.setProperty(kMarginProperty, margin);
  layout.setProperty(kGapProperty, gap);
}

void ApplyBaseSize(QWidget& window, double points) {
  QFont font = window.font();
  font.setPointSizeF(points);
  window.setFont(font);
  const double em = QFontInfo(font).pixelSize();
  for (QWidget* widget : window.findChildren<QWidget*>()) SizeFont(*widget, points, em);
  for (QLayout* layout : window.findChildren<QLayout*>()) SizeLayout(*layout, em);
}

QString DeckName(int deck, const char* part) {
  return QStringLiteral("deck%1%2").arg(deck).arg(QLatin1String(part));
}

void Name(QWidget& widget, QAnyStringView object_name, const QString& accessible_name, const QString& tip) {
  Name(widget, object_name);
  widget.setAccessibleName(accessible_name);
  if (!tip.isEmpty()) widget.setToolTip(tip);
}

void Name(QWidget& widget, QAnyStringView object_name, const Texts& texts) {
  Name(widget, object_name, texts.spoken, texts.tip);
}

void Name(QWidget& widget, QAnyStringView object_name) {
  widget.setObjectName(object_name.toString());
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
