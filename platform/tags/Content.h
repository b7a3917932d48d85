// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <taglib/tiostream.h>

#include <string>

namespace platform::tags {

enum class Content { Mpeg, Ogg, Flac, Asf, Mp4, Wav, Other };

/// By its first bytes; the name decides only what begins like nothing that is known.
[[nodiscard]] Content Recognise(TagLib::IOStream& stream, const std::string& name);

}  // namespace platform::tags
