// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/testing/RecordingLoops.h"

#include "decks/testing/LoopsContract.h"

namespace decks::testing {
namespace {

struct RecordedLoops {
  DeckLoops& Loops() { return loops; }
  StreamHandle Stream() { return ++streams; }
  RecordingLoops loops;
  StreamHandle streams = 0;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Recorded, EveryDeckLoops, RecordedLoops);

}  // namespace
}  // namespace decks::testing
