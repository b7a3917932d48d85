// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "karaoke/ports/DrawingSurface.h"

namespace karaoke {

/// A font that stands at an angle.
/// Owns: the handle it gave; it is deleted with the object, or when font or angle change.
class CLogFont {
 public:
  explicit CLogFont(DrawingSystem& system) : system_(system) {}
  ~CLogFont() { Release(); }
  CLogFont(const CLogFont&) = delete;
  CLogFont& operator=(const CLogFont&) = delete;

  void LogFont(const FontObject& font) {
    Release();
    font_ = font;
  }
  /// In degrees.
  [[nodiscard]] int Rotation() const { return rotation_; }
  void Rotation(int degrees) {
    Release();
    rotation_ = degrees;
  }
  /// Made when it is first asked for; 0 without a font.
  [[nodiscard]] DrawingHandle handle() {
    if (handle_ == 0 && font_) handle_ = system_.CreateRotatedFont(*font_, rotation_);
    return handle_;
  }

 private:
  void Release() {
    if (handle_ != 0) system_.DeleteFont(handle_);
    handle_ = 0;
  }

  DrawingSystem& system_;
  std::optional<FontObject> font_;
  int rotation_ = 0;
  DrawingHandle handle_ = 0;
};

}  // namespace karaoke
