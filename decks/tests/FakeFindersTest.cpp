// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/testing/FakeFinders.h"

#include "decks/testing/FinderContracts.h"

namespace decks::testing {
namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, EveryLoudnessMeter, FakeLoudnessMeters);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, EveryBeatTracker, FakeBeatTrackers);

}  // namespace
}  // namespace decks::testing
