// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/CuePaint.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <array>

#include "music/Cues.h"
#include "ui/widgets/Look.h"

namespace ui {

QColor CueColourOf(int colour) {
  static constexpr std::array<QRgb, music::kCueColours> kColours{
      0xFFE5484D, 0xFFF5A524, 0xFFE8D44D, 0xFF46C66B, 0xFF3FC4D8, 0xFF5B8DEF, 0xFFA874F0, 0xFFEC6CB9};
  return QColor(kColours[static_cast<std::size_t>(std::clamp(colour, 0, music::kCueColours - 1))]);
}

CueMarks MarksOf(const app::CuesView& view) {
  return {view.marked, view.has_loop, view.looping, view.loop_begin, view.loop_end, view.in};
}

void PaintCues(QPainter& painter, const QWidget& widget, int tall, const CueMarks& marks, const Skin& skin,
               const std::function<int(std::chrono::microseconds)>& column) {
  const int line = std::max(1, Em(widget, 0.1));
  if (marks.has_loop) {
    QColor shade = marks.looping ? skin.good : skin.text;
    shade.setAlphaF(marks.looping ? 0.35F : 0.12F);
    const int begin = column(marks.loop_begin);
    const int wide = std::max(column(marks.loop_end) - begin, line);
    painter.fillRect(begin, 0, wide, tall, shade);
    shade.setAlphaF(0.9F);
    painter.fillRect(begin, 0, line, tall, shade);
    painter.fillRect(begin + wide - line, 0, line, tall, shade);
  }
  if (marks.in) painter.fillRect(column(*marks.in), 0, line, tall, skin.good);
  if (marks.cues == nullptr) return;
  if (marks.cues->main) painter.fillRect(column(*marks.cues->main), 0, 2 * line, tall, skin.warning);
  const int side = std::min(Em(widget, 1.1), tall / 2);
  for (int slot = 0; slot < music::kHotCues; ++slot) {
    const auto& cue = marks.cues->hot[static_cast<std::size_t>(slot)];
    if (!cue) continue;
    const int at = column(cue->place);
    if (at < -side || at > widget.width()) continue;
    const QColor colour = CueColourOf(cue->colour);
    painter.fillRect(at, 0, line, tall, colour);
    const QRect flag(at, 0, side, side);
    painter.fillRect(flag, colour);
    painter.setPen(Qt::black);
    painter.drawText(flag, Qt::AlignCenter, QString::number(slot + 1));
  }
}

}  // namespace ui
