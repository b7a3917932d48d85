// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string_view>

#include "catalogue/ports/LibraryReader.h"
#include "platform/library/XmlStream.h"

namespace platform::library {

/// Listens to the library of one program. One that ends early has what stood before that.
class LibraryListener : public XmlListener {
 public:
  [[nodiscard]] virtual catalogue::ForeignLibrary Finish() = 0;
};

/// "DJ_PLAYLISTS" of rekordbox, as its maker describes it.
[[nodiscard]] std::unique_ptr<LibraryListener> ListenToRekordbox(catalogue::LibraryWatch& watch);
/// "NML" of Traktor. It has one tempo a track: its first grid mark is where the beats are counted from.
[[nodiscard]] std::unique_ptr<LibraryListener> ListenToTraktor(catalogue::LibraryWatch& watch);
/// "plist" of iTunes and Music. Its own lists of everything, and the sums of folders, are none of the user's.
[[nodiscard]] std::unique_ptr<LibraryListener> ListenToItunes(catalogue::LibraryWatch& watch);

/// By the name of the root element; null for any other.
[[nodiscard]] std::unique_ptr<LibraryListener> ListenerFor(std::string_view root,
                                                           catalogue::LibraryWatch& watch);

}  // namespace platform::library
