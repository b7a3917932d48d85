// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/singers/SingersView.h"
#include "app/songs/SongView.h"
#include "ui/widgets/NextUpCard.h"

namespace ui {

/// A card between songs, a strip while one sounds; nothing where nobody comes, and over the graphics of a
/// disc, which need the whole screen.
[[nodiscard]] NextUpCard::Form NextUpForm(const app::SingersSheet& sheet, const app::SongView& song);
/// Those who come next, with names alone: what the guests read holds no path.
[[nodiscard]] NextUpCard::Said NextUpSaid(const app::SingersSheet& sheet, NextUpCard::Form form,
                                          const Strings& say);

/// A wish as the eye reads it: artist and title, or the file's name.
[[nodiscard]] QString WishTitle(const singers::Wish& wish);

}  // namespace ui
