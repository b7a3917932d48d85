// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPainterPath>
#include <QPalette>
#include <QPen>
#include <map>

#include "karaoke/ports/DrawingSurface.h"

class QPainter;

namespace ui {

/// 0x00BBGGRR as the window paints it.
[[nodiscard]] QColor ColourOf(karaoke::Colour colour);
/// The other way.
[[nodiscard]] karaoke::Colour ColourFrom(const QColor& colour);
/// In units of a surface with 96 of them to an inch.
[[nodiscard]] QFont FontOf(const karaoke::FontObject& font);

/// Fonts and system colours of the window's toolkit.
/// Threads: one. Owns: the fonts it made.
class QtDrawingSystem final : public karaoke::DrawingSystem {
 public:
  struct Font {
    QFont font;
    int rotation = 0;
  };

  /// The palette has the system's colours.
  explicit QtDrawingSystem(const QPalette& palette) : palette_(palette) {}

  karaoke::DrawingHandle CreateRotatedFont(const karaoke::FontObject& font, int rotation) override;
  void DeleteFont(karaoke::DrawingHandle font) override { fonts_.erase(font); }
  [[nodiscard]] karaoke::Colour GetSysColor(int number) override;
  /// Null for a handle that is none.
  [[nodiscard]] const Font* Find(karaoke::DrawingHandle font) const;
  [[nodiscard]] std::size_t Fonts() const { return fonts_.size(); }

 private:
  const QPalette palette_;
  std::map<karaoke::DrawingHandle, Font> fonts_;
  karaoke::DrawingHandle next_ = 0;
};

/// Draws with a painter, whose transformation makes pixels of the surface's units.
/// Threads: one. Owns: brushes and pens that were made and not deleted.
class QtDrawingSurface final : public karaoke::DrawingSurface {
 public:
  QtDrawingSurface(QPainter& painter, const QtDrawingSystem& system);

  int SetBkMode(int mode) override;
  karaoke::DrawingHandle CreateSolidBrush(karaoke::Colour colour) override;
  karaoke::DrawingHandle CreatePen(int style, int width, karaoke::Colour colour) override;
  karaoke::DrawingHandle SelectObject(karaoke::DrawingHandle object) override;
  void DeleteObject(karaoke::DrawingHandle object) override;
  void BeginPath() override;
  void TextOutA(int x, int y, std::string_view text) override;
  void EndPath() override {}
  void StrokePath() override;
  void FillPath() override;
  void StrokeAndFillPath() override;

  [[nodiscard]] std::size_t Objects() const { return brushes_.size() + pens_.size(); }

 private:
  QPainter& painter_;
  const QtDrawingSystem& system_;
  std::map<karaoke::DrawingHandle, QBrush> brushes_;
  std::map<karaoke::DrawingHandle, QPen> pens_;
  karaoke::DrawingHandle next_brush_;
  karaoke::DrawingHandle next_pen_;
  karaoke::DrawingHandle brush_;
  karaoke::DrawingHandle pen_;
  karaoke::DrawingHandle font_;
  int mode_ = 2;  ///< opaque, as a fresh surface has it
  QPainterPath path_;
};

}  // namespace ui
