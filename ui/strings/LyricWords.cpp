// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/LyricWords.h"

namespace ui {
namespace {

constexpr Strings::Row kLyricRows[] = {
    {LyricWord::Look, "Look", "Uiterlijk"},
    {LyricWord::LookTip, "Ready for the stage, or with colours, font and ball of your own",
     "Klaar voor het podium, of met eigen kleuren, lettertype en bal"},
    {LyricWord::LookStage, "Stage", "Podium"},
    {LyricWord::LookOwn, "Your own", "Eigen"},
    {LyricWord::Coding, "Letters", "Letters"},
    {LyricWord::CodingTip,
     "The letters that the song is written in, where its words look wrong; kept with the song",
     "De letters waarin het nummer is geschreven, als de woorden er vreemd uitzien; blijft bij het nummer"},
    {LyricWord::CodingGuessed, "Found: %1", "Gevonden: %1"},
    {LyricWord::CodingOf, "%1 (%2)", "%1 (%2)"},
    {LyricWord::Western, "Western", "West-Europees"},
    {LyricWord::CentralEuropean, "Central European", "Midden-Europees"},
    {LyricWord::Cyrillic, "Cyrillic", "Cyrillisch"},
    {LyricWord::Greek, "Greek", "Grieks"},
    {LyricWord::Turkish, "Turkish", "Turks"},
    {LyricWord::Hebrew, "Hebrew", "Hebreeuws"},
    {LyricWord::Arabic, "Arabic", "Arabisch"},
    {LyricWord::Vietnamese, "Vietnamese", "Vietnamees"},
    {LyricWord::Thai, "Thai", "Thais"},
    {LyricWord::Japanese, "Japanese", "Japans"},
    {LyricWord::Korean, "Korean", "Koreaans"},
    {LyricWord::Chinese, "Chinese", "Chinees"},
};

}  // namespace

std::span<const Strings::Row> LyricWords() {
  return kLyricRows;
}

}  // namespace ui
