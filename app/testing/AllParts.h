// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The workstation with every part that it hands out, for tests of the whole.
#include "app/ApplyButton.h"
#include "app/Collections.h"
#include "app/Decks.h"
#include "app/EffectStation.h"
#include "app/EqualiserStation.h"
#include "app/HeadphoneStation.h"
#include "app/Language.h"
#include "app/OutputStation.h"
#include "app/Ports.h"
#include "app/Visuals.h"
#include "app/Workstation.h"
#include "app/lights/EditorFiles.h"
#include "app/lights/LightStation.h"
#include "app/lights/OrganStation.h"
#include "app/lists/ListStation.h"
#include "app/recording/RecordingStation.h"
#include "app/songs/SongStation.h"
#include "app/sound/DeckStation.h"
#include "app/sound/MicrophoneStation.h"
#include "app/tags/TagStation.h"
#include "support/Settings.h"
