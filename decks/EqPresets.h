// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "decks/Equaliser.h"
#include "support/ProgramFolder.h"
#include "support/Result.h"
#include "support/Settings.h"
#include "support/ports/FileSaver.h"

namespace decks {

/// A bank of sliders under a name.
struct EqPreset {
  std::string name;
  std::string value_line;  ///< as it stands in the file
};

using EqValues = std::array<int, kEqBands>;
/// Sliders 0 to 9, or 10 to 19.
enum class EqBank { First, Second };

/// Two lines a preset: "[name]", then its values. Lines that belong to none are passed over; a name at the
/// very end, without values, is none.
[[nodiscard]] std::vector<EqPreset> ParseEqPresets(std::string_view text);
/// The values between the ";" of a line; what is missing or no number is 0.
[[nodiscard]] EqValues EqValuesOf(std::string_view value_line);
/// Ten decimals, each with a ";" behind it.
[[nodiscard]] std::string EqValueLine(const EqValues& values);

/// The preset file "\EQ.tlv" in the program folder.
///
/// Law: the file is replaced in whole, never in part. Before a preset in it is changed or removed, it is
/// copied to "\EQ2.tlv", and the copy stays. Threads: one at a time; blocks on the disk.
class EqPresetFile {
 public:
  EqPresetFile(support::FileSaver& files, support::ProgramFolder folder)
      : files_(files), folder_(std::move(folder)) {}

  /// In the order in which they were added; none when there is no file.
  [[nodiscard]] support::Result<std::vector<EqPreset>> Read() const;
  /// Adds a preset at the end, or gives a preset of the same name other values where it stands.
  support::Result<void> Save(const std::string& name, const EqValues& values);
  /// ErrorCode::NotFound when no preset has the name.
  support::Result<void> Delete(const std::string& name);

 private:
  [[nodiscard]] support::Result<std::string> Text() const;
  [[nodiscard]] std::filesystem::path Path() const { return folder_.Native("\\EQ.tlv"); }
  support::Result<void> Rewrite(const std::string& old_text, const std::string& new_text);

  support::FileSaver& files_;
  support::ProgramFolder folder_;
};

/// Remembers the choice in the settings, then sets the bank's ten sliders in order.
/// set_slider: index 0 to 19 and decibels; it carries the slider's band along.
void ApplyEqPreset(EqBank bank, const EqPreset& preset, support::Settings& settings,
                   const std::function<void(int slider, int decibels)>& set_slider);

}  // namespace decks
