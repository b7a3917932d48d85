// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/GdiSurface.h"

#include <gtest/gtest.h>

#include "karaoke/CTextOutlineEx.h"
// Behind the room's headers: it defines names of theirs away.
#include <windows.h>
#undef DrawText

namespace platform::windows {
namespace {

TEST(GdiSurfaceTest, OutlinedTextIsFilledAndTheContextIsLeftAsItWas) {
  const HDC context = CreateCompatibleDC(nullptr);
  BITMAPINFO info{};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), 200, -80, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* pixels = nullptr;
  const HBITMAP bitmap = CreateDIBSection(context, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  ASSERT_NE(pixels, nullptr);
  const HGDIOBJ before = SelectObject(context, bitmap);
  SetBkMode(context, OPAQUE);
  const HGDIOBJ pen = GetCurrentObject(context, OBJ_PEN);

  GdiSurface surface(reinterpret_cast<karaoke::DrawingHandle>(context));
  karaoke::CTextOutlineEx text(surface);
  text.hdc(&surface);
  text.UseExistingObjects(false);
  text.Filled(true);
  text.OutlineColor(0xFFFFFF);
  text.Font(karaoke::FontObject{"Arial", 40, true, false});
  text.DrawText("lalala", 10, 10);
  GdiFlush();
  int red = 0, white = 0;
  for (int i = 0; i < 200 * 80; ++i) {
    const std::uint32_t pixel = static_cast<std::uint32_t*>(pixels)[i] & 0xFFFFFF;
    red += pixel == 0xFF0000 ? 1 : 0;
    white += pixel == 0xFFFFFF ? 1 : 0;
  }
  EXPECT_GT(red, 100);
  EXPECT_GT(white, 100);
  EXPECT_EQ(GetBkMode(context), OPAQUE);
  EXPECT_EQ(GetCurrentObject(context, OBJ_PEN), pen);
  SelectObject(context, before);
  DeleteObject(bitmap);
  DeleteDC(context);
}

}  // namespace
}  // namespace platform::windows
