// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "ui/widgets/LyricScene.h"

namespace app {
class SongStation;
}  // namespace app

namespace support {
class Settings;
}  // namespace support

namespace ui {

/// How the words look as it is stored now, pictures read. What cannot be read is left out.
[[nodiscard]] SceneLook ReadSceneLook(const app::SongStation& songs, const support::Settings& settings);

/// Two lines to show a look with.
[[nodiscard]] std::shared_ptr<const app::SongWords> SampleWords(const QString& line, const QString& next);
/// When half of the first one is sung.
inline constexpr std::chrono::milliseconds kSampleTime{6250};

}  // namespace ui
