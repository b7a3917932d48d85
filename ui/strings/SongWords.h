// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "ui/strings/Strings.h"

namespace ui {

/// Numbers of what is said about karaoke: 2790 to 2849.
enum class SongWord : int {
  SingersWords = 2790,
  SingersWordsTip,
  NoSong,
  NoSongHint,
  SongComes,
  SongPlay,
  SongPlayTip,
  SongStop,
  SongStopTip,
  SongPlace,
  SongVolume,
  SongVolumeTip,
  SongKey,
  SongKeyTip,
  SongTempo,
  SongTempoTip,
  SongMelody,
  SongMelodyTip,
  Screen,
  ScreenTip,
  ScreenNowhere,
  ScreenWindow,
  ScreenNumber,
  ScreenGone,
  Soundfont,
  SoundfontTip,
  SoundfontFirst,
  SongPart,
  SongPartTip,
  LookPart,
  LookPartTip,
  CurrentText,
  CurrentWord,
  NextText,
  Outline,
  BackGround,
  LyricColourTip,
  LyricFont,
  LyricFontTip,
  FontBold,
  FontItalic,
  SungStyle,
  SungStyleTip,
  SungSweep,
  SungWord,
  BouncingBall,
  BouncingBallTip,
  BallFiles,
  BackPicture,
  BackPictureTip,
  PictureFiles,
  PictureNone,
  PictureNoneTip,
  SampleLine,
  SampleNext,
  SongNotPlayed,
  AddSongs,
  AddSongsTip,
  SongFiles,
};

[[nodiscard]] std::span<const Strings::Row> SongWords();

}  // namespace ui
