// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>
#include <string>
#include <string_view>

namespace ui {

/// Bytes of a file, a tag or a path as text for the eye: valid UTF-8 as such, anything else as Windows-1252.
/// The only way in for text that did not come from the string table.
[[nodiscard]] QString Decode(std::string_view bytes);

/// The bytes of a text that was shown by Decode and that a hand may have changed: where it did not, those
/// that it was shown from, else UTF-8.
[[nodiscard]] std::string Encode(const QString& text, std::string_view shown_from);

/// The path of a local file, byte for byte as the file system has it, valid UTF-8 or not; empty for any other
/// place.
[[nodiscard]] std::string PathBytes(const QUrl& url);

}  // namespace ui
