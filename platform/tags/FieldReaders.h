// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <taglib/tiostream.h>

#include "catalogue/ports/TagReader.h"

namespace platform::tags {

// One reader a kind of content. Each is false when there is no sound of its kind in the stream.

bool ReadMpeg(TagLib::IOStream& stream, catalogue::FileTags& tags);
bool ReadOgg(TagLib::IOStream& stream, catalogue::FileTags& tags);
bool ReadFlac(TagLib::IOStream& stream, catalogue::FileTags& tags);
bool ReadAsf(TagLib::IOStream& stream, catalogue::FileTags& tags);
bool ReadMp4(TagLib::IOStream& stream, catalogue::FileTags& tags);
bool ReadWav(TagLib::IOStream& stream, catalogue::FileTags& tags);
bool ReadAnyOther(TagLib::IOStream& stream, catalogue::FileTags& tags);

}  // namespace platform::tags
