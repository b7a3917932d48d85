// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace karaoke {

/// 0x00BBGGRR. With the top bit set it is a system colour, its number in the low bits.
using Colour = std::uint32_t;
/// A brush, pen or font; 0 is none.
using DrawingHandle = std::uintptr_t;

inline constexpr int kTransparent = 1;
inline constexpr int kSolidPen = 0;

struct FontObject {
  std::string name = "Verdana";
  float size = 12;  ///< in points
  bool bold = false;
  bool italic = false;
  bool operator==(const FontObject&) const = default;
};

/// Something to draw on, in the words of the graphics interface it was first written for.
///
/// A surface has one brush, one pen and one font selected, and one path. Threads: one.
class DrawingSurface {
 public:
  virtual ~DrawingSurface() = default;
  /// Gives the mode before.
  virtual int SetBkMode(int mode) = 0;
  virtual DrawingHandle CreateSolidBrush(Colour colour) = 0;
  virtual DrawingHandle CreatePen(int style, int width, Colour colour) = 0;
  /// Gives what it replaced, of the same kind.
  virtual DrawingHandle SelectObject(DrawingHandle object) = 0;
  virtual void DeleteObject(DrawingHandle object) = 0;
  virtual void BeginPath() = 0;
  /// Between BeginPath and EndPath the outline of the text is added to the path; x and y are its top left.
  virtual void TextOutA(int x, int y, std::string_view text) = 0;
  virtual void EndPath() = 0;
  /// These three use the path up.
  virtual void StrokePath() = 0;
  virtual void FillPath() = 0;
  virtual void StrokeAndFillPath() = 0;
};

/// What drawing needs that belongs to no surface.
class DrawingSystem {
 public:
  virtual ~DrawingSystem() = default;
  /// rotation: in degrees, counterclockwise.
  virtual DrawingHandle CreateRotatedFont(const FontObject& font, int rotation) = 0;
  virtual void DeleteFont(DrawingHandle font) = 0;
  /// 0x00BBGGRR of a system colour.
  [[nodiscard]] virtual Colour GetSysColor(int number) = 0;
};

}  // namespace karaoke
