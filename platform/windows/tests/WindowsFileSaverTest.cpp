// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/WindowsFileSaver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/files/System.h"
#include "support/testing/FileSaverContract.h"

namespace platform::windows {
namespace {

namespace fs = std::filesystem;
using support::ErrorCode;
using ::testing::ElementsAre;

/// A folder that ends with the test. Its name holds letters beyond the 8-bit code page.
class Folder {
 public:
  Folder()
      : path_(fs::temp_directory_path() /
              (L"djfiles-\u010D\u97F3-" + std::to_wstring(GetCurrentProcessId()))) {
    fs::create_directories(path_);
  }
  ~Folder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  [[nodiscard]] fs::path operator/(const char* name) const { return path_ / name; }
  [[nodiscard]] std::string Read(const char* name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void Write(const std::string& name, std::string_view content) const {
    std::ofstream(path_ / name, std::ios::binary) << content;
  }
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  fs::path path_;
};

class RealSaver {
 public:
  ~RealSaver() { Repair(); }
  support::FileSaver& Saver() { return saver_; }
  [[nodiscard]] fs::path Path() const { return folder_ / "index"; }
  [[nodiscard]] std::string Content() const { return folder_.Read("index"); }
  /// Another program holds the old file open and lets nobody else touch it.
  void FailNextSave() {
    open_ =
        CreateFileW(Path().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  void Repair() {
    if (open_ != INVALID_HANDLE_VALUE) CloseHandle(open_);
    open_ = INVALID_HANDLE_VALUE;
  }

 private:
  Folder folder_;
  WindowsFileSaver saver_;
  HANDLE open_ = INVALID_HANDLE_VALUE;
};

using Savers = ::testing::Types<RealSaver>;

class WindowsFileSaverTest : public ::testing::Test {
 protected:
  support::Result<void> Save(const char* name, std::string_view content) {
    return saver_.Save(folder_ / name, content);
  }
  Folder folder_;
  WindowsFileSaver saver_;
};

TEST_F(WindowsFileSaverTest, LeavesNothingBesideTheFile) {
  ASSERT_TRUE(Save("a", "1").Ok());
  ASSERT_TRUE(Save("a", "2").Ok());
  EXPECT_THAT(folder_.Names(), ElementsAre("a"));
}

TEST_F(WindowsFileSaverTest, SaysWhyAFileCannotBeReplaced) {
  fs::create_directory(folder_ / "folder");
  folder_.Write("locked", "old");
  SetFileAttributesW((folder_ / "locked").c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(Save("folder", "x").Failure().code, ErrorCode::Unsupported);
  EXPECT_EQ(Save("locked", "x").Failure().code, ErrorCode::Unreadable);
  EXPECT_EQ(Save("none/file", "x").Failure().code, ErrorCode::NotFound);
  SetFileAttributesW((folder_ / "locked").c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(folder_.Read("locked"), "old");
  EXPECT_THAT(folder_.Names(), ElementsAre("folder", "locked"));
}

TEST_F(WindowsFileSaverTest, RemovesWhatADeadProgramLeftAndNotWhatALivingOneWrites) {
  constexpr DWORD kNobody = 0xFFFFFFF0;
  const std::string living = ".a.saving-" + std::to_string(GetCurrentProcessId()) + "-x";
  folder_.Write(".a.saving-" + std::to_string(kNobody) + "-0", "half");
  folder_.Write(living, "half");
  ASSERT_TRUE(Save("a", "1").Ok());
  EXPECT_THAT(folder_.Names(), ElementsAre(living, "a"));
}

TEST(WindowsSystem, TheExecutablesFolderHoldsTheRunningProgram) {
  EXPECT_TRUE(fs::exists(files::ExecutableFolder() / "platform_windows_tests.exe"));
}

}  // namespace
}  // namespace platform::windows

namespace support::testing {
INSTANTIATE_TYPED_TEST_SUITE_P(Windows, EveryFileSaver, platform::windows::Savers);
}  // namespace support::testing
