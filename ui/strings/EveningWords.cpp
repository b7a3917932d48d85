// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/EveningWords.h"

namespace ui {
namespace {

constexpr Strings::Row kEveningRows[] = {
    {EveningWord::MusicPlays, "Music is playing. Close all the same?", "Er speelt muziek. Toch sluiten?"},
    {EveningWord::ShowPlays, "A light show is playing. Close all the same?",
     "Er loopt een lichtshow. Toch sluiten?"},
    {EveningWord::Resume, "Go on after a power cut", "Verdergaan na een stroomstoring"},
    {EveningWord::ResumeTip,
     "After a power cut or a crash, decks, song, lamps and automix go on where they were; after closing the "
     "program nothing does",
     "Na een stroomstoring of een uitval gaan decks, lied, lampen en automix verder waar ze waren; na het "
     "sluiten van het programma niets"},
};

}  // namespace

std::span<const Strings::Row> EveningWords() {
  return kEveningRows;
}

}  // namespace ui
