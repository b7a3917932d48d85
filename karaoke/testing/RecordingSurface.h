// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <set>
#include <string>
#include <vector>

#include "karaoke/ports/DrawingSurface.h"

namespace karaoke::testing {

/// Writes every call down and knows which of its objects are alive and selected.
class RecordingSurface final : public DrawingSurface, public DrawingSystem {
 public:
  int SetBkMode(int mode) override {
    Note("SetBkMode " + std::to_string(mode));
    return std::exchange(mode_, mode);
  }
  DrawingHandle CreateSolidBrush(Colour colour) override {
    return Made(kBrush, "CreateSolidBrush " + std::to_string(colour));
  }
  DrawingHandle CreatePen(int style, int width, Colour colour) override {
    return Made(kPen, "CreatePen " + std::to_string(style) + " " + std::to_string(width) + " " +
                          std::to_string(colour));
  }
  DrawingHandle SelectObject(DrawingHandle object) override {
    Note("SelectObject " + std::to_string(object));
    return std::exchange(selected_[object / kKind], object);
  }
  void DeleteObject(DrawingHandle object) override {
    Note("DeleteObject " + std::to_string(object));
    alive.erase(object);
  }
  void BeginPath() override { Note("BeginPath"); }
  void TextOutA(int x, int y, std::string_view text) override {
    Note("TextOutA " + std::to_string(x) + " " + std::to_string(y) + " " + std::string(text));
  }
  void EndPath() override { Note("EndPath"); }
  void StrokePath() override { Note("StrokePath"); }
  void FillPath() override { Note("FillPath"); }
  void StrokeAndFillPath() override { Note("StrokeAndFillPath"); }

  DrawingHandle CreateRotatedFont(const FontObject& font, int rotation) override {
    return Made(kFont, "CreateRotatedFont " + font.name + " " + std::to_string(rotation));
  }
  void DeleteFont(DrawingHandle font) override {
    Note("DeleteFont " + std::to_string(font));
    alive.erase(font);
  }
  Colour GetSysColor(int number) override { return 0x1000 + static_cast<Colour>(number); }

  /// As a fresh surface has it: mode 2, objects 100, 200 and 300.
  [[nodiscard]] bool IsAsFound() const {
    return mode_ == 2 && alive.empty() && selected_[1] == 100 && selected_[2] == 200 && selected_[3] == 300;
  }

  std::vector<std::string> calls;
  std::set<DrawingHandle> alive;
  int refused_make = 0;  ///< counted from 1

 private:
  static constexpr DrawingHandle kKind = 100;
  static constexpr DrawingHandle kBrush = 101;
  static constexpr DrawingHandle kPen = 201;
  static constexpr DrawingHandle kFont = 301;

  void Note(std::string call) { calls.push_back(std::move(call)); }
  DrawingHandle Made(DrawingHandle kind, std::string call) {
    Note(std::move(call));
    if (++makes_ == refused_make) return 0;
    alive.insert(kind);
    return kind;
  }

  int mode_ = 2;
  int makes_ = 0;
  DrawingHandle selected_[4] = {0, 100, 200, 300};
};

}  // namespace karaoke::testing
