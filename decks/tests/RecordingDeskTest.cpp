// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/testing/RecordingDesk.h"

#include "decks/testing/DeskContract.h"

namespace decks::testing {
namespace {

struct RecordedDesk {
  SoundDesk& Desk() { return desk; }
  void GoOn() {}
  RecordingDesk desk;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Recorded, EveryDesk, RecordedDesk);

}  // namespace
}  // namespace decks::testing
