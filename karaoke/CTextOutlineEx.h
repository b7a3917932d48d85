// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string_view>

#include "karaoke/ports/DrawingSurface.h"

namespace karaoke {

/// Draws text as a path: filled, outlined, or both.
///
/// Law: the surface is left as it was found. Threads: as its surface.
class CTextOutlineEx {
 public:
  explicit CTextOutlineEx(DrawingSystem& system) : system_(system) {}

  /// In degrees.
  [[nodiscard]] int Angle() const { return angle_; }
  void Angle(int degrees) { angle_ = degrees; }
  [[nodiscard]] Colour FillColor() const { return fill_color_; }
  void FillColor(Colour colour) { fill_color_ = colour; }
  [[nodiscard]] bool Filled() const { return filled_; }
  void Filled(bool filled) { filled_ = filled; }
  /// Without one the surface's own font is used.
  [[nodiscard]] const std::optional<FontObject>& Font() const { return font_; }
  void Font(std::optional<FontObject> font) { font_ = std::move(font); }
  /// Without a surface nothing is drawn.
  [[nodiscard]] DrawingSurface* hdc() const { return hdc_; }
  void hdc(DrawingSurface* surface) { hdc_ = surface; }
  /// The fill covers the inner half of the outline.
  [[nodiscard]] bool OutlineBehind() const { return outline_behind_; }
  void OutlineBehind(bool behind) { outline_behind_ = behind; }
  [[nodiscard]] Colour OutlineColor() const { return outline_color_; }
  void OutlineColor(Colour colour) { outline_color_ = colour; }
  [[nodiscard]] bool Outlined() const { return outlined_; }
  void Outlined(bool outlined) { outlined_ = outlined; }
  /// In pixels.
  [[nodiscard]] int PenWidth() const { return pen_width_; }
  void PenWidth(int width) { pen_width_ = width; }
  /// Draw with the brush, pen and font that the surface has selected.
  [[nodiscard]] bool UseExistingObjects() const { return use_existing_objects_; }
  void UseExistingObjects(bool use) { use_existing_objects_ = use; }

  /// x and y are the text's top left corner.
  void DrawText(std::string_view text, int x, int y);

 private:
  [[nodiscard]] Colour Resolved(Colour colour) const;
  void MakePath(std::string_view text, int x, int y);
  void PaintPath(std::string_view text, int x, int y);

  DrawingSystem& system_;
  DrawingSurface* hdc_ = nullptr;
  int angle_ = 0;
  Colour fill_color_ = 255;
  Colour outline_color_ = 0;
  int pen_width_ = 1;
  bool filled_ = false;
  bool outlined_ = true;
  bool outline_behind_ = false;
  bool use_existing_objects_ = true;
  std::optional<FontObject> font_;
};

}  // namespace karaoke
