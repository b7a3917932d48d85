// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/CTextOutlineEx.h"

#include "karaoke/CLogFont.h"

namespace karaoke {
namespace {

/// An object that is selected into a surface for a while.
class Selection {
 public:
  explicit Selection(DrawingSurface& surface) : surface_(surface) {}
  void Select(DrawingHandle object) {
    object_ = object;
    if (object != 0) before_ = surface_.SelectObject(object);
  }
  void Restore() {
    if (object_ != 0) surface_.SelectObject(before_);
  }
  void Delete() {
    if (object_ != 0) surface_.DeleteObject(object_);
  }

 private:
  DrawingSurface& surface_;
  DrawingHandle object_ = 0;
  DrawingHandle before_ = 0;
};

}  // namespace

void CTextOutlineEx::DrawText(std::string_view text, int x, int y) {
  if (hdc_ == nullptr) return;
  const int mode_before = hdc_->SetBkMode(kTransparent);
  CLogFont log_font(system_);
  Selection brush(*hdc_), pen(*hdc_), font(*hdc_);
  if (!use_existing_objects_) {
    if (filled_) brush.Select(hdc_->CreateSolidBrush(Resolved(fill_color_)));
    if (outlined_) pen.Select(hdc_->CreatePen(kSolidPen, pen_width_, Resolved(outline_color_)));
    if (font_) {
      log_font.LogFont(*font_);
      log_font.Rotation(angle_);
      font.Select(log_font.handle());
    }
  }
  MakePath(text, x, y);
  PaintPath(text, x, y);
  brush.Restore();
  pen.Restore();
  font.Restore();
  brush.Delete();
  pen.Delete();
  hdc_->SetBkMode(mode_before);
}

void CTextOutlineEx::MakePath(std::string_view text, int x, int y) {
  hdc_->BeginPath();
  hdc_->TextOutA(x, y, text);
  hdc_->EndPath();
}

void CTextOutlineEx::PaintPath(std::string_view text, int x, int y) {
  if (outlined_ && filled_ && outline_behind_) {
    hdc_->StrokePath();
    MakePath(text, x, y);
    hdc_->FillPath();
  } else if (outlined_ && filled_) {
    hdc_->StrokeAndFillPath();
  } else if (filled_) {
    hdc_->FillPath();
  } else if (outlined_) {
    hdc_->StrokePath();
  }
}

Colour CTextOutlineEx::Resolved(Colour colour) const {
  constexpr Colour kSystem = 0x8000'0000;
  constexpr Colour kNumber = 0xFF;
  return (colour & kSystem) == 0 ? colour : system_.GetSysColor(static_cast<int>(colour & kNumber));
}

}  // namespace karaoke
