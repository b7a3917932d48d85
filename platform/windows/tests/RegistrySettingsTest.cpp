// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/RegistrySettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include "support/testing/MemorySettings.h"
#include "support/testing/SettingsStoreContract.h"

namespace platform::windows {
namespace {

using support::kApplication;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kRoot = "Software\\djtolven-tests";
constexpr const char* kMixer = "Software\\djtolven-tests\\TLVG\\Mixer";

/// A part of the registry of our own, empty before and gone behind each test.
class OwnRegistry {
 public:
  OwnRegistry() { RegDeleteTreeA(HKEY_CURRENT_USER, kRoot); }
  ~OwnRegistry() { RegDeleteTreeA(HKEY_CURRENT_USER, kRoot); }
  OwnRegistry(const OwnRegistry&) = delete;
  OwnRegistry& operator=(const OwnRegistry&) = delete;
  support::SettingsStore& Store() { return store_; }

 private:
  RegistrySettings store_{kRoot};
};

class StoreInMemory {
 public:
  support::SettingsStore& Store() { return store_; }

 private:
  support::testing::MemorySettings store_;
};

using Stores = ::testing::Types<OwnRegistry, StoreInMemory>;
class RegistrySettingsTest : public ::testing::Test {
 protected:
  OwnRegistry registry_;
  RegistrySettings store_{kRoot};
};

TEST_F(RegistrySettingsTest, IsSeenByAnotherProgramAtOnce) {
  store_.Set(kApplication, "Mixer", "MixTime", "9");
  EXPECT_EQ(RegistrySettings(kRoot).Get(kApplication, "Mixer", "MixTime", ""), "9");
}

TEST_F(RegistrySettingsTest, KeepsOneTextValueAKeyInTheKeyOfItsSection) {
  store_.Set(kApplication, "Mixer", "MixTime", "9");
  char value[10] = "";
  DWORD size = sizeof value;
  DWORD type = 0;
  ASSERT_EQ(RegGetValueA(HKEY_CURRENT_USER, kMixer, "MixTime", RRF_RT_ANY, &type, value, &size),
            ERROR_SUCCESS);
  EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
  EXPECT_STREQ(value, "9");
}

TEST_F(RegistrySettingsTest, GivesTheDefaultForAValueThatIsNoText) {
  const DWORD number = 9;
  RegSetKeyValueA(HKEY_CURRENT_USER, kMixer, "MixTime", REG_DWORD, &number, sizeof number);
  EXPECT_EQ(store_.Get(kApplication, "Mixer", "MixTime", "8"), "8");
}

TEST_F(RegistrySettingsTest, HoldsUntilTheEndWhatTheRegistryDoesNotTakeAndSaysSoOnce) {
  const std::string too_long(300, 's');
  store_.Set(kApplication, too_long, "MixTime", "9");
  store_.Set(kApplication, too_long, "MixTime", "10");
  EXPECT_EQ(store_.Get(kApplication, too_long, "MixTime", "8"), "10");
  ASSERT_EQ(store_.Notices(0).size(), 1U);
  EXPECT_THAT(store_.Notices(0)[0].text, HasSubstr("Settings are not saved"));
}

TEST_F(RegistrySettingsTest, ReadingWritesNothing) {
  EXPECT_EQ(store_.Get(kApplication, "Mixer", "MixTime", "8"), "8");
  store_.Flush();
  HKEY key = nullptr;
  EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, kRoot, 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
  EXPECT_THAT(store_.Notices(0), IsEmpty());
}

}  // namespace
}  // namespace platform::windows

namespace support::testing {
INSTANTIATE_TYPED_TEST_SUITE_P(Registry, EverySettingsStore, platform::windows::Stores);
}  // namespace support::testing
