// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/ports/SettingsStore.h"

namespace support::testing {

/// What every store promises. T gives a fresh and empty one by Store().
template <typename T>
class EverySettingsStore : public ::testing::Test {
 protected:
  T given_;
};
TYPED_TEST_SUITE_P(EverySettingsStore);

TYPED_TEST_P(EverySettingsStore, GivesTheDefaultUntilAValueIsSet) {
  SettingsStore& store = this->given_.Store();
  EXPECT_EQ(store.Get(kApplication, "Mixer", "MixTime", "8"), "8");
  store.Set(kApplication, "Mixer", "MixTime", "12");
  EXPECT_EQ(store.Get(kApplication, "Mixer", "MixTime", "8"), "12");
  store.Set(kApplication, "Mixer", "MixTime", "");
  EXPECT_EQ(store.Get(kApplication, "Mixer", "MixTime", "8"), "");
}

TYPED_TEST_P(EverySettingsStore, KeepsApplicationsSectionsAndKeysApart) {
  SettingsStore& store = this->given_.Store();
  store.Set("QRV", "EQ", "Preset1", "Rock");
  store.Set(kApplication, "EQ", "Preset1", "Pop");
  store.Flush();
  EXPECT_EQ(store.Get("QRV", "EQ", "Preset1", ""), "Rock");
  EXPECT_EQ(store.Get(kApplication, "EQ", "Preset1", ""), "Pop");
  EXPECT_EQ(store.Get(kApplication, "EQ", "Preset2", "none"), "none");
  EXPECT_EQ(store.Get(kApplication, "Mixer", "Preset1", "none"), "none");
}

TYPED_TEST_P(EverySettingsStore, GivesAnyTextBackAsItWasSet) {
  SettingsStore& store = this->given_.Store();
  for (const std::string& text :
       {std::string("C:\\music\\new\\"), std::string("two\r\nlines"), std::string("  [x]=;#  "),
        std::string("Caf\xC3\xA9"), std::string(5000, 'x')}) {
    store.Set(kApplication, "Settings", "Directory", text);
    EXPECT_EQ(store.Get(kApplication, "Settings", "Directory", ""), text);
  }
}

REGISTER_TYPED_TEST_SUITE_P(EverySettingsStore, GivesTheDefaultUntilAValueIsSet,
                            KeepsApplicationsSectionsAndKeysApart, GivesAnyTextBackAsItWasSet);

}  // namespace support::testing
