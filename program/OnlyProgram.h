// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

class QLocalServer;

namespace platform::files {
class FolderLock;
}  // namespace platform::files

namespace program {

/// One program on one program folder: two would write over each other's lists. The second one brings the
/// first one's window to the front and ends; one that is just ending is waited for.
///
/// Threads: the window's. Requires: a QCoreApplication.
class OnlyProgram {
 public:
  static constexpr std::chrono::seconds kPatience{6};

  /// Asks the one that runs, if there is one, and waits so long for its answer or its end.
  explicit OnlyProgram(const std::filesystem::path& folder, std::chrono::milliseconds patience = kPatience);
  ~OnlyProgram();
  OnlyProgram(const OnlyProgram&) = delete;
  OnlyProgram& operator=(const OnlyProgram&) = delete;

  /// False: another one runs. Its window is in front then, or Trouble says why not.
  [[nodiscard]] bool MayRun() const { return lock_ != nullptr; }
  /// A sentence in the language that is set, or empty.
  [[nodiscard]] const std::string& Trouble() const { return trouble_; }
  /// What is done when a second program asks, also when one did before this was told.
  void OnAsked(std::function<void()> come_to_front);

 private:
  void Listen();
  [[nodiscard]] bool Ask() const;

  std::string name_;  ///< of the socket
  std::string trouble_;
  std::unique_ptr<platform::files::FolderLock> lock_;
  std::unique_ptr<QLocalServer> server_;
  std::function<void()> come_to_front_;
  bool asked_ = false;  ///< before anybody could come
};

}  // namespace program
