// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace decks {

/// The gain record of a file: what the analyser found, and what was made of it. Gains are the decibels that a
/// file lacks to be as loud as the reference of 89 dB.
struct clsMp3Info {
  /// Album gain of a file that was not analysed yet.
  static constexpr double kNotAnalysed = -666.24601;

  double RawAlbumdBGain = kNotAnalysed;  ///< as analysed
  double RawRadiodBGain = kNotAnalysed;
  double CurrMaxAmp = 0;  ///< the loudest sample, 32768 is full scale
  int CurrMaxGain = 0;    ///< largest gain field of the file's frames; a step is about 1.5 dB
  int CurrMinGain = 0;
  double AlbumdBGain = kNotAnalysed;  ///< after what was altered since
  double RadiodBGain = kNotAnalysed;
  int AlbumMp3Gain = 0;  ///< the same in whole steps of about 1.5 dB
  int RadioMp3Gain = 0;
  int MaxNoclipMp3Gain = 0;  ///< steps up to full scale
  double ModifydBGain = 0;   ///< all that was altered

  [[nodiscard]] bool Analysed() const { return AlbumdBGain != kNotAnalysed; }
  /// The file was made louder by so many decibels: that much less is lacking. The raw gains stay.
  void AlterDb(double decibels);
  void ResetVals() { *this = {}; }
};

/// Reads what mp3gain printed: with each CR LF turned into a tab, the text's tokens 8 to 11, counted from 0,
/// are the gain in dB, the largest amplitude and the largest and smallest gain field. A file analysed by
/// itself is an album of one. Nothing when one of them is no number.
[[nodiscard]] std::optional<clsMp3Info> ParseMp3GainOutput(std::string_view output);

/// 89.0 plus the gain before adjustment minus the gain after it, with one decimal.
[[nodiscard]] std::string GainText(const clsMp3Info& info);

}  // namespace decks
