// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <signal.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "platform/files/DiskCalls.h"

namespace platform::files::testing {

/// Where a program ends, as by a power cut: right before or after the nth call of this name.
struct Death {
  std::string call;
  int nth = 1;
  enum Moment { Before, After } moment = Before;
};

/// The real disk, on which a call of a test's choice fails or the program dies. A write takes only part of
/// what it is given, so that a file is written in several. Threads: one.
class FaultyDisk final : public DiskCalls {
 public:
  explicit FaultyDisk(std::size_t most_bytes_a_write = 100) : most_bytes_(most_bytes_a_write) {}

  /// The nth call from now, Remove left out, fails so.
  void FailOn(int nth, int reason) {
    fail_at_ = calls_ + nth;
    reason_ = reason;
  }
  /// That one and all after it.
  void FailFrom(int nth, int reason) {
    FailOn(nth, reason);
    for_good_ = true;
  }
  void DieAt(Death death) { death_ = std::move(death); }
  /// How many calls there were, Remove left out.
  [[nodiscard]] int Calls() const { return calls_; }
  /// Their names in order, several of the same one after another once.
  [[nodiscard]] const std::vector<std::string>& Log() const { return log_; }

  int Create(const std::filesystem::path& path, mode_t mode) override {
    return Do("Create", [&] { return DiskCalls::Create(path, mode); });
  }
  ssize_t Write(int file, const char* data, std::size_t size) override {
    return Do("Write", [&] { return DiskCalls::Write(file, data, std::min(size, most_bytes_)); });
  }
  ssize_t WriteAt(int file, const char* data, std::size_t size, off_t place) override {
    return Do("WriteAt", [&] { return DiskCalls::WriteAt(file, data, std::min(size, most_bytes_), place); });
  }
  int SyncData(int file) override {
    return Do("SyncData", [&] { return DiskCalls::SyncData(file); });
  }
  int CopyRights(int file, const struct stat& from) override {
    return Do("CopyRights", [&] { return DiskCalls::CopyRights(file, from); });
  }
  int Sync(int file) override {
    return Do("Sync", [&] { return DiskCalls::Sync(file); });
  }
  int Rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
    return Do("Rename", [&] { return DiskCalls::Rename(from, to); });
  }
  int SyncFolder(const std::filesystem::path& folder) override {
    return Do("SyncFolder", [&] { return DiskCalls::SyncFolder(folder); });
  }

 private:
  template <typename Call>
  auto Do(const char* name, const Call& call) -> decltype(call()) {
    ++calls_;
    if (log_.empty() || log_.back() != name) log_.emplace_back(name);
    const bool deadly = death_.call == name && --death_.nth == 0;
    if (deadly && death_.moment == Death::Before) raise(SIGKILL);
    if (calls_ == fail_at_ || (for_good_ && calls_ > fail_at_)) {
      errno = reason_;
      return -1;
    }
    const auto result = call();
    if (deadly) raise(SIGKILL);
    return result;
  }

  std::size_t most_bytes_;
  int calls_ = 0;
  int fail_at_ = 0;
  int reason_ = 0;
  bool for_good_ = false;
  Death death_;
  std::vector<std::string> log_;
};

}  // namespace platform::files::testing
