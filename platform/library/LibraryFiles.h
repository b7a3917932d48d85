// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

#include "catalogue/ports/LibraryReader.h"

namespace platform::library {

/// Reads rekordbox XML, Traktor NML, the XML of iTunes and Music, and the blocks of Serato in music files.
class LibraryFiles final : public catalogue::LibraryReader {
 public:
  support::Result<catalogue::ForeignLibrary> Read(const std::string& path,
                                                  catalogue::LibraryWatch& watch) override;
};

/// The same of an XML's bytes in memory; the name is for the sentence of a failure.
[[nodiscard]] support::Result<catalogue::ForeignLibrary> ReadXmlLibrary(std::string_view bytes,
                                                                        const std::string& name);

/// What the marks of a music file say. Unsupported: it carries none.
[[nodiscard]] support::Result<catalogue::ForeignLibrary> ReadSerato(const std::string& path,
                                                                    catalogue::LibraryWatch& watch);

}  // namespace platform::library
