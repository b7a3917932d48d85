// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/K8062Library.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

namespace platform::windows {
namespace {

using State = dmx::DmxInterfaceStatus::State;

/// Holds the library of the test, so that its calls can still be read when the adapter has let it go.
class OurLibrary {
 public:
  OurLibrary() : handle_(LoadLibraryA("fake_k8062d.dll")) {}
  ~OurLibrary() { FreeLibrary(handle_); }
  OurLibrary(const OurLibrary&) = delete;
  OurLibrary& operator=(const OurLibrary&) = delete;

  [[nodiscard]] std::string Calls() const {
    using Taken = const char* (*)();
    const auto taken =
        reinterpret_cast<Taken>(reinterpret_cast<void*>(GetProcAddress(handle_, "TakenCalls")));
    return taken == nullptr ? "no library" : taken();
  }

 private:
  HMODULE handle_;
};

TEST(K8062LibraryTest, PassesCallsOnWhileItIsStarted) {
  const OurLibrary library;
  {
    K8062Library box("fake_k8062d.dll");
    box.SetData(1, 1);
    box.StartDevice();
    box.StartDevice();
    box.SetChannelCount(512);
    box.SetData(512, 255);
    EXPECT_EQ(box.Status().state, State::Sending);
  }
  EXPECT_EQ(library.Calls(), "StartDevice;SetChannelCount 512;SetData 512 255;StopDevice;");
}

TEST(K8062LibraryTest, SaysWhyThereIsNoLibraryAndDoesNothing) {
  for (const auto& [name, reason] :
       {std::pair("nowhere.dll", "is not there"), std::pair("kernel32.dll", "is not the")}) {
    K8062Library box(name);
    box.StartDevice();
    box.SetChannelCount(512);
    box.SetData(1, 255);
    EXPECT_EQ(box.Status().state, State::Searching);
    EXPECT_NE(box.Status().text.find(reason), std::string::npos) << box.Status().text;
    box.StopDevice();
  }
}

}  // namespace
}  // namespace platform::windows
