// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The workstation with every part that it hands out, for tests of the whole.
#include "app/ApplyButton.h"
#include "app/Collections.h"
#include "app/Decks.h"
#include "app/EqualiserDesk.h"
#include "app/Language.h"
#include "app/OutputDesk.h"
#include "app/Ports.h"
#include "app/Visuals.h"
#include "app/Workstation.h"
#include "app/lights/EditorDesk.h"
#include "app/lights/LightDesk.h"
#include "app/lights/OrganDesk.h"
#include "app/lists/ListDesk.h"
#include "app/settings/Settings.h"
#include "app/songs/SongDesk.h"
#include "app/sound/DeckStation.h"
