// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/K8061Library.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

namespace platform::windows {
namespace {

/// Holds the library of the test, so that its calls can still be read when the adapter has let it go.
class BoardLibrary {
 public:
  explicit BoardLibrary(int boards) : handle_(LoadLibraryA("fake_k8061.dll")) {
    Find<void (*)(int)>("SetBoards")(boards);
  }
  ~BoardLibrary() { FreeLibrary(handle_); }
  BoardLibrary(const BoardLibrary&) = delete;
  BoardLibrary& operator=(const BoardLibrary&) = delete;

  [[nodiscard]] std::string Calls() const { return Find<const char* (*)()>("TakenCalls")(); }

 private:
  template <typename Function>
  Function Find(const char* name) const {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(handle_, name)));
  }
  HMODULE handle_;
};

std::int32_t OpenOf(K8061Library& boards) {
  std::optional<std::int32_t> answer;
  boards.OpenDevice([&](std::int32_t result) { answer = result; });
  while (!answer) (void)boards.Trouble();
  return *answer;
}

TEST(K8061LibraryTest, OpensEveryBoardAndTellsEachWhatChanged) {
  const BoardLibrary library(2);
  {
    K8061Library boards("fake_k8061.dll");
    boards.OutputAllDigital(0, 5);
    boards.OutputAnalogChannel(1, 3, 300);
    EXPECT_EQ(OpenOf(boards), 0);
    boards.CloseDevices();
  }
  EXPECT_EQ(library.Calls(),
            "OpenDevice;OpenDevice;OpenDevice;OutputAllDigital 0 5;ClearAllDigital 1;ClearAllAnalog 0;"
            "OutputAnalogChannel 1 1 0;OutputAnalogChannel 1 2 0;OutputAnalogChannel 1 3 255;"
            "OutputAnalogChannel 1 4 0;OutputAnalogChannel 1 5 0;OutputAnalogChannel 1 6 0;"
            "OutputAnalogChannel 1 7 0;OutputAnalogChannel 1 8 0;CloseDevices;");
}

TEST(K8061LibraryTest, TellsOfBoardsWhoseAddressNobodyUses) {
  const BoardLibrary library(9);
  K8061Library boards("fake_k8061.dll");
  EXPECT_EQ(OpenOf(boards), 0);
  EXPECT_NE(boards.Trouble().text.find("set to address 7"), std::string::npos) << boards.Trouble().text;
}

TEST(K8061LibraryTest, SaysWhyThereIsNoBoardAndDoesNothing) {
  const BoardLibrary none(0);
  for (const auto& [name, reason] : {std::pair("nowhere.dll", "is not there"),
                                     {"kernel32.dll", "is not the"},
                                     {"fake_k8061.dll", "No K8061"}}) {
    K8061Library boards(name);
    EXPECT_EQ(OpenOf(boards), lightorgan::kNoBoard);
    boards.OutputAllDigital(0, 1);
    EXPECT_NE(boards.Trouble().text.find(reason), std::string::npos) << boards.Trouble().text;
  }
}

}  // namespace
}  // namespace platform::windows
