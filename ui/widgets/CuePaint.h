// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <chrono>
#include <functional>
#include <memory>

#include "app/sound/DeckView.h"
#include "ui/skins/Skin.h"

class QPainter;
class QWidget;

namespace ui {

/// Of a hot cue, by its number.
[[nodiscard]] QColor CueColourOf(int colour);

/// What of a deck's cues is drawn over a wave.
struct CueMarks {
  std::shared_ptr<const music::Cues> cues;
  bool has_loop = false;
  bool looping = false;
  std::chrono::microseconds loop_begin{0};
  std::chrono::microseconds loop_end{0};
  std::optional<std::chrono::microseconds> in;
  bool operator==(const CueMarks&) const = default;
};
[[nodiscard]] CueMarks MarksOf(const app::CuesView& view);
/// column: of the widget, for a place of the track.
void PaintCues(QPainter& painter, const QWidget& widget, int tall, const CueMarks& marks, const Skin& skin,
               const std::function<int(std::chrono::microseconds)>& column);

}  // namespace ui
