// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/settings/SettingsText.h"
#include "support/Clock.h"
#include "support/Mutex.h"
#include "support/Result.h"
#include "support/ports/FileSaver.h"
#include "support/ports/SettingsStore.h"

namespace platform::settings {

/// The settings of one user in one text file.
///
/// Every write reads the file again and changes only the keys that were set here, so that two running
/// programs keep each other's; what the other one wrote is seen from then on. A file that cannot be read is
/// kept beside under another name before anything is written, or nothing is written.
/// Owns: the thread that writes; the destructor waits for the last write.
class SettingsFile final : public support::SettingsStore {
 public:
  /// Sets within the window after the first one reach the disk in one write.
  static constexpr std::chrono::milliseconds kWindow{100};

  /// Reads the file once. The saver outlives this object.
  SettingsFile(std::filesystem::path path, support::FileSaver& saver,
               std::chrono::milliseconds window = kWindow);
  ~SettingsFile() override;
  SettingsFile(const SettingsFile&) = delete;
  SettingsFile& operator=(const SettingsFile&) = delete;

  [[nodiscard]] std::string Get(std::string_view application, std::string_view section, std::string_view key,
                                std::string_view fallback) const override DJ_EXCLUDES(mutex_);
  void Set(std::string_view application, std::string_view section, std::string_view key,
           std::string_view value) override DJ_EXCLUDES(mutex_);
  void Flush() override DJ_EXCLUDES(mutex_);
  [[nodiscard]] std::vector<support::Error> Notices(std::size_t known) const override DJ_EXCLUDES(mutex_);

 private:
  using Changes = std::map<SettingName, std::string>;
  struct Batch {
    Changes changes;
    SettingsText known;  ///< for a file that is gone or unreadable
    std::uint64_t flushes = 0;
    bool last = false;
  };

  void Work();
  [[nodiscard]] Batch AwaitBatch() DJ_EXCLUDES(mutex_);
  void Write(Batch batch) DJ_EXCLUDES(mutex_);
  support::Result<SettingsText> Merge(const Batch& batch) DJ_EXCLUDES(mutex_);
  support::Result<void> KeepAside(std::string_view content) DJ_EXCLUDES(mutex_);
  void Done(Batch batch, support::Result<SettingsText> merged) DJ_EXCLUDES(mutex_);
  void Tell(support::Error notice) DJ_REQUIRES(mutex_);

  const std::filesystem::path path_;
  support::FileSaver& saver_;
  const std::chrono::milliseconds window_;

  mutable support::Mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable written_;
  SettingsText text_ DJ_GUARDED_BY(mutex_);
  Changes unwritten_ DJ_GUARDED_BY(mutex_);
  support::TimePoint due_ DJ_GUARDED_BY(mutex_){};
  std::uint64_t flushes_wanted_ DJ_GUARDED_BY(mutex_) = 0;
  std::uint64_t flushes_done_ DJ_GUARDED_BY(mutex_) = 0;
  bool stopping_ DJ_GUARDED_BY(mutex_) = false;
  std::vector<support::Error> notices_ DJ_GUARDED_BY(mutex_);
  std::thread writer_;
};

}  // namespace platform::settings
