// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/LyricPainter.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "support/Text.h"

namespace karaoke {
namespace {

constexpr std::string_view kSection = "Karaoke";

}  // namespace

Colour ParseColour(std::string_view text, Colour fallback) {
  text = support::Trim(text);
  const bool hexadecimal = support::ToUpper(text.substr(0, 2)) == "&H";
  if (hexadecimal) text.remove_prefix(2);
  while (hexadecimal && !text.empty() && text.back() == '&') text.remove_suffix(1);
  std::int64_t value = 0;
  const auto [end, failed] =
      std::from_chars(text.data(), text.data() + text.size(), value, hexadecimal ? 16 : 10);
  if (failed != std::errc() || end != text.data() + text.size()) return fallback;
  return static_cast<Colour>(value);  // a system colour is stored as a negative number
}

LyricLook StageLook() {
  LyricLook look;
  look.font_name = "DejaVu Sans";
  look.font_bold = true;
  look.fill = {0xDCF3FF, 0x245AEE, 0x87A0B8};
  look.outline = 0x0A0716;
  look.background = 0x100812;
  look.stage = true;
  return look;
}

LyricLook ReadLook(const support::Settings& settings, LookReader reader) {
  const auto colour = [&](std::string_view key) {
    return ParseColour(settings.Text(kSection, key), ParseColour(settings.Default(kSection, key), 0));
  };
  constexpr Colour kWhite = 0xFFFFFF;
  LyricLook look;
  look.font_name = settings.Text(kSection, "FontName");
  look.font_bold = settings.Flag(kSection, "FontBold");
  look.font_italic = settings.Flag(kSection, "FontItalic");
  look.fill = {colour("CurrentText"), colour("CurrentWord"), colour("NextText")};
  look.outline = colour("Outline");
  look.background =
      ParseColour(settings.TextOr(kSection, "BackGround", ""), reader == LookReader::Display ? 0 : kWhite);
  look.bouncing_ball = settings.Text(kSection, "BouncingBall");
  return look;
}

int PenWidthFor(float font_size) {
  constexpr float kLarge = 30;
  return font_size >= kLarge ? 2 : 1;
}

namespace {

/// Half of it lies behind the letter.
int StagePenWidth(float font_size) {
  return std::max(2, static_cast<int>(std::lround(font_size * 0.18F)));
}

}  // namespace

LyricPainter::LyricPainter(DrawingSystem& system)
    : renderers_{Pair{CTextOutlineEx(system), CTextOutlineEx(system)},
                 Pair{CTextOutlineEx(system), CTextOutlineEx(system)},
                 Pair{CTextOutlineEx(system), CTextOutlineEx(system)}} {}

void LyricPainter::Draw(LyricRole role, LyricDisplay display, DrawingSurface& surface, const FontObject& font,
                        std::string_view text, int x, int y) {
  const std::size_t number = static_cast<std::size_t>(role);
  CTextOutlineEx& renderer = renderers_[number][static_cast<std::size_t>(display)];
  renderer.Filled(true);
  renderer.Outlined(true);
  renderer.OutlineBehind(look_.stage);
  renderer.FillColor(look_.fill[number]);
  renderer.OutlineColor(look_.outline);
  renderer.PenWidth(look_.stage ? StagePenWidth(font.size) : PenWidthFor(font.size));
  renderer.Font(font);
  renderer.UseExistingObjects(false);
  renderer.hdc(&surface);
  renderer.DrawText(text, x, y);
  renderer.hdc(nullptr);
}

}  // namespace karaoke
