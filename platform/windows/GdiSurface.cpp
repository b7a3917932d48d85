// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/GdiSurface.h"

#include <windows.h>

#include <algorithm>
#include <cmath>

namespace platform::windows {
namespace {

HDC ContextOf(karaoke::DrawingHandle handle) {
  return reinterpret_cast<HDC>(handle);
}

HGDIOBJ ObjectOf(karaoke::DrawingHandle handle) {
  return reinterpret_cast<HGDIOBJ>(handle);
}

karaoke::DrawingHandle HandleOf(const void* object) {
  return reinterpret_cast<karaoke::DrawingHandle>(object);
}

}  // namespace

int GdiSurface::SetBkMode(int mode) {
  return ::SetBkMode(ContextOf(context_), mode);
}

karaoke::DrawingHandle GdiSurface::CreateSolidBrush(karaoke::Colour colour) {
  return HandleOf(::CreateSolidBrush(colour));
}

karaoke::DrawingHandle GdiSurface::CreatePen(int style, int width, karaoke::Colour colour) {
  return HandleOf(::CreatePen(style, width, colour));
}

karaoke::DrawingHandle GdiSurface::SelectObject(karaoke::DrawingHandle object) {
  return HandleOf(::SelectObject(ContextOf(context_), ObjectOf(object)));
}

void GdiSurface::DeleteObject(karaoke::DrawingHandle object) {
  ::DeleteObject(ObjectOf(object));
}

void GdiSurface::BeginPath() {
  ::BeginPath(ContextOf(context_));
}

void GdiSurface::TextOutA(int x, int y, std::string_view text) {
  ::TextOutA(ContextOf(context_), x, y, text.data(), static_cast<int>(text.size()));
}

void GdiSurface::EndPath() {
  ::EndPath(ContextOf(context_));
}

void GdiSurface::StrokePath() {
  ::StrokePath(ContextOf(context_));
}

void GdiSurface::FillPath() {
  ::FillPath(ContextOf(context_));
}

void GdiSurface::StrokeAndFillPath() {
  ::StrokeAndFillPath(ContextOf(context_));
}

karaoke::DrawingHandle GdiSurface::CreateRotatedFont(const karaoke::FontObject& font, int rotation) {
  constexpr float kPointsAnInch = 72;
  const float dots = static_cast<float>(::GetDeviceCaps(ContextOf(context_), LOGPIXELSY));
  LOGFONTA wanted{};
  wanted.lfHeight = -static_cast<LONG>(std::lround(font.size * dots / kPointsAnInch));
  wanted.lfEscapement = wanted.lfOrientation = rotation * 10;
  wanted.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
  wanted.lfItalic = font.italic ? TRUE : FALSE;
  wanted.lfCharSet = DEFAULT_CHARSET;
  wanted.lfOutPrecision = OUT_TT_ONLY_PRECIS;  // others have no outline
  const std::size_t length = std::min(font.name.size(), sizeof wanted.lfFaceName - 1);
  std::copy_n(font.name.begin(), length, wanted.lfFaceName);
  return HandleOf(::CreateFontIndirectA(&wanted));
}

karaoke::Colour GdiSurface::GetSysColor(int number) {
  return ::GetSysColor(number);
}

}  // namespace platform::windows
