// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/strings/SongWords.h"

namespace ui {
namespace {

constexpr Strings::Row kSongRows[] = {
    {SongWord::SingersWords, "Words of the song", "Woorden van het nummer"},
    {SongWord::SingersWordsTip, "What the singers see", "Wat de zangers zien"},
    {SongWord::NoSong, "No song", "Geen nummer"},
    {SongWord::NoSongHint, "Double-click a song to play it", "Dubbelklik op een nummer om het te spelen"},
    {SongWord::SongComes, "Getting \"%1\" ready", "\"%1\" wordt klaargezet"},
    {SongWord::SongPlay, "Play or pause the song", "Nummer afspelen of pauzeren"},
    {SongWord::SongPlayTip, "Play, or pause where it is", "Afspelen, of pauzeren waar het is"},
    {SongWord::SongStop, "Stop the song", "Nummer stoppen"},
    {SongWord::SongStopTip, "Stop and go back to the start", "Stoppen en terug naar het begin"},
    {SongWord::SongPlace, "Place in the song", "Plaats in het nummer"},
    {SongWord::SongVolume, "Volume", "Volume"},
    {SongWord::SongVolumeTip, "How loud songs are", "Hoe luid nummers zijn"},
    {SongWord::SongKey, "Key", "Toonhoogte"},
    {SongWord::SongKeyTip, "Higher or lower by half tones, for this song; drums stay",
     "Hoger of lager in halve tonen, voor dit nummer; drums blijven"},
    {SongWord::SongTempo, "Tempo", "Tempo"},
    {SongWord::SongTempoTip, "Faster or slower, for this song; a double click takes it back",
     "Sneller of langzamer, voor dit nummer; dubbelklikken zet het terug"},
    {SongWord::SongMelody, "Melody", "Melodie"},
    {SongWord::SongMelodyTip, "How loud the instrument is that plays what is sung",
     "Hoe luid het instrument is dat speelt wat er wordt gezongen"},
    {SongWord::Screen, "Show", "Tonen"},
    {SongWord::ScreenTip, "Where the singers see the words; Escape or a double click there puts them away",
     "Waar de zangers de woorden zien; Escape of dubbelklikken daar haalt ze weg"},
    {SongWord::ScreenNowhere, "Not shown", "Niet tonen"},
    {SongWord::ScreenWindow, "In a window", "In een venster"},
    {SongWord::ScreenNumber, "Screen %1: %2, %3 × %4", "Scherm %1: %2, %3 × %4"},
    {SongWord::ScreenGone, "%1 (not connected)", "%1 (niet aangesloten)"},
    {SongWord::Soundfont, "Sound", "Klank"},
    {SongWord::SoundfontTip, "The soundfont that MIDI songs sound with, from the next song on",
     "De soundfont waarmee MIDI-nummers klinken, vanaf het volgende nummer"},
    {SongWord::SoundfontFirst, "First installed", "Eerst geïnstalleerde"},
    {SongWord::SongPart, "Song", "Nummer"},
    {SongWord::SongPartTip, "Volume, key, tempo and where the words are shown",
     "Volume, toonhoogte, tempo en waar de woorden worden getoond"},
    {SongWord::LookPart, "Look", "Uiterlijk"},
    {SongWord::LookPartTip, "Colours, font and pictures of the words",
     "Kleuren, lettertype en afbeeldingen van de woorden"},
    {SongWord::CurrentText, "Line", "Regel"},
    {SongWord::CurrentWord, "Sung", "Gezongen"},
    {SongWord::NextText, "Next line", "Volgende"},
    {SongWord::Outline, "Outline", "Omtrek"},
    {SongWord::BackGround, "Background", "Achtergrond"},
    {SongWord::LyricColourTip, "Choose another colour", "Een andere kleur kiezen"},
    {SongWord::LyricFont, "Font", "Lettertype"},
    {SongWord::LyricFontTip, "Font of the words", "Lettertype van de woorden"},
    {SongWord::FontBold, "Bold", "Vet"},
    {SongWord::FontItalic, "Italic", "Cursief"},
    {SongWord::SungStyle, "Sung words", "Gezongen"},
    {SongWord::SungStyleTip, "Whether words are swept over as they are sung, or change one by one",
     "Of woorden meelopend van kleur veranderen of een voor een"},
    {SongWord::SungSweep, "Sweep", "Meelopend"},
    {SongWord::SungWord, "Word by word", "Per woord"},
    {SongWord::BouncingBall, "Ball", "Bal"},
    {SongWord::BouncingBallTip, "Picture of the ball that bounces on the words",
     "Afbeelding van de bal die over de woorden springt"},
    {SongWord::BallFiles, "Transparent Pictures", "Transparante afbeeldingen"},
    {SongWord::BackPicture, "Picture", "Afbeelding"},
    {SongWord::BackPictureTip, "A picture behind the words", "Een afbeelding achter de woorden"},
    {SongWord::PictureFiles, "Pictures", "Afbeeldingen"},
    {SongWord::PictureNone, "No picture", "Geen afbeelding"},
    {SongWord::PictureNoneTip, "The background colour alone", "Alleen de achtergrondkleur"},
    {SongWord::SampleLine, "Words that are sung", "Woorden om te zingen"},
    {SongWord::SampleNext, "and words to come", "en wat er nog komt"},
    {SongWord::SongNotPlayed, "1 song could not be played", "1 nummer kon niet worden gespeeld"},
    {SongWord::AddSongs, "Add karaoke songs", "Karaokenummers toevoegen"},
    {SongWord::AddSongsTip,
     "Add MIDI songs, mp3 files with graphics, both in a zip, or folders of them; they can be dropped here "
     "too",
     "MIDI-nummers toevoegen, mp3-bestanden met beeld, beide in een zip, of mappen ervan; slepen mag ook"},
    {SongWord::SongFiles, "Karaoke files", "Karaokebestanden"},
};

}  // namespace

std::span<const Strings::Row> SongWords() {
  return kSongRows;
}

}  // namespace ui
