// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

namespace platform::settings {

/// djtolven/settings.ini in the folder where the user's programs keep their settings.
[[nodiscard]] std::filesystem::path UserSettingsPath();

/// What lies at a path.
struct FileContent {
  enum class State { Missing, Unreadable, Read };
  State state = State::Missing;
  std::string content;
};

/// Reads a whole file; one beyond any settings file's size counts as unreadable.
[[nodiscard]] FileContent ReadWhole(const std::filesystem::path& path);

/// Gives a file a second name in the same folder; false when that name is taken or it cannot be done.
[[nodiscard]] bool GiveSecondName(const std::filesystem::path& file, const std::filesystem::path& name);

/// Makes the folder of a file, for its user alone, where it is not there.
void MakeFolderOf(const std::filesystem::path& file);

/// Held by one program at a time. After the patience it goes on without: better a setting of a program that
/// hangs is lost than all of this one. Who waits comes next: a program that saves over and over, and takes
/// the lock again as soon as it has let it go, does not keep the others out.
class ProgramLock {
 public:
  ProgramLock(const std::filesystem::path& path, std::chrono::milliseconds patience);
  ~ProgramLock();
  ProgramLock(const ProgramLock&) = delete;
  ProgramLock& operator=(const ProgramLock&) = delete;

  [[nodiscard]] bool Held() const { return held_; }

 private:
  /// Until it is locked, or patience has ended.
  [[nodiscard]] static bool Try(const std::function<bool()>& lock,
                                std::chrono::steady_clock::time_point until);

  int file_;
  bool held_ = false;
};

}  // namespace platform::settings
