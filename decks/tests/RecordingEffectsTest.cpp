// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/testing/RecordingEffects.h"

#include "decks/testing/EffectsContract.h"

namespace decks::testing {
namespace {

struct RecordedEffects {
  DeckEffects& Effects() { return effects; }
  StreamHandle Stream() { return ++streams; }
  RecordingEffects effects;
  StreamHandle streams = 0;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Recorded, EveryDeckEffects, RecordedEffects);

}  // namespace
}  // namespace decks::testing
