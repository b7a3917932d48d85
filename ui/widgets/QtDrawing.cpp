// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/QtDrawing.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "ui/strings/Decode.h"
#include "ui/widgets/TextShape.h"

namespace ui {
namespace {

using karaoke::DrawingHandle;

// What kind an object is stands in its handle; the first of each kind is what a fresh surface has selected.
constexpr DrawingHandle kKindOfHandle = 0xF000'0000;
constexpr DrawingHandle kBrushes = 0x1000'0000;
constexpr DrawingHandle kPens = 0x2000'0000;
constexpr DrawingHandle kFonts = 0x3000'0000;

/// The palette's part for each number of a system colour; those that have none are button faces.
QPalette::ColorRole RoleOf(int number) {
  constexpr std::array kRoles{
      QPalette::Mid,         // scroll bar
      QPalette::Dark,        // desktop
      QPalette::Highlight,   // active caption
      QPalette::Mid,         // other caption
      QPalette::Window,      // menu
      QPalette::Base,        // window
      QPalette::Dark,        // window frame
      QPalette::WindowText,  // menu text
      QPalette::Text,        // window text
      QPalette::HighlightedText,
      QPalette::Mid,     // active border
      QPalette::Mid,     // other border
      QPalette::Window,  // workspace
      QPalette::Highlight,
      QPalette::HighlightedText,
      QPalette::Button,
      QPalette::Dark,  // shadow of a button
      QPalette::PlaceholderText,
      QPalette::ButtonText,
  };
  const auto place = static_cast<std::size_t>(number);
  return place < kRoles.size() ? kRoles[place] : QPalette::Button;
}

std::vector<QPainterPath> Contours(const QPainterPath& path) {
  std::vector<QPainterPath> contours;
  for (int i = 0; i < path.elementCount(); ++i) {
    const QPainterPath::Element element = path.elementAt(i);
    if (element.isMoveTo()) contours.emplace_back().moveTo(element);
    if (contours.empty()) continue;
    if (element.isLineTo()) contours.back().lineTo(element);
    if (element.isCurveTo()) {
      contours.back().cubicTo(element, path.elementAt(i + 1), path.elementAt(i + 2));
      i += 2;
    }
  }
  return contours;
}

}  // namespace

QColor ColourOf(karaoke::Colour colour) {
  return {static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
          static_cast<int>(colour >> 16 & 0xFF)};
}

karaoke::Colour ColourFrom(const QColor& colour) {
  return static_cast<karaoke::Colour>(colour.red() | colour.green() << 8 | colour.blue() << 16);
}

QFont FontOf(const karaoke::FontObject& font) {
  constexpr float kUnitsAPoint = 96.0F / 72;
  QFont made(Decode(font.name));
  made.setPixelSize(std::max(1, static_cast<int>(font.size * kUnitsAPoint + 0.5F)));
  made.setBold(font.bold);
  made.setItalic(font.italic);
  made.setHintingPreference(QFont::PreferNoHinting);
  return made;
}

DrawingHandle QtDrawingSystem::CreateRotatedFont(const karaoke::FontObject& font, int rotation) {
  const DrawingHandle handle = kFonts + ++next_;
  fonts_[handle] = {FontOf(font), rotation};
  return handle;
}

karaoke::Colour QtDrawingSystem::GetSysColor(int number) {
  return ColourFrom(palette_.color(QPalette::Active, RoleOf(number)));
}

const QtDrawingSystem::Font* QtDrawingSystem::Find(DrawingHandle font) const {
  const auto found = fonts_.find(font);
  return found == fonts_.end() ? nullptr : &found->second;
}

QtDrawingSurface::QtDrawingSurface(QPainter& painter, const QtDrawingSystem& system)
    : painter_(painter),
      system_(system),
      next_brush_(kBrushes),
      next_pen_(kPens),
      brush_(kBrushes),
      pen_(kPens),
      font_(kFonts) {
  path_.setFillRule(Qt::WindingFill);
}

int QtDrawingSurface::SetBkMode(int mode) {
  return std::exchange(mode_, mode);
}

DrawingHandle QtDrawingSurface::CreateSolidBrush(karaoke::Colour colour) {
  brushes_[++next_brush_] = QBrush(ColourOf(colour));
  return next_brush_;
}

DrawingHandle QtDrawingSurface::CreatePen(int /*style*/, int width, karaoke::Colour colour) {
  pens_[++next_pen_] = QPen(ColourOf(colour), std::max(1, width), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  return next_pen_;
}

DrawingHandle QtDrawingSurface::SelectObject(DrawingHandle object) {
  switch (object & kKindOfHandle) {
    case kBrushes:
      return std::exchange(brush_, object);
    case kPens:
      return std::exchange(pen_, object);
    case kFonts:
      return std::exchange(font_, object);
    default:
      return 0;
  }
}

void QtDrawingSurface::DeleteObject(DrawingHandle object) {
  brushes_.erase(object);
  pens_.erase(object);
}

void QtDrawingSurface::BeginPath() {
  path_.clear();
  path_.setFillRule(Qt::WindingFill);
}

void QtDrawingSurface::TextOutA(int x, int y, std::string_view text) {
  const QtDrawingSystem::Font* chosen = system_.Find(font_);
  const TextShape shape(Decode(text), chosen != nullptr ? chosen->font : painter_.font());
  QTransform place = QTransform::fromTranslate(x, y);
  if (chosen != nullptr && chosen->rotation != 0) place.rotate(-chosen->rotation);
  path_.addPath(place.map(shape.Outline()));
}

void QtDrawingSurface::StrokePath() {
  const auto found = pens_.find(pen_);
  const QPen pen = found != pens_.end() ? found->second : QPen(Qt::black);
  // Letter by letter: all strokes of a line at once take the painter five times as long.
  for (const QPainterPath& contour : Contours(path_)) painter_.strokePath(contour, pen);
  BeginPath();
}

void QtDrawingSurface::FillPath() {
  const auto brush = brushes_.find(brush_);
  painter_.fillPath(path_, brush != brushes_.end() ? brush->second : QBrush(Qt::white));
  BeginPath();
}

void QtDrawingSurface::StrokeAndFillPath() {
  const QPainterPath path = path_;
  FillPath();
  path_ = path;
  StrokePath();
}

}  // namespace ui
