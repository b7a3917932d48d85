// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "karaoke/ports/DrawingSurface.h"

namespace platform::windows {

/// A device context as a surface, and what drawing needs beside it.
/// Threads: that of the device context. Owns: nothing; the context outlives it.
class GdiSurface final : public karaoke::DrawingSurface, public karaoke::DrawingSystem {
 public:
  /// context: an HDC, passed as a number so that this header needs no other.
  explicit GdiSurface(karaoke::DrawingHandle context) : context_(context) {}

  int SetBkMode(int mode) override;
  karaoke::DrawingHandle CreateSolidBrush(karaoke::Colour colour) override;
  karaoke::DrawingHandle CreatePen(int style, int width, karaoke::Colour colour) override;
  karaoke::DrawingHandle SelectObject(karaoke::DrawingHandle object) override;
  void DeleteObject(karaoke::DrawingHandle object) override;
  void BeginPath() override;
  void TextOutA(int x, int y, std::string_view text) override;
  void EndPath() override;
  void StrokePath() override;
  void FillPath() override;
  void StrokeAndFillPath() override;

  karaoke::DrawingHandle CreateRotatedFont(const karaoke::FontObject& font, int rotation) override;
  void DeleteFont(karaoke::DrawingHandle font) override { DeleteObject(font); }
  [[nodiscard]] karaoke::Colour GetSysColor(int number) override;

 private:
  const karaoke::DrawingHandle context_;
};

}  // namespace platform::windows
